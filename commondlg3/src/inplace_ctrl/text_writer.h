#pragma once

#include "commondlg3/inplace_text.h"

#include "contents.h"

#include <gen_helpers2/error_code.h>
#include <gen_helpers2/file.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace commondlg3 {

/// Makes a text of a log, piece by piece. Any thread.
class log_format_t
{
public:
    struct entry_t
    {
        std::uint32_t tag;
        std::string_view caption;
        std::string message; ///< plain
    };
    struct line_t
    {
        std::string_view text;
        std::uint32_t severity;
        std::string_view time;   ///< in ISO 8601; empty: not asked for, or not known
        std::uint64_t count = 1; ///< so often in a row
    };

    virtual ~log_format_t() = default;
    virtual void begin(std::string&) {}
    virtual void begin_entry(std::string& out, const entry_t& entry) = 0;
    virtual void add(std::string& out, const line_t& line) = 0;
    virtual void end_entry(std::string&) {}
    virtual void end(std::string&) {}

    static std::unique_ptr<log_format_t> make(text_format_t format);
};

/// The local time with its offset in ISO 8601, to the millisecond. Remembers the second of the last one, as
/// most are close to the one before.
class iso_time_t
{
public:
    /// @param time in milliseconds since 1970. Valid until the next call
    std::string_view format(std::int64_t time);

private:
    std::int64_t m_second = -1;
    char m_text[64];
    int m_length = 0;
};

/// Writes the contents of a log into a file in one of the formats.
/// @param show_debug whether debug lines that are not shown yet would be
[[nodiscard]] gen_helpers2::error_code_t write_text(const std::vector<entry_contents_t>& entries,
                                                    bool show_debug, const gen_helpers2::path_t& file,
                                                    text_format_t format, const text_options_t& options);

} // namespace commondlg3
