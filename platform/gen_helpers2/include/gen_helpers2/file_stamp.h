#pragma once

#include "gen_helpers2/export.h"
#include "gen_helpers2/path.h"

#include <sys/types.h>

namespace gen_helpers2 {

/// Tells one state of a file from another without reading it, to find out whether somebody has written it
/// meanwhile. A file that is written by renaming, as ours are, has another inode each time.
///
///     const file_stamp_t before(file);
///     ...
///     if (file_stamp_t(file) != before) ...            // somebody has written it
///
/// Making one asks the disk.
/// @since 3.1
class GEN_HELPERS2_EXPORT file_stamp_t
{
public:
    /// Of no file.
    file_stamp_t() = default;
    /// A file that is not there has a stamp as well. One that cannot be looked at may be there, and counts so.
    explicit file_stamp_t(const path_t& file);

    /// Whether the file was there, or may have been.
    bool exists() const noexcept { return m_exists; }

    friend bool operator==(const file_stamp_t& a, const file_stamp_t& b) noexcept { return a.equals(b); }
    friend bool operator!=(const file_stamp_t& a, const file_stamp_t& b) noexcept { return !a.equals(b); }

private:
    bool equals(const file_stamp_t& other) const noexcept;

    bool m_exists = false;
    dev_t m_device = 0;
    ino_t m_inode = 0;
    off_t m_size = 0; ///< bytes
    time_t m_seconds = 0;
    long m_nanoseconds = 0;
};

} // namespace gen_helpers2
