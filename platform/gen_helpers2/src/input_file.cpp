#include "input_file.h"
#include "atomic_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace gen_helpers2 {
namespace _internal {

namespace {
error_code_t too_large(const path_t& path)
{
    return error_code_t::io_error(file_message("cannot read", path, EFBIG));
}
} // namespace

input_file_t::input_file_t(const path_t& path, std::size_t max_bytes) : m_path(path), m_max_bytes(max_bytes)
{
    if (path.is_empty()) {
        m_error = error_code_t::invalid_parameter("no file name");
        return;
    }
    // Opening a pipe would otherwise wait for somebody to write into it.
    m_file = ::open(path.as_string().c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    struct stat status;
    if (m_file < 0 || ::fstat(m_file, &status) != 0)
        m_error = error_code_t::io_error(file_message("cannot read", path, errno));
    else if (!S_ISREG(status.st_mode))
        m_error = error_code_t::io_error(
            file_message("cannot read", path, S_ISDIR(status.st_mode) ? EISDIR : EINVAL));
    else if (static_cast<unsigned long long>(status.st_size) > max_bytes)
        m_error = too_large(path);
    else {
        m_size = static_cast<std::size_t>(status.st_size);
        m_written = status.st_mtim;
    }
}

input_file_t::~input_file_t()
{
    if (m_file >= 0)
        ::close(m_file);
}

// What was written in place meanwhile may have been read in part, before it and behind it.
bool input_file_t::is_as_before() const
{
    struct stat now;
    return ::fstat(m_file, &now) == 0 && static_cast<std::size_t>(now.st_size) == m_size &&
           now.st_mtim.tv_sec == m_written.tv_sec && now.st_mtim.tv_nsec == m_written.tv_nsec;
}

std::size_t input_file_t::read(char* buffer, std::size_t size)
{
    while (m_error.succeeded()) {
        const ssize_t got = ::read(m_file, buffer, size);
        if (got < 0 && errno == EINTR)
            continue;
        if (got < 0) {
            m_error = error_code_t::io_error(file_message("cannot read", m_path, errno));
            break;
        }
        if (got == 0 && !is_as_before()) {
            m_error = error_code_t::io_error(file_message("cannot read", m_path, EBUSY));
            break;
        }
        m_read += static_cast<std::size_t>(got);
        if (m_read > m_max_bytes) {
            m_error = too_large(m_path);
            break;
        }
        return static_cast<std::size_t>(got);
    }
    return 0;
}

} // namespace _internal
} // namespace gen_helpers2
