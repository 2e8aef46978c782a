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

template <class Function>
Function original(const char* name)
{
    return reinterpret_cast<Function>(::dlsym(RTLD_NEXT, name));
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

using faults::call_t;
using faults::fail_with;
using faults::is_due;
using faults::original;

// NOLINTBEGIN: the names and arguments are the system's.
extern "C" {

int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    static const auto real = original<int (*)(const char*, int, ...)>("open");
    return is_due(call_t::open) ? fail_with(EMFILE) : real(path, flags, mode);
}

int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    static const auto real = original<int (*)(const char*, int, ...)>("open64");
    return is_due(call_t::open) ? fail_with(EMFILE) : real(path, flags, mode);
}

int stat(const char* path, struct stat* status) noexcept
{
    static const auto real = original<int (*)(const char*, struct stat*)>("stat");
    return is_due(call_t::stat) ? fail_with(EIO) : real(path, status);
}

int fstat(int file, struct stat* status) noexcept
{
    static const auto real = original<int (*)(int, struct stat*)>("fstat");
    return is_due(call_t::stat) ? fail_with(EIO) : real(file, status);
}

ssize_t read(int file, void* buffer, size_t size)
{
    static const auto real = original<ssize_t (*)(int, void*, size_t)>("read");
    if (!is_due(call_t::read))
        return real(file, buffer, size);
    if (faults::armed_fault == faults::fault_t::shortened)
        return real(file, buffer, (size + 1) / 2);
    return fail_with(EIO);
}

ssize_t write(int file, const void* buffer, size_t size)
{
    static const auto real = original<ssize_t (*)(int, const void*, size_t)>("write");
    if (!is_due(call_t::write))
        return real(file, buffer, size);
    if (faults::armed_fault == faults::fault_t::shortened)
        return real(file, buffer, (size + 1) / 2);
    return fail_with(ENOSPC);
}

int fsync(int file)
{
    static const auto real = original<int (*)(int)>("fsync");
    return is_due(call_t::sync) ? fail_with(EIO) : real(file);
}

int linkat(int old_folder, const char* old_path, int new_folder, const char* new_path, int flags) noexcept
{
    static const auto real = original<int (*)(int, const char*, int, const char*, int)>("linkat");
    return is_due(call_t::link) ? fail_with(EMLINK) : real(old_folder, old_path, new_folder, new_path, flags);
}

int rename(const char* from, const char* to) noexcept
{
    static const auto real = original<int (*)(const char*, const char*)>("rename");
    return is_due(call_t::rename) ? fail_with(EIO) : real(from, to);
}

int mkdir(const char* path, mode_t mode) noexcept
{
    static const auto real = original<int (*)(const char*, mode_t)>("mkdir");
    return is_due(call_t::mkdir) ? fail_with(EDQUOT) : real(path, mode);
}

int flock(int file, int operation) noexcept
{
    static const auto real = original<int (*)(int, int)>("flock");
    return is_due(call_t::lock) ? fail_with(ENOLCK) : real(file, operation);
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
