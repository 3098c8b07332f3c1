#include "tools/tour/expect.h"

#include <cstdio>
#include <cstdlib>

void fail(const std::string& message) {
    std::fprintf(stderr, "lumvale-tour: %s\n", message.c_str());
    std::exit(EXIT_FAILURE);
}

void expect(bool condition, const std::string& expectation) {
    if (!condition)
        fail("not fulfilled: " + expectation);
}
