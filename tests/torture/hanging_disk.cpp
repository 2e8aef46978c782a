// Stands before the system's functions in a program that is started with it (LD_PRELOAD): whoever asks for
// something below the folder of the environment's HANGING_FOLDER gets no answer, as with a network folder
// whose server is gone.
// The system's headers must leave the functions that are defined here to be defined.
#undef _FORTIFY_SOURCE
#include <dirent.h>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdlib>
#include <cstring>

namespace {

void hang_below(const char* path)
{
    static const char* const folder = std::getenv("HANGING_FOLDER");
    if (folder && path && std::strncmp(path, folder, std::strlen(folder)) == 0)
        for (;;)
            ::pause();
}

template <class Result, class... Arguments>
Result ask(const char* name, const char* path, Arguments... arguments)
{
    hang_below(path);
    return reinterpret_cast<Result (*)(const char*, Arguments...)>(::dlsym(RTLD_NEXT, name))(path,
                                                                                             arguments...);
}

} // namespace

// NOLINTBEGIN: the names and arguments are the system's.
extern "C" {

int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return ask<int>("open", path, flags, mode);
}
int openat(int folder, const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    hang_below(path);
    return reinterpret_cast<int (*)(int, const char*, int, mode_t)>(::dlsym(RTLD_NEXT, "openat"))(
        folder, path, flags, mode);
}
int stat(const char* path, struct stat* status) noexcept
{
    return ask<int>("stat", path, status);
}
int lstat(const char* path, struct stat* status) noexcept
{
    return ask<int>("lstat", path, status);
}
int access(const char* path, int mode) noexcept
{
    return ask<int>("access", path, mode);
}
int statvfs(const char* path, struct statvfs* system) noexcept
{
    return ask<int>("statvfs", path, system);
}
DIR* opendir(const char* path)
{
    return ask<DIR*>("opendir", path);
}
int mkdir(const char* path, mode_t mode) noexcept
{
    return ask<int>("mkdir", path, mode);
}
ssize_t readlink(const char* path, char* target, size_t size) noexcept
{
    return ask<ssize_t>("readlink", path, target, size);
}

int open64(const char* path, int flags, ...) __attribute__((alias("open")));
int openat64(int folder, const char* path, int flags, ...) __attribute__((alias("openat")));
int stat64(const char* path, struct stat64* status) noexcept __attribute__((alias("stat")));
int statvfs64(const char* path, struct statvfs64* system) noexcept __attribute__((alias("statvfs")));
int lstat64(const char* path, struct stat64* status) noexcept __attribute__((alias("lstat")));

} // extern "C"
// NOLINTEND
