#pragma once

#include <gen_helpers2/path.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace commondlg3 {

/// An empty file for as long as the system is asked about files of its kind. One that is there already is
/// left alone, and so is one that somebody put in its place meanwhile: the temporary folder is everybody's.
/// Where the file cannot be made its name alone must do.
class probe_file_t
{
public:
    explicit probe_file_t(const gen_helpers2::path_t& file) : m_file(file)
    {
        constexpr mode_t for_the_user = 0600;
        const int created =
            ::open(file.as_string().c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, for_the_user);
        if (created < 0)
            return;
        m_made = ::fstat(created, &m_status) == 0;
        ::close(created);
    }
    ~probe_file_t()
    {
        struct stat now;
        if (m_made && ::lstat(m_file.as_string().c_str(), &now) == 0 && now.st_dev == m_status.st_dev &&
            now.st_ino == m_status.st_ino)
            ::unlink(m_file.as_string().c_str());
    }
    probe_file_t(const probe_file_t&) = delete;
    probe_file_t& operator=(const probe_file_t&) = delete;

private:
    gen_helpers2::path_t m_file;
    bool m_made = false;
    struct stat m_status;
};

} // namespace commondlg3
