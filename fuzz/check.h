#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the fuzzer, which keeps the input, when a property does not hold.
inline void check(bool holds, int line = __builtin_LINE())
{
    if (holds)
        return;
    std::fprintf(stderr, "the check in line %d does not hold\n", line);
    std::abort();
}
