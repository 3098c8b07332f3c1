#include "tools/sample_disk/sample_disk.h"

#include <charconv>
#include <cstdio>
#include <cstring>

int main(int count, char** arguments) {
    sample_disk::Options options;
    bool isValid = count == 2 || (count == 4 && std::strcmp(arguments[2], "--seed") == 0);
    isValid = isValid && arguments[1][0] != '-';
    if (isValid && count == 4) {
        const char* const end = arguments[3] + std::strlen(arguments[3]);
        const auto [stop, error] = std::from_chars(arguments[3], end, options.seed);
        isValid = error == std::errc() && stop == end;
    }
    if (!isValid) {
        std::fputs("usage: lumvale-sample-disk FOLDER [--seed S]\n", stderr);
        return 2;
    }
    return sample_disk::report(sample_disk::build(arguments[1], options));
}
