#include "temporary_names.h"

#include "gen_helpers2/file_transaction.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <ctime>
#include <memory>
#include <mutex>
#include <random>
#include <set>
#include <string_view>

namespace gen_helpers2 {
namespace _internal {
namespace {

constexpr std::string_view start = ".unsaved-";
constexpr std::string_view end = ".tmp";
constexpr std::string_view end_of_locked = ".new"; // as long; the file was locked before it had the name
constexpr std::size_t digits = 16;

bool is_name_of_locked(std::string_view name)
{
    return name.substr(name.size() - end_of_locked.size()) == end_of_locked;
}

bool is_temporary_name(std::string_view name)
{
    return name.size() == start.size() + digits + end.size() && name.substr(0, start.size()) == start &&
           (name.substr(start.size() + digits) == end || is_name_of_locked(name)) &&
           name.substr(start.size(), digits).find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

bool is_stale(int file, bool was_locked)
{
    constexpr time_t young = 60; // seconds; a file is locked a moment after it was made
    struct stat status;
    return ::fstat(file, &status) == 0 && S_ISREG(status.st_mode) &&
           (was_locked || ::time(nullptr) - status.st_mtim.tv_sec > young) &&
           ::flock(file, LOCK_EX | LOCK_NB) == 0;
}

bool is_first_time(const std::string& folder)
{
    static std::mutex mutex;
    static std::set<std::string> seen;
    const std::lock_guard<std::mutex> lock(mutex);
    return seen.insert(folder).second;
}

} // namespace

std::string make_temporary_name(const std::string& folder, bool is_locked)
{
    // Process ids and clocks come again; and nobody is to guess the name.
    std::random_device random;
    char name[64];
    std::snprintf(name, sizeof name, "/.unsaved-%08x%08x", random(), random());
    return folder + name + std::string(is_locked ? end_of_locked : end);
}

void remove_stale_names(const std::string& folder)
{
    if (!is_first_time(folder))
        return;
    finish_transaction(path_t(folder)); // what its note names has no better name yet
    // Not the standard library's iterator, which ends a program that is out of memory.
    const std::unique_ptr<DIR, int (*)(DIR*)> names(::opendir(folder.c_str()), ::closedir);
    while (const dirent* entry = names ? ::readdir(names.get()) : nullptr) {
        if (!is_temporary_name(entry->d_name))
            continue;
        const int folder_file = ::dirfd(names.get());
        const int file = ::openat(folder_file, entry->d_name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
        if (file < 0)
            continue;
        if (is_stale(file, is_name_of_locked(entry->d_name)))
            ::unlinkat(folder_file, entry->d_name, 0);
        ::close(file);
    }
}

} // namespace _internal
} // namespace gen_helpers2
