#pragma once

#include "commondlg3/inplace_contents.h"

#include "line_batch.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace commondlg3 {

/// The contents of one entry.
struct entry_contents_t
{
    std::uint32_t tag = 0;
    std::string message;
    std::string caption;
    std::shared_ptr<const std::string> image; ///< as it is saved; null: none
    vdxcfrw7::line_store_t lines;
    std::vector<std::unique_ptr<line_batch_t>> unshown; ///< said, and not in `lines` yet
};

struct inplace_contents_t::data_t
{
    std::vector<entry_contents_t> entries;
    bool show_debug = false;
    bool keep_times = false;
    std::vector<gen_helpers2::path_t> unread;   ///< files that were not read to their end; they come first
    std::vector<gen_helpers2::path_t> not_kept; ///< files that broke off and could not be kept aside yet
};

/// Keeps a file that cannot be read to its end as `<file>.damaged`: the next saving replaces it by what could
/// be read. Any thread.
/// @return false when it could not: it must not be replaced then
[[nodiscard]] bool keep_aside(const gen_helpers2::path_t& file);

/// Frees lines: many of them on a worker.
void free_lines(vdxcfrw7::line_store_t lines, std::vector<std::unique_ptr<line_batch_t>> unshown);

} // namespace commondlg3
