#pragma once

#include <string>

namespace gallery {

/// The record of the example dialog and the example page.
struct example_record_t
{
    std::string name;
    std::string notes;
};

/// In characters; short enough to be met while trying the windows out.
inline constexpr long max_name_length = 20;
inline constexpr long max_notes_length = 200;

} // namespace gallery
