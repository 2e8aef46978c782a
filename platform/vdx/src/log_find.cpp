// Looking for a text, and showing only some lines.
#include "log_view.h"

#include "work_slices.h"

#include <wx_helpers1/guarded.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace vdxcfrw7 {

// From behind what is selected (a match, perhaps), or from the top of what is seen; where nothing is seen for
// want of room, from the beginning.
text_place_t log_view_t::find_from(bool forward)
{
    if (!m_selection.is_empty())
        return forward ? m_selection.get_ends().second : m_selection.get_ends().first;
    if (m_selection.get_caret().is_set() && !m_selection.get_caret().element->IsFilteredOut())
        return m_selection.get_caret();
    const text_place_t seen = place_at(wxPoint(0, 0));
    if (seen.is_set() || m_log->GetElements().empty())
        return seen;
    return {m_log->GetElements().front().get(), text_item_t::header, 0};
}

void log_view_t::set_find(const std::string& text, const CEventLog::find_options_t& options)
{
    if (m_found.get_matcher().is_empty())
        m_find_begin = m_selection.is_empty() ? find_from(true) : m_selection.get_ends().first;
    m_found.set(text, options, m_find_begin);
    m_pending = text.empty() ? pending_t::nothing : pending_t::next;
    if (text.empty())
        m_log->CancelWork(&m_found);
    else if (m_find_begin.is_set())
        m_selection.select(m_find_begin, m_find_begin);
    Refresh(false);
    count_matches();
}

// Shows what was asked for as soon as it is known.
void log_view_t::count_matches()
{
    const auto told = [this] {
        if (m_pending != pending_t::nothing) {
            const bool forward = m_pending == pending_t::next;
            const find_results_t::found_t found = m_found.find(find_from(forward), forward);
            if (!found.too_early || m_found.is_complete()) {
                m_pending = pending_t::nothing;
                show_found(found);
            }
        }
        Refresh(false);
        const auto signal = m_log->find_changed();
        wx_helpers1::guarded([&signal] { signal.emit(); });
    };
    if (m_found.is_complete()) {
        told();
        return;
    }
    m_log->AddWork(&m_found, [this, told] {
        const bool more = m_found.count_some();
        told();
        return more;
    });
}

bool log_view_t::show_found(const find_results_t::found_t& found)
{
    if (!found.begin.is_set())
        return false;
    m_layout.settle();
    select(found.begin, found.end);
    show_place(found.begin);
    m_accessible.found(found.begin);
    return true;
}

bool log_view_t::find_next(bool forward)
{
    if (m_found.get_matcher().is_empty())
        return false;
    const find_results_t::found_t found = m_found.find(find_from(forward), forward);
    if (found.too_early && !m_found.is_complete()) {
        m_pending = forward ? pending_t::next : pending_t::previous;
        return true;
    }
    const bool shown = show_found(found);
    const auto signal = m_log->find_changed();
    signal.emit();
    return shown;
}

bool log_view_t::find(const std::string& text, bool forward)
{
    if (text.empty() || m_log->GetElements().empty())
        return false;
    const text_matcher_t& matcher = m_found.get_matcher();
    if (matcher.get_text() != text || matcher.get_options().match_case || matcher.get_options().whole_words ||
        matcher.get_options().expression) {
        m_log->CancelWork(&m_found);
        m_found.set(text, {}, find_from(forward));
    }
    m_found.count_all();
    return find_next(forward);
}

CEventLog::find_state_t log_view_t::get_find_state()
{
    const std::uint64_t number =
        m_selection.is_empty() ? 0 : m_found.get_number(m_selection.get_ends().first);
    const text_matcher_t& matcher = m_found.get_matcher();
    return {m_found.get_count(), number, m_found.is_complete(), matcher.is_wrong(), matcher.has_given_up()};
}

void log_view_t::set_filter(int severities, const std::string& text, const CEventLog::find_options_t& options,
                            const CMessageElement* only)
{
    if (m_filter.set(severities, text, options, only))
        filter_again();
}

void log_view_t::filter_again()
{
    m_log->CancelWork(&m_filter);
    m_filtering = true;
    m_log->AddWork(&m_filter, [this] {
        const bool more = m_filter.apply_some(*m_log, m_layout);
        m_stale = true;
        m_filtering = more;
        if (!more) {
            m_found.begin_again();
            count_matches();
        }
        const auto signal = m_log->hidden_changed();
        wx_helpers1::guarded([&signal] { signal.emit(); });
        return more;
    });
}

// Where the marks of matches stand beside the scroll bar, in pixels of the window.
const std::vector<int>& log_view_t::get_marks()
{
    const int height = m_layout.get_size().y;
    const std::int64_t total = std::max<std::int64_t>(m_layout.total(), 1);
    const marks_t::key_t key{m_found.get_version(), total, height};
    if (m_marks.key == key)
        return m_marks.places;
    m_marks.key = key;
    m_marks.places.clear();
    std::vector<bool> marked(static_cast<std::size_t>(std::max(height, 1)));
    const auto mark = [&](std::int64_t y) {
        const std::int64_t at = std::clamp<std::int64_t>(y * height / total, 0, std::max(0, height - 1));
        marked[static_cast<std::size_t>(at)] = true;
    };
    for (const auto& element : m_log->GetElements()) {
        const find_results_t::of_element_t* found = m_found.get(*element);
        if (!found || element->IsFilteredOut())
            continue;
        std::int64_t y = m_layout.top_of(*element);
        if (found->head)
            mark(y);
        y += element->m_head_height;
        const auto& blocks = element->GetLines().get_blocks();
        for (std::size_t i = 0; i < blocks.size() && i < found->blocks.size(); ++i) {
            const std::int64_t end = y + blocks[i].height;
            if (found->blocks[i].count && (end - y) * height / total < 2)
                mark(y);
            else if (found->blocks[i].count) {
                for (std::size_t line = 0; line < blocks[i].lines.size(); ++line) {
                    if (found->blocks[i].lines[line])
                        mark(y);
                    y += blocks[i].lines[line].has(line_t::hidden) ? 0 : blocks[i].lines[line].height;
                }
            }
            y = end;
        }
    }
    for (int y = 0; y < height; ++y)
        if (marked[static_cast<std::size_t>(y)])
            m_marks.places.push_back(y);
    return m_marks.places;
}

} // namespace vdxcfrw7
