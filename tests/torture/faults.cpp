// The system's headers must leave the functions that are defined here to be defined.
#undef _FORTIFY_SOURCE
#include "faults.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <pthread.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace faults {
namespace {

std::atomic<int> left{0}; // calls until the fault; 0: none is due
std::atomic<int> armed_call{-1};
std::atomic<fault_t> armed_fault{fault_t::fails};
std::atomic<bool> struck{false};
std::array<std::atomic<int>, static_cast<std::size_t>(call_t::count)> counts;
std::function<void()> other_act;
std::string folder; // whose files have faults; empty: all
constexpr int most_files = 1024;
std::array<std::atomic<bool>, most_files> is_below; // by descriptor

/// Whether this call is the one.
bool is_due(call_t call)
{
    ++counts[static_cast<std::size_t>(call)];
    if (armed_call.load(std::memory_order_relaxed) != static_cast<int>(call))
        return false;
    const int before = left.fetch_sub(1);
    if (before > 1 || (before < 1 && armed_fault != fault_t::fails_on))
        return false;
    struck = true;
    if (armed_fault == fault_t::preceded) {
        armed_call = -1; // not by what it does itself
        other_act();
        return false;
    }
    if (armed_fault == fault_t::killed)
        ::kill(::getpid(), SIGKILL);
    return true;
}

bool is_meant(const char* path)
{
    return folder.empty() || std::string_view(path).substr(0, folder.size()) == folder;
}
bool is_meant(int file)
{
    return folder.empty() || file < 0 || (file < most_files && is_below[static_cast<std::size_t>(file)]);
}
void note(int file, bool below)
{
    if (file >= 0 && file < most_files)
        is_below[static_cast<std::size_t>(file)] = below;
}

int fail_with(int number)
{
    errno = armed_fault == fault_t::interrupted ? EINTR : number;
    return -1;
}

// Half of what is asked for.
template <class T>
T shortened(T argument)
{
    return argument;
}
size_t shortened(size_t size)
{
    return (size + 1) / 2;
}

template <class Function, class File, class... Arguments>
auto call_or_fail(const char* name, call_t call, int number, File where, Arguments... arguments)
{
    static const auto real = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
    using result_t = decltype(real(where, arguments...));
    if (!is_meant(where) || !is_due(call))
        return real(where, arguments...);
    if (armed_fault == fault_t::shortened)
        return real(where, shortened(arguments)...);
    return static_cast<result_t>(fail_with(number));
}

} // namespace

const char* name_of(call_t call)
{
    constexpr const char* names[] = {"open",   "stat",  "read", "write",  "sync",   "link",
                                     "rename", "mkdir", "lock", "thread", "memory", ""};
    return names[static_cast<int>(call)];
}

void arm(call_t call, int n, fault_t fault)
{
    struck = false;
    for (auto& count : counts)
        count = 0;
    armed_fault = fault;
    left = n;
    armed_call = static_cast<int>(call);
}

void before_due(std::function<void()> act)
{
    other_act = std::move(act);
}

int count_of(call_t call)
{
    return counts[static_cast<std::size_t>(call)];
}

void only_below(const std::string& path)
{
    folder = path;
}

bool disarm()
{
    armed_call = -1;
    return struck;
}

} // namespace faults

using faults::call_or_fail;
using faults::call_t;
using faults::is_due;

// NOLINTBEGIN: the names and arguments are the system's.
extern "C" {

int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    const int file =
        call_or_fail<int (*)(const char*, int, ...)>("open", call_t::open, EMFILE, path, flags, mode);
    faults::note(file, faults::is_meant(path));
    return file;
}

int close(int file)
{
    faults::note(file, false); // its number may go to a connection
    static const auto real = reinterpret_cast<decltype(&::close)>(::dlsym(RTLD_NEXT, "close"));
    return real(file);
}

int open64(const char* path, int flags, ...) __attribute__((alias("open")));

int stat(const char* path, struct stat* status) noexcept
{
    return call_or_fail<decltype(&::stat)>("stat", call_t::stat, EIO, path, status);
}

int fstat(int file, struct stat* status) noexcept
{
    return call_or_fail<decltype(&::fstat)>("fstat", call_t::stat, EIO, file, status);
}

ssize_t read(int file, void* buffer, size_t size)
{
    return call_or_fail<decltype(&::read)>("read", call_t::read, EIO, file, buffer, size);
}

ssize_t write(int file, const void* buffer, size_t size)
{
    return call_or_fail<decltype(&::write)>("write", call_t::write, ENOSPC, file, buffer, size);
}

int fsync(int file)
{
    return call_or_fail<decltype(&::fsync)>("fsync", call_t::sync, EIO, file);
}

int linkat(int folder, const char* path, int new_folder, const char* new_path, int flags) noexcept
{
    return call_or_fail<decltype(&::linkat)>("linkat", call_t::link, EMLINK, folder, path, new_folder,
                                             new_path, flags);
}

int rename(const char* from, const char* to) noexcept
{
    return call_or_fail<decltype(&::rename)>("rename", call_t::rename, EIO, from, to);
}

int mkdir(const char* path, mode_t mode) noexcept
{
    return call_or_fail<decltype(&::mkdir)>("mkdir", call_t::mkdir, EDQUOT, path, mode);
}

int flock(int file, int operation) noexcept
{
    return call_or_fail<decltype(&::flock)>("flock", call_t::lock, ENOLCK, file, operation);
}

// The toolkit's own threads end the program when they cannot start.
int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*run)(void*),
                   void* data) noexcept
{
    Dl_info caller = {};
    const bool is_ours = ::dladdr(__builtin_return_address(0), &caller) != 0 && caller.dli_fname &&
                         std::strstr(caller.dli_fname, "libstdc++") != nullptr;
    if (is_ours && is_due(call_t::thread))
        return EAGAIN;
    static const auto real =
        reinterpret_cast<decltype(&::pthread_create)>(::dlsym(RTLD_NEXT, "pthread_create"));
    return real(thread, attributes, run, data);
}

} // extern "C"

void* operator new(std::size_t size)
{
    void* memory = is_due(call_t::memory) ? nullptr : std::malloc(size ? size : 1);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
// NOLINTEND
