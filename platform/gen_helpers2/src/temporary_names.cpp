#include "temporary_names.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <ctime>
#include <filesystem>
#include <mutex>
#include <random>
#include <set>
#include <string_view>
#include <system_error>

namespace gen_helpers2 {
namespace _internal {
namespace {

constexpr std::string_view start = ".unsaved-";
constexpr std::string_view end = ".tmp";
constexpr std::size_t digits = 16;

bool is_temporary_name(std::string_view name)
{
    return name.size() == start.size() + digits + end.size() && name.substr(0, start.size()) == start &&
           name.substr(start.size() + digits) == end &&
           name.substr(start.size(), digits).find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

bool is_stale(int file)
{
    constexpr time_t young = 60; // seconds; a file is locked a moment after it was made
    struct stat status;
    return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
           ::time(nullptr) - status.st_mtim.tv_sec > young && ::flock(file, LOCK_EX | LOCK_NB) == 0;
}

bool is_first_time(const std::string& folder)
{
    static std::mutex mutex;
    static std::set<std::string> seen;
    const std::lock_guard<std::mutex> lock(mutex);
    return seen.insert(folder).second;
}

} // namespace

std::string make_temporary_name(const std::string& folder)
{
    // Process ids and clocks come again; and nobody is to guess the name.
    std::random_device random;
    char name[64];
    std::snprintf(name, sizeof name, "/.unsaved-%08x%08x.tmp", random(), random());
    return folder + name;
}

void remove_stale_names(const std::string& folder)
{
    if (!is_first_time(folder))
        return;
    std::error_code error;
    std::filesystem::directory_iterator at(folder, error);
    for (; !error && at != std::filesystem::directory_iterator(); at.increment(error)) {
        if (!is_temporary_name(at->path().filename().native()))
            continue;
        const int file = ::open(at->path().c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        if (file < 0)
            continue;
        if (is_stale(file))
            ::unlink(at->path().c_str());
        ::close(file);
    }
}

} // namespace _internal
} // namespace gen_helpers2
