#pragma once

#include "text_matcher.h"

#include <cstddef>
#include <string>

namespace vdxcfrw7 {

class log_layout_t;

/// Which lines of a log are shown.
class log_filter_t
{
public:
    /// Lines with one of these severity bits (0: all) that contain the text (empty: all), of one entry (null:
    /// of all). False when that is the filter already.
    bool set(int severities, const std::string& text, const CEventLog::find_options_t& options,
             const CMessageElement* only);
    bool is_set() const { return m_severities || !m_matcher.is_empty(); }
    bool passes(const line_t& line);
    bool passes(const CMessageElement& element) const { return !m_only || m_only == &element; }
    const CMessageElement* get_only() const { return m_only; }
    void show_all_entries() { m_only = nullptr; }

    /// Hides and shows the lines of the log until its slice is over; whether more are left.
    bool apply_some(CEventLog& log, log_layout_t& layout);
    void begin_again();
    void lines_dropped(const CMessageElement& element, std::size_t lines);

private:
    int m_severities = 0;
    text_matcher_t m_matcher;
    const CMessageElement* m_only = nullptr;
    std::string m_storage;
    // Where apply_some() goes on.
    std::size_t m_element = 0;
    std::size_t m_line = 0;
};

} // namespace vdxcfrw7
