#include "gen_helpers2/file_stamp.h"

#include <sys/stat.h>

#include <cerrno>

namespace gen_helpers2 {

file_stamp_t::file_stamp_t(const path_t& file)
{
    struct stat status;
    const bool is_known = !file.is_empty() && ::stat(file.as_string().c_str(), &status) == 0;
    m_exists = is_known || (!file.is_empty() && errno != ENOENT && errno != ENOTDIR);
    if (!is_known)
        return;
    m_device = status.st_dev;
    m_inode = status.st_ino;
    m_size = status.st_size;
    m_seconds = status.st_mtim.tv_sec;
    m_nanoseconds = status.st_mtim.tv_nsec;
}

bool file_stamp_t::equals(const file_stamp_t& other) const noexcept
{
    return m_exists == other.m_exists && m_device == other.m_device && m_inode == other.m_inode &&
           m_size == other.m_size && m_seconds == other.m_seconds && m_nanoseconds == other.m_nanoseconds;
}

} // namespace gen_helpers2
