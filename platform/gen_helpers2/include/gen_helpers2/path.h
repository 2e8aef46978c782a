#pragma once

#include "gen_helpers2/export.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace gen_helpers2 {

/// The name of a file or folder: bytes, of any encoding or none, exactly as the system has them.
///
/// The text is normalised without looking at the disk: no "." and no "dir/..", no doubled separator and none
/// at the end (except in "/"). "dir/.." is taken off even where dir is a symbolic link to elsewhere; where
/// that matters, resolve links first. Text that is no path gives the empty path: the empty text, and any with
/// an asterisk (that is a file pattern) or a zero byte.
///
/// \code
/// gen_helpers2::path_t file = gen_helpers2::stdpaths::get_user_config_dir() / "product" / "settings.xml";
/// if (!file.is_empty() && file.is_file()) ...
/// \endcode
class GEN_HELPERS2_EXPORT path_t
{
public:
    path_t() = default;
    path_t(std::string_view bytes);
    path_t(const std::string& bytes) : path_t(std::string_view(bytes)) {}
    path_t(const char* bytes) : path_t(bytes ? std::string_view(bytes) : std::string_view()) {}
    path_t(const std::filesystem::path& path) : path_t(std::string_view(path.native())) {}

    const std::string& as_string() const noexcept { return m_path.native(); }
    /// For the standard library's calls.
    const std::filesystem::path& as_filesystem_path() const noexcept { return m_path; }

    bool is_empty() const noexcept { return m_path.empty(); }
    bool is_absolute() const noexcept;

    /// The folder that holds this. Empty for "/", for a relative path of one name and for the empty path.
    path_t parent() const;
    /// The last name. Empty for "/", "." , ".." and the empty path.
    std::string file_name() const;

    /// `rest` below this; `rest` itself if it is absolute. Empty if either is empty: no path joined with
    /// anything is no path, so that a refused text does not turn into the folder it was to be in.
    path_t operator/(const path_t& rest) const;

    // These follow symbolic links, never throw, and answer false for what cannot be looked at.
    /// Whether something is there that can be looked at.
    bool exists() const noexcept;
    bool is_directory() const noexcept;
    bool is_file() const noexcept;
    /// Whether nothing is there for sure: not the opposite of exists(), which is false on a broken disk too.
    /// What may be there must not be written over unread.
    /// @since 3.1
    bool is_missing() const noexcept;

    // The same things by the names under which code for typed paths knows them.

    /// With a separator at the end when asked for; the empty path stays empty.
    std::string as_string(bool with_separator_at_end) const;
    /// Puts `rest` below this, as operator/ does.
    path_t& append(const path_t& rest);
    /// The text is normalised from the start; false for the empty path, which is none.
    bool normalize() noexcept { return !is_empty(); }
    std::string get_leaf() const { return file_name(); }
    path_t get_branch() const { return parent(); }
    /// What follows the last dot of the last name, or from that dot on. Empty for a name without a dot, and
    /// for one that only begins with it.
    std::string get_ext(bool with_dot) const;
    /// The same of a text that is a path.
    static bool exists(const std::string& text) noexcept;
    /// The same of a text that is a path.
    static bool is_directory(const std::string& text) noexcept;

    /// The longest name and the longest path that the system takes, in bytes.
    static constexpr std::size_t max_name_bytes = 255;
    static constexpr std::size_t max_path_bytes = 4095;

    /// Whether a text can be a path that the system would take: not empty, no asterisk, no zero byte, no name
    /// and no whole that is too long. It need not exist.
    /// @param with_folders false: only a single name, without a separator, will do
    /// @param error_position byte at which the fault was noticed; left alone when there is none
    static bool validate(std::string_view text, bool with_folders, int& error_position);

    friend bool operator==(const path_t& a, const path_t& b) noexcept
    {
        return a.as_string() == b.as_string();
    }
    friend bool operator!=(const path_t& a, const path_t& b) noexcept
    {
        return a.as_string() != b.as_string();
    }
    /// The order of the bytes.
    friend bool operator<(const path_t& a, const path_t& b) noexcept { return a.as_string() < b.as_string(); }

private:
    std::filesystem::path m_path;
};

} // namespace gen_helpers2

namespace gh2 = gen_helpers2;
