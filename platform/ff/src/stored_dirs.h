#pragma once

#include "ff/search_directories.h"

#include <string>
#include <string_view>
#include <vector>

namespace FF_2_13 {

struct stored_list_t
{
    std::vector<search_dir_entry_t> dirs;
    std::string comment_at_end; ///< of no directory
};

/// What can be a directory at all: file names end at a zero byte.
bool is_storable(const std::string& path);

/// One line a directory: "!" before one that is disabled, "+" or "-" for recursive or not, then the path in
/// printable characters. Versions that know no "!" pass over such lines: they do not search there either.
std::string to_stored_text(const stored_list_t& list);
/// Passes over what to_stored_text() does not write.
stored_list_t from_stored_text(std::string_view text);

} // namespace FF_2_13
