// Finding and filtering.
#include "log_view.h"

#include "shown_text.h"

#include <wx_helpers1/guarded.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace vdxcfrw7 {

bool log_view_t::find(const std::string& text, bool forward)
{
    const std::string needle = fold(text);
    const auto& elements = m_log->GetElements();
    if (needle.empty() || elements.empty())
        return false;
    // From behind what is selected (a place found before), or from the top of what is seen.
    text_place_t start = m_caret;
    if (start.is_set() && m_selection_begin.is_set())
        start = (m_selection_begin < m_caret) == forward ? m_caret : m_selection_begin;
    if (!start.is_set())
        start = place_at(wxPoint(0, 0));
    if (!start.is_set())
        return false;

    std::string storage;
    const std::size_t count = elements.size();
    std::size_t index = start.element->GetIndex();
    std::size_t item = start.item;
    bool first = true;
    // Once round: the item it began with is looked at again at the end, whole.
    for (std::size_t visited = 0; visited <= count;) {
        const CMessageElement& element = *elements[index];
        const bool hidden = item >= text_item_t::first_line &&
                            element.GetLines().at(item - text_item_t::first_line).has(line_t::hidden);
        if (!hidden) {
            const std::string_view shown = text_of(element, item, storage);
            const bool whole = item == text_item_t::body && !m_layout.body_is_plain(element);
            std::size_t at;
            if (forward)
                at = whole && first && start.byte > 0
                         ? std::string_view::npos
                         : find_folded(shown, needle, first && !whole ? start.byte : 0);
            else
                at = whole && first && start.byte == 0
                         ? std::string_view::npos
                         : find_last_folded(shown, needle, first && !whole ? start.byte : shown.size());
            if (at != std::string_view::npos) {
                if (whole)
                    select({&element, item, 0}, {&element, item, 1});
                else
                    select({&element, item, at}, {&element, item, at + needle.size()});
                show_place({&element, item, whole ? 0 : at});
                return true;
            }
        }
        first = false;
        if (forward && ++item >= number_of_items(element)) {
            index = (index + 1) % count;
            item = 0;
            ++visited;
        } else if (!forward && item-- == 0) {
            index = (index + count - 1) % count;
            item = number_of_items(*elements[index]) - 1;
            ++visited;
        }
    }
    return false;
}

bool log_view_t::passes_filter(const line_t& line) const
{
    if (line.has(line_t::status))
        return true;
    if (m_filter_severities && !(line.severity & static_cast<std::uint32_t>(m_filter_severities)))
        return false;
    return m_filter_text.empty() || find_folded(line.get_text(), m_filter_text) != std::string_view::npos;
}

void log_view_t::set_filter(int severities, const std::string& text)
{
    std::string folded = fold(text);
    if (severities == m_filter_severities && folded == m_filter_text)
        return;
    m_filter_severities = severities;
    m_filter_text = std::move(folded);
    m_filter_element = 0;
    m_filter_line = 0;
    m_log->CancelWork(&m_filter_text);
    m_log->AddWork(&m_filter_text, [this] { return filter_some(); });
}

bool log_view_t::filter_some()
{
    const auto& elements = m_log->GetElements();
    bool more = false;
    for (; m_filter_element < elements.size() && !more;) {
        CMessageElement& element = *elements[m_filter_element];
        line_store_t& lines = element.m_lines;
        for (; m_filter_line < lines.size(); ++m_filter_line) {
            lines.set_hidden(m_filter_line, !passes_filter(lines.at(m_filter_line)));
            if (m_filter_line % 256 == 255 && m_log->enough()) {
                ++m_filter_line;
                more = true;
                break;
            }
        }
        m_layout.lines_filtered(element);
        if (!more) {
            ++m_filter_element;
            m_filter_line = 0;
        }
    }
    m_stale = true;
    const auto signal = m_log->hidden_changed();
    wx_helpers1::guarded([&signal] { signal.emit(); });
    return more;
}

} // namespace vdxcfrw7
