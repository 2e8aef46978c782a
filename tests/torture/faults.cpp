#include "faults.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdlib>
#include <new>

namespace faults {
namespace {

std::atomic<int> left{0}; // calls until the fault; 0: none is due
std::atomic<int> armed_call{-1};
std::atomic<fault_t> armed_fault{fault_t::fails};
std::atomic<bool> struck{false};

/// Whether this call is the one.
bool is_due(call_t call)
{
    if (armed_call.load(std::memory_order_relaxed) != static_cast<int>(call) || left.fetch_sub(1) != 1)
        return false;
    struck = true;
    if (armed_fault == fault_t::killed)
        ::kill(::getpid(), SIGKILL);
    return true;
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

template <class Function, class... Arguments>
auto call_or_fail(const char* name, call_t call, int number, Arguments... arguments)
{
    static const auto real = reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
    using result_t = decltype(real(arguments...));
    if (!is_due(call))
        return real(arguments...);
    if (armed_fault == fault_t::shortened)
        return real(shortened(arguments)...);
    return static_cast<result_t>(fail_with(number));
}

} // namespace

const char* name_of(call_t call)
{
    constexpr const char* names[] = {"open",   "stat",  "read", "write",  "sync", "link",
                                     "rename", "mkdir", "lock", "memory", ""};
    return names[static_cast<int>(call)];
}

void arm(call_t call, int n, fault_t fault)
{
    struck = false;
    armed_fault = fault;
    left = n;
    armed_call = static_cast<int>(call);
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
    return call_or_fail<int (*)(const char*, int, ...)>("open", call_t::open, EMFILE, path, flags, mode);
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
