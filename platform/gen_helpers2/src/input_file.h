#pragma once

#include "gen_helpers2/error_code.h"
#include "gen_helpers2/path.h"

#include <cstddef>
#include <ctime>

namespace gen_helpers2 {
namespace _internal {

/// A regular file read from its beginning. What is no regular file, is larger than allowed, or is written by
/// somebody while it is read is an error.
class input_file_t
{
public:
    input_file_t(const path_t& path, std::size_t max_bytes);
    ~input_file_t();
    input_file_t(const input_file_t&) = delete;
    input_file_t& operator=(const input_file_t&) = delete;

    const error_code_t& error() const noexcept { return m_error; }
    /// Zero on an error.
    std::size_t expected_size() const noexcept { return m_error.failed() ? 0 : m_size; }
    /// Zero at the end and after an error.
    std::size_t read(char* buffer, std::size_t size);

private:
    bool is_as_before() const;

    path_t m_path;
    std::size_t m_max_bytes;
    std::size_t m_size = 0;
    std::size_t m_read = 0;
    struct timespec m_written = {};
    int m_file = -1;
    error_code_t m_error;
};

} // namespace _internal
} // namespace gen_helpers2
