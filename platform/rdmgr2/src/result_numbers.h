#pragma once

#include <gen_helpers2/path.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace rdmgr2 {

/// The number that a name has by a pattern; 0 when it is none of that pattern's.
std::uint64_t number_of(std::string_view name, std::string_view pattern);

/// The names in a folder, of any kind; empty when it cannot be read.
std::vector<std::string> names_in(const gen_helpers2::path_t& folder);

/// One more than the greatest number of the pattern in the folder, from what is remembered of it if it has
/// not changed since.
std::uint64_t next_number(const std::string& pattern, const gen_helpers2::path_t& folder);

} // namespace rdmgr2
