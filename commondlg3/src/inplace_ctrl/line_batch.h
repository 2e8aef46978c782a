#pragma once

#include <msngr2/messenger.h>
#include <vdx/line_store.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace commondlg3 {

/// Lines that were said and are not shown yet.
struct line_batch_t
{
    static constexpr std::int64_t no_time = vdxcfrw7::line_store_t::no_time;

    struct line_t
    {
        const char* begin; ///< in the arena
        std::uint32_t length;
        msngr2::ESeverity severity;
        std::uint32_t time;  ///< since `time_base`, in milliseconds; `unknown` when nobody knows it
        std::uint32_t count; ///< how often it was said in a row

        static constexpr std::uint32_t unknown = 0xffffffff;
        std::string_view text() const { return std::string_view(begin, length); }
    };

    /// @param time in milliseconds since 1970
    /// @param collapse counts the last line up when it is this very one
    void add(msngr2::ESeverity severity, std::string_view text, std::int64_t time = no_time,
             bool collapse = false)
    {
        if (collapse && !lines.empty() && lines.back().severity == severity && lines.back().text() == text &&
            lines.back().count < 0xffffffff) {
            ++lines.back().count;
            return;
        }
        if (time_base == no_time)
            time_base = time;
        const auto since = static_cast<std::uint32_t>(
            time == no_time ? line_t::unknown
                            : std::clamp<std::int64_t>(time - time_base, 0, line_t::unknown - 1));
        lines.push_back({texts.add(text), static_cast<std::uint32_t>(text.size()), severity, since, 1});
        bytes += text.size();
        if (severity & (msngr2::sev_status | msngr2::sev_debug))
            passing_bytes += text.size();
    }

    std::int64_t time_of(const line_t& line) const
    {
        return line.time == line_t::unknown ? no_time : time_base + line.time;
    }

    vdxcfrw7::text_arena_t texts;
    std::vector<line_t> lines;
    std::int64_t time_base = no_time;
    std::size_t bytes = 0;
    std::size_t passing_bytes = 0; ///< of lines that are not kept: status and debug
    std::size_t shown = 0;         ///< how many lines are in the log already
};

} // namespace commondlg3
