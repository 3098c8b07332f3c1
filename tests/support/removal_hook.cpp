#include "tests/support/removal_hook.h"

std::function<void()> beforeRemoval;

extern "C" {
int __real_unlinkat(int folder, const char* name, int flags);
int __wrap_unlinkat(int folder, const char* name, int flags) {
    if (beforeRemoval)
        beforeRemoval();
    return __real_unlinkat(folder, name, flags);
}
}
