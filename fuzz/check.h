#pragma once

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>
#include <unistd.h>

/// Ends the fuzzer, which keeps the input, when a property does not hold.
inline void check(bool holds, int line = __builtin_LINE())
{
    if (holds)
        return;
    std::fprintf(stderr, "the check in line %d does not hold\n", line);
    std::abort();
}

/// A folder of the process's own; who started it takes it away.
inline const std::string& scratch_folder()
{
    static const std::string folder = [] {
        const char* temporary = std::getenv("TMPDIR");
        std::string name = std::string(temporary ? temporary : "/tmp") + "/fuzz_XXXXXX";
        check(mkdtemp(name.data()) != nullptr);
        return name;
    }();
    return folder;
}

inline std::string write_scratch(const char* name, const std::string& content)
{
    const std::string file = scratch_folder() + '/' + name;
    std::ofstream(file, std::ios::binary) << content;
    return file;
}
