#pragma once

#include "gen_helpers2/error_code.h"
#include "gen_helpers2/export.h"
#include "gen_helpers2/path.h"

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace gen_helpers2 {

/// Writes a file so that at every moment, even after a power cut, either the old or the new content is there:
/// a temporary file in the same folder is written, synchronised and renamed.
///
/// A new file is its owner's alone to read and write, an existing one keeps its permission bits; a symbolic
/// link stays a link and its target is replaced. A
/// file without write permission is an error, as it would be when written in place. On an error the old file
/// is as it was and the temporary one is gone.
[[nodiscard]] GEN_HELPERS2_EXPORT error_code_t write_whole_file(const path_t& path, std::string_view bytes);

/// The same for what is too much to be held in memory: what is appended becomes the file when commit()
/// succeeds, and nothing of it remains otherwise. Thread: like a standard container.
/// @since 3.1
class GEN_HELPERS2_EXPORT whole_file_writer_t
{
public:
    explicit whole_file_writer_t(const path_t& path);
    ~whole_file_writer_t();
    whole_file_writer_t(const whole_file_writer_t&) = delete;
    whole_file_writer_t& operator=(const whole_file_writer_t&) = delete;

    /// Each call is one of the system's: append large pieces.
    void append(std::string_view bytes);
    /// The first error, which stays; appending after it does nothing.
    const error_code_t& error() const noexcept;
    /// Puts the file in its place, whole, and answers the first error. Without it the place is as it was.
    [[nodiscard]] error_code_t commit();

private:
    struct impl_t;
    std::unique_ptr<impl_t> m_impl;
};

/// Makes a folder for its owner alone, and those on the way to it that are missing. What is there already
/// stays as it is: whether there is such a folder now, writing into it tells.
/// @since 3.1
GEN_HELPERS2_EXPORT void make_private_folder(const path_t& folder);

/// What is read, and written, at most where nobody says otherwise.
constexpr std::size_t default_max_file_bytes = std::size_t(256) << 20;

/// Reads a regular file of at most `max_bytes` bytes. On an error `out` is as it was.
[[nodiscard]] GEN_HELPERS2_EXPORT error_code_t
read_whole_file(const path_t& path, std::string& out, std::size_t max_bytes = default_max_file_bytes);

} // namespace gen_helpers2

namespace gh2 = gen_helpers2;
