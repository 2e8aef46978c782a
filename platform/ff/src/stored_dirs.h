#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace FF_2_13 {

struct stored_dir_t
{
    std::string path;
    bool recursive = false;

    friend bool operator==(const stored_dir_t& a, const stored_dir_t& b)
    {
        return a.path == b.path && a.recursive == b.recursive;
    }
};

/// What can be a directory at all: file names end at a zero byte.
bool is_storable(const std::string& path);

/// One line a directory: "+" or "-" for recursive or not, then the path in printable characters.
std::string to_stored_text(const std::vector<stored_dir_t>& dirs);
/// Passes over what to_stored_text() does not write.
std::vector<stored_dir_t> from_stored_text(std::string_view text);

} // namespace FF_2_13
