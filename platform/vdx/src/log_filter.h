#pragma once

#include <cstddef>
#include <string>

namespace vdxcfrw7 {

class CEventLog;
class log_layout_t;
struct line_t;

/// Which lines of a log are shown.
class log_filter_t
{
public:
    /// Lines with one of these severity bits (0: all) that contain the text (empty: all). False when that
    /// is the filter already.
    bool set(int severities, const std::string& text);
    bool is_set() const { return m_severities || !m_text.empty(); }
    bool passes(const line_t& line) const;

    /// Hides and shows the lines of the log until its slice is over; whether more are left.
    bool apply_some(CEventLog& log, log_layout_t& layout);
    void begin_again();

private:
    int m_severities = 0;
    std::string m_text; // folded
    // Where apply_some() goes on.
    std::size_t m_element = 0;
    std::size_t m_line = 0;
};

} // namespace vdxcfrw7
