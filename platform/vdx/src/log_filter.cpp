#include "log_filter.h"

#include "vdx/event_log.h"

#include "log_layout.h"
#include "shown_text.h"

#include <cstdint>
#include <string_view>
#include <utility>

namespace vdxcfrw7 {

bool log_filter_t::set(int severities, const std::string& text)
{
    std::string folded = fold(text);
    if (severities == m_severities && folded == m_text)
        return false;
    m_severities = severities;
    m_text = std::move(folded);
    begin_again();
    return true;
}

bool log_filter_t::passes(const line_t& line) const
{
    if (line.has(line_t::status))
        return true;
    if (m_severities && !(line.severity & static_cast<std::uint32_t>(m_severities)))
        return false;
    return m_text.empty() || find_folded(line.get_text(), m_text) != std::string_view::npos;
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
