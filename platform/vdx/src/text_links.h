/// Links in plain texts.
#pragma once

#include "vdx/log_link.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace vdxcfrw7 {

struct text_link_t
{
    std::size_t begin; ///< in bytes of the text
    std::size_t end;
    log_link_t link;
};

/// Nobody looks for links behind so many bytes of a text.
constexpr std::size_t longest_linked = 64 * 1024;

/// Addresses of the web, and paths with a line: `/src/a.cpp:42`, `a.cpp:42:7`, `a.cpp(42)`, `a.cpp(42,7)`.
std::vector<text_link_t> find_links(std::string_view text);

} // namespace vdxcfrw7
