#pragma once

#include <msngr2/messenger.h>
#include <vdx/line_store.h>

#include <cstddef>
#include <string_view>
#include <vector>

namespace commondlg3 {

/// Lines that were said and are not shown yet.
struct line_batch_t
{
    struct line_t
    {
        std::string_view text; // in the arena
        msngr2::ESeverity severity;
    };

    void add(msngr2::ESeverity severity, std::string_view text)
    {
        lines.push_back({std::string_view(texts.add(text), text.size()), severity});
        bytes += text.size();
        if (severity & (msngr2::sev_status | msngr2::sev_debug))
            passing_bytes += text.size();
    }

    vdxcfrw7::text_arena_t texts;
    std::vector<line_t> lines;
    std::size_t bytes = 0;
    std::size_t passing_bytes = 0; ///< of lines that are not kept: status and debug
    std::size_t shown = 0;         ///< how many lines are in the log already
};

} // namespace commondlg3
