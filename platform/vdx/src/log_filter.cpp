#include "log_filter.h"

#include "vdx/event_log.h"

#include "log_layout.h"
#include "log_selection.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace vdxcfrw7 {

bool log_filter_t::set(int severities, const std::string& text, const CEventLog::find_options_t& options,
                       const CMessageElement* only)
{
    const CEventLog::find_options_t& before = m_matcher.get_options();
    if (severities == m_severities && text == m_matcher.get_text() && only == m_only &&
        options.match_case == before.match_case && options.whole_words == before.whole_words &&
        options.expression == before.expression)
        return false;
    m_severities = severities;
    m_only = only;
    m_matcher.set(text, options);
    begin_again();
    return true;
}

bool log_filter_t::passes(const line_t& line)
{
    if (line.has(line_t::status))
        return true;
    if (m_severities && !(line.severity & static_cast<std::uint32_t>(m_severities)))
        return false;
    // What is no expression yet, or too hard a one, hides nothing.
    return m_matcher.is_empty() || m_matcher.is_wrong() || m_matcher.is_in(text_of(line, m_storage)) ||
           m_matcher.has_given_up();
}

void log_filter_t::begin_again()
{
    m_element = 0;
    m_line = 0;
}

bool log_filter_t::apply_some(CEventLog& log, log_layout_t& layout)
{
    const auto& elements = log.GetElements();
    for (; m_element < elements.size(); ++m_element, m_line = 0) {
        CMessageElement& element = *elements[m_element];
        element.m_filtered_out = !passes(element);
        line_store_t& lines = element.m_lines;
        bool more = false;
        while (m_line < lines.size() && !more) {
            lines.set_hidden(m_line, !passes(lines.at(m_line)));
            ++m_line;
            more = m_line % 256 == 0 && log.enough();
        }
        layout.lines_filtered(element);
        if (more)
            return true;
    }
    return false;
}

} // namespace vdxcfrw7
