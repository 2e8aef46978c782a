#include "atomic_file.h"
#include "gen_helpers2/strings.h"
#include "staged_files.h"
#include "temporary_names.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <filesystem>
#include <system_error>
#include <utility>

namespace gen_helpers2 {
namespace _internal {

namespace {

constexpr int max_links = 40;

/// Follows symbolic links as far as they lead, also to a file that does not exist yet. Empty with errno set
/// if they lead in a circle, or if somebody else made one: it would choose which of the user's files is
/// replaced.
std::string link_target(std::string path)
{
    for (int i = 0; i < max_links; ++i) {
        std::error_code error;
        const std::filesystem::path link = std::filesystem::read_symlink(path, error);
        if (error)
            return path;
        struct stat status;
        if (::lstat(path.c_str(), &status) == 0 && status.st_uid != ::geteuid() && status.st_uid != 0) {
            errno = EACCES;
            return std::string();
        }
        // operator/ of the standard: a link may lead through "..", which must not be taken off lexically.
        path = (std::filesystem::path(path).parent_path() / link).native();
    }
    errno = ELOOP;
    return std::string();
}

std::string folder_of(const std::string& path)
{
    const std::string folder = std::filesystem::path(path).parent_path().native();
    return folder.empty() ? std::string(".") : folder;
}

std::string by_descriptor(int file)
{
    return "/proc/self/fd/" + std::to_string(file);
}

/// A file that grows beyond what its user may write is an error like a full disk, where the system would end
/// the program with a signal.
class no_size_signal_t
{
public:
    no_size_signal_t()
    {
        ::sigemptyset(&m_signal);
        ::sigaddset(&m_signal, SIGXFSZ);
        ::pthread_sigmask(SIG_BLOCK, &m_signal, &m_before);
    }
    ~no_size_signal_t()
    {
        const timespec at_once = {0, 0};
        if (::sigismember(&m_before, SIGXFSZ) == 0)
            while (::sigtimedwait(&m_signal, nullptr, &at_once) == SIGXFSZ)
                continue;
        ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }
    no_size_signal_t(const no_size_signal_t&) = delete;
    no_size_signal_t& operator=(const no_size_signal_t&) = delete;

private:
    sigset_t m_signal;
    sigset_t m_before;
};

} // namespace

std::string file_message(const char* what, const path_t& path, int number)
{
    return std::string(what) + " " + replace_invalid_utf8(path.as_string()) + ": " +
           std::system_category().message(number);
}

void atomic_file_t::fail(const char* what, int number)
{
    if (m_error.succeeded())
        m_error = error_code_t::io_error(file_message(what, m_shown, number));
}

atomic_file_t::atomic_file_t(const path_t& path) : m_shown(path)
{
    if (path.is_empty()) {
        m_error = error_code_t::invalid_parameter("no file name");
        return;
    }
    m_target = link_target(path.as_string());
    if (m_target.empty()) {
        fail("cannot write", errno);
        return;
    }
    struct stat existing;
    const bool exists = ::stat(m_target.c_str(), &existing) == 0;
    if (exists) {
        // Renaming would replace a write-protected file without asking, and the superuser may write anything.
        constexpr unsigned any_write = S_IWUSR | S_IWGRP | S_IWOTH;
        if (!S_ISREG(existing.st_mode))
            fail("cannot write", S_ISDIR(existing.st_mode) ? EISDIR : EINVAL);
        else if ((existing.st_mode & any_write) == 0 || ::access(m_target.c_str(), W_OK) != 0)
            fail("cannot write", EACCES);
        if (m_error.failed())
            return;
    }
    constexpr unsigned for_the_owner = 0600;
    open_temporary(exists ? existing.st_mode & 07777 : for_the_owner);
    if (m_file >= 0 && exists) {
        // The group first: changing it takes special bits away. That it may not be allowed is no reason to
        // fail.
        if (existing.st_gid != ::getegid() && ::fchown(m_file, static_cast<uid_t>(-1), existing.st_gid) != 0)
            errno = 0;
        if (::fchmod(m_file, existing.st_mode & 07777) != 0)
            fail("cannot set the permissions of", errno);
    }
}

void atomic_file_t::open_temporary(unsigned mode)
{
    const std::string folder = folder_of(m_target);
    remove_stale_names(folder);
    m_file = ::open(folder.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, mode);
    if (m_file >= 0 && ::access(by_descriptor(m_file).c_str(), F_OK) == 0) {
        ::flock(m_file, LOCK_EX | LOCK_NB); // it is in use, should it get a name
        return;
    }
    if (m_file >= 0)
        ::close(m_file); // nothing could give it a name later
    m_temporary = make_temporary_name(folder, false);
    m_file = ::open(m_temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, mode);
    if (m_file < 0) {
        const int number = errno;
        m_temporary.clear();
        fail("cannot write", number);
    } else {
        ::flock(m_file, LOCK_EX | LOCK_NB); // it is in use
    }
}

// Linking replaces nothing, so that the name in the end comes by renaming, as it does everywhere.
bool atomic_file_t::make_name()
{
    if (!m_temporary.empty())
        return true;
    const std::string file = by_descriptor(m_file);
    m_temporary = make_temporary_name(folder_of(m_target), true);
    if (::linkat(AT_FDCWD, file.c_str(), AT_FDCWD, m_temporary.c_str(), AT_SYMLINK_FOLLOW) == 0)
        return true;
    m_temporary.clear();
    return false;
}

atomic_file_t::~atomic_file_t()
{
    for (const int file : {m_file, m_lock})
        if (file >= 0)
            ::close(file);
    if (!m_temporary.empty())
        ::unlink(m_temporary.c_str());
}

void atomic_file_t::append(std::string_view bytes)
{
    const no_size_signal_t guard;
    while (m_error.succeeded() && !bytes.empty()) {
        const ssize_t written = ::write(m_file, bytes.data(), bytes.size());
        if (written > 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
        else if (written == 0 || errno != EINTR)
            fail("cannot write", written == 0 ? EIO : errno);
    }
}

error_code_t atomic_file_t::commit()
{
    const std::string folder_name = folder_of(m_target); // while nothing has happened yet
    if (m_error.succeeded() && ::fsync(m_file) != 0)
        fail("cannot write", errno);
    if (m_error.succeeded() && !make_name())
        fail("cannot write", errno);
    if (m_file >= 0) {
        m_lock = ::fcntl(m_file, F_DUPFD_CLOEXEC, 0); // another program must not take it for left behind
        if (::close(m_file) != 0 && errno != EINTR)
            fail("cannot write", errno);
        m_file = -1;
    }
    if (auto* staged = staged_files_t::current(); staged && m_error.succeeded()) {
        staged->make_room();
        staged->add({std::move(m_temporary), std::move(m_target), std::exchange(m_lock, -1)});
        m_temporary.clear();
        return m_error;
    }
    if (m_error.succeeded() && ::rename(m_temporary.c_str(), m_target.c_str()) != 0)
        fail("cannot replace", errno);
    if (m_error.failed())
        return m_error;
    m_temporary.clear();
    synchronise_folder(folder_name); // without this the rename itself may be lost with the power
    return m_error;
}

} // namespace _internal
} // namespace gen_helpers2
