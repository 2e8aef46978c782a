// Keyboard and mouse: selecting, copying, searching.
#include "log_view.h"

#include "shown_text.h"

#include <wx_helpers1/guarded.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vdxcfrw7 {
namespace {

bool is_word_byte(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 || std::isalnum(byte) || byte == '_';
}

} // namespace

PangoDirection log_view_t::get_direction(std::string_view text, std::size_t at) const
{
    return direction_of(text, at, is_mirrored() ? PANGO_DIRECTION_RTL : PANGO_DIRECTION_LTR);
}

std::size_t log_view_t::byte_at(font_metrics_t& font, std::string_view text,
                                const std::vector<std::uint32_t>& rows, int x, int y,
                                const style_runs_t* runs)
{
    const int last = static_cast<int>(rows.size()) - 1;
    const auto row = static_cast<std::size_t>(std::clamp(y / font.get_line_height(), 0, std::max(0, last)));
    const std::size_t begin = rows[row];
    const std::size_t end = row + 1 < rows.size() ? rows[row + 1] : text.size();
    const std::string_view shown = first_line(text.substr(begin, end - begin));
    const PangoDirection direction = get_direction(text, begin);
    // In a window from right to left places count from the right, in a row's text always from the left.
    if (is_mirrored())
        x = font.get_shaper().width_of(shown, direction, {runs, begin}) - x;
    return begin + font.get_shaper().byte_at(shown, direction, x, {runs, begin});
}

text_place_t log_view_t::place_at(const wxPoint& point)
{
    m_layout.settle();
    const auto items = m_layout.visible_items();
    if (items.empty())
        return {};
    const log_layout_t::item_t* item = &items.front();
    for (const auto& candidate : items)
        if (candidate.y <= point.y)
            item = &candidate;
    const CMessageElement& element = *item->element;
    const int y = point.y - static_cast<int>(item->y);
    switch (item->part) {
    case log_layout_t::part_t::tail:
        return m_selection.end_of(element, number_of_items(element) - 1);
    case log_layout_t::part_t::line: {
        const line_t& line = element.GetLines().at(item->line);
        const int copy = static_cast<int>(m_layout.get_copy_height(element.GetLines(), item->line));
        const auto& rows = m_layout.rows_of(line);
        const log_layout_t::shown_line_t shown = m_layout.shown_line(line);
        return {&element, text_item_t::first_line + item->line,
                byte_at(m_layout.text_font(), shown.text, rows,
                        point.x - m_layout.line_left() + m_layout.left(), copy > 0 ? y % copy : y,
                        shown.get_runs())};
    }
    case log_layout_t::part_t::head:
        break;
    }
    const int body = m_layout.body_top(element);
    if (y < body || element.GetHead().body.empty())
        return {&element, text_item_t::header,
                byte_at(m_layout.bold_font(), element.GetHead().header, m_layout.header_rows(element),
                        point.x - m_layout.text_left(), y - m_layout.header_top())};
    if (m_layout.body_is_plain(element))
        return {&element, text_item_t::body,
                byte_at(m_layout.italic_font(), element.GetHead().body, m_layout.body_rows(element),
                        point.x - m_layout.text_left(), y - body)};
    return {&element, text_item_t::body, y - body < (item->height - body) / 2 ? 0u : 1u};
}

// The line whose count stands there; not set for none.
text_place_t log_view_t::count_at(const wxPoint& point)
{
    const int right = m_layout.line_left() + m_layout.line_width();
    if (point.x < right - m_layout.count_width() || point.x >= right)
        return {};
    const text_place_t place = place_at(point);
    if (!place.is_set() || place.item < text_item_t::first_line)
        return {};
    const std::size_t index = place.item - text_item_t::first_line;
    const std::int64_t y = point.y + m_layout.top() - m_layout.top_of_line(*place.element, index);
    const bool on_count = place.element->GetLines().at(index).can_expand() && y >= 0 &&
                          y < m_layout.text_font().get_line_height();
    return on_count ? place : text_place_t();
}

void log_view_t::select(const text_place_t& from, const text_place_t& to)
{
    m_selection.select(from, to);
    Refresh(false);
}

void log_view_t::select_all()
{
    m_selection.select_all();
    Refresh(false);
}

void log_view_t::move_caret(const text_place_t& place, bool extend)
{
    m_selection.move_caret(place, extend);
    Refresh(false);
}

void log_view_t::copy()
{
    const std::string text = m_selection.get_text(false);
    if (text.empty())
        CopyToClipboard(*m_log);
    else
        CopyToClipboard(text, m_selection.get_text(true));
}

void log_view_t::show_place(const text_place_t& place)
{
    // Twice, as going there measures what was only estimated.
    for (int round = 0; round < 2; ++round) {
        std::int64_t top = m_layout.top_of(*place.element);
        int height = m_layout.text_font().get_line_height();
        if (place.item >= text_item_t::first_line) {
            const std::size_t index = place.item - text_item_t::first_line;
            const line_t& line = place.element->GetLines().at(index);
            const auto& rows = m_layout.rows_of(line);
            const auto row = std::upper_bound(rows.begin(), rows.end(), place.byte) - rows.begin() - 1;
            top = m_layout.top_of_line(*place.element, index) + row * height;
        } else
            height = place.element->m_head_height;
        const std::int64_t seen = m_layout.top();
        if (top < seen)
            scroll_to(top - m_layout.get_size().y / 4);
        else if (top + height > seen + m_layout.get_size().y)
            scroll_to(top + height - m_layout.get_size().y * 3 / 4);
    }
}

void log_view_t::on_left_down(wxMouseEvent& event)
{
    SetFocus();
    if (!m_log)
        return;
    m_by_keyboard = false;
    if (const text_place_t counted = count_at(event.GetPosition()); counted.is_set()) {
        toggle_repeats(counted);
        return;
    }
    m_pressed = link_at(event.GetPosition());
    move_caret(place_at(event.GetPosition()), event.ShiftDown());
    m_selecting = true;
    if (!HasCapture())
        CaptureMouse();
}

void log_view_t::on_double_click(wxMouseEvent& event)
{
    const text_place_t place = m_log ? place_at(event.GetPosition()) : text_place_t();
    if (!place.is_set() || m_selection.is_whole(*place.element, place.item))
        return;
    std::string storage;
    const std::string_view text = text_of(*place.element, place.item, storage);
    std::size_t from = place.byte, to = place.byte;
    while (from > 0 && is_word_byte(text[from - 1]))
        --from;
    while (to < text.size() && is_word_byte(text[to]))
        ++to;
    select({place.element, place.item, from}, {place.element, place.item, to});
}

void log_view_t::on_motion(wxMouseEvent& event)
{
    if (!m_log)
        return;
    if (!m_selecting || !event.LeftIsDown()) {
        const bool over_link = link_at(event.GetPosition()).is_set();
        if (over_link != GetCursor().IsOk())
            SetCursor(over_link ? wxCursor(wxCURSOR_HAND) : wxNullCursor);
        return;
    }
    const wxPoint at = event.GetPosition();
    if (at.y < 0 || at.y > m_layout.get_size().y)
        scroll_to(m_layout.top() + (at.y < 0 ? at.y : at.y - m_layout.get_size().y));
    move_caret(place_at(at), true);
}

void log_view_t::on_left_up(wxMouseEvent& event)
{
    m_selecting = false;
    if (HasCapture())
        ReleaseMouse();
    if (!m_log || !m_pressed.is_set() || !m_selection.is_empty())
        return;
    const view_link_t link = link_at(event.GetPosition());
    if (link.place == m_pressed.place && link.link.target == m_pressed.link.target)
        activate(link);
}

// Extends the selection; false for a key that does not.
bool log_view_t::select_by_key(int key, bool control)
{
    if (!m_selection.get_caret().is_set())
        move_caret(place_at(wxPoint(0, 0)), false);
    text_place_t place = m_selection.get_caret();
    if (!place.is_set())
        return false;
    std::string storage;
    const std::string_view text = text_of(*place.element, place.item, storage);
    const bool whole = m_selection.is_whole(*place.element, place.item);
    switch (key) {
    case WXK_LEFT:
        if (whole || place.byte == 0) {
            const text_place_t before = m_selection.previous_item(place);
            place = before.item == place.item && before.element == place.element
                        ? before
                        : m_selection.end_of(*before.element, before.item);
        } else
            place.byte =
                static_cast<std::size_t>(previous(text.data(), text.data() + place.byte) - text.data());
        break;
    case WXK_RIGHT:
        if (whole || place.byte >= text.size())
            place = m_selection.next_item(place);
        else {
            const char* at = text.data() + place.byte;
            decode(at, text.data() + text.size());
            place.byte = static_cast<std::size_t>(at - text.data());
        }
        break;
    case WXK_UP:
        place = m_selection.previous_item(place);
        break;
    case WXK_DOWN:
        place = m_selection.next_item(place);
        break;
    case WXK_PAGEUP:
    case WXK_PAGEDOWN:
        scroll_to(m_layout.top() + (key == WXK_PAGEUP ? -1 : 1) * m_layout.get_size().y);
        place = place_at(wxPoint(0, key == WXK_PAGEUP ? 0 : m_layout.get_size().y - 1));
        break;
    case WXK_HOME:
        place = control ? text_place_t{m_log->GetElements().front().get(), 0, 0}
                        : text_place_t{place.element, place.item, 0};
        break;
    case WXK_END:
        place = control ? m_selection.end_of_all() : m_selection.end_of(*place.element, place.item);
        break;
    default:
        return false;
    }
    move_caret(place, true);
    show_place(place);
    return true;
}

text_extent_t extent_of(log_layout_t& layout, const text_place_t& place)
{
    const std::int64_t top = layout.top_of(*place.element);
    if (place.item >= text_item_t::first_line) {
        const std::size_t line = place.item - text_item_t::first_line;
        return {layout.top_of_line(*place.element, line),
                static_cast<int>(place.element->GetLines().at(line).height)};
    }
    const int body = layout.body_top(*place.element);
    if (place.item == text_item_t::header)
        return {top, body};
    return {top + body, static_cast<int>(layout.top_of_line(*place.element, 0) - top) - body};
}

bool log_view_t::is_shown(const text_place_t& place) const
{
    std::string storage;
    if (place.element->IsFilteredOut())
        return false;
    if (place.item >= text_item_t::first_line)
        return !place.element->GetLines().at(place.item - text_item_t::first_line).has(line_t::hidden);
    return !text_of(*place.element, place.item, storage).empty();
}

// The place itself where nothing more is shown.
text_place_t log_view_t::next_shown(text_place_t place, bool forward) const
{
    const text_place_t from = place;
    for (;;) {
        const text_place_t next = forward ? m_selection.next_item(place) : m_selection.previous_item(place);
        if (next.element == place.element && next.item == place.item)
            return from;
        if (is_shown(next))
            return next;
        place = next;
    }
}

text_place_t log_view_t::get_place() const
{
    if (m_selection.get_caret().is_set() && is_shown(m_selection.get_caret()))
        return m_selection.get_caret();
    const auto items = m_layout.visible_items();
    const bool last = m_layout.follows_end() && m_layout.total() > m_layout.get_size().y;
    text_place_t place;
    for (const auto& item : items) {
        if (item.part == log_layout_t::part_t::tail)
            continue;
        const bool head = item.part == log_layout_t::part_t::head;
        for (std::size_t text = head ? text_item_t::header : text_item_t::first_line + item.line;
             text <= (head ? text_item_t::body : text_item_t::first_line + item.line); ++text) {
            const text_place_t candidate{item.element, text, 0};
            // The first that begins in the window, or the last at all.
            if (is_shown(candidate) && (last || !place.is_set() || item.y < 0))
                place = candidate;
        }
    }
    return place;
}

// What the keyboard went to is read, and seen whole where it fits.
void log_view_t::go_to(const text_place_t& place)
{
    m_by_keyboard = true;
    m_selection.select(place, place);
    m_layout.stay();
    // Twice, as going there measures what was only estimated.
    for (int round = 0; round < 2; ++round) {
        const text_extent_t extent = extent_of(m_layout, place);
        const int window = m_layout.get_size().y;
        if (next_shown(place, true) == place)
            scroll_to_end();
        else if (extent.top < m_layout.top() || extent.height > window)
            scroll_to(next_shown(place, false) == place ? 0 : extent.top);
        else if (extent.top + extent.height > m_layout.top() + window)
            scroll_to(extent.top + extent.height - window);
    }
    Refresh(false);
    m_accessible.place_changed();
}

// As in a tree, towards the text's end opens repeats; without any, lines that do not wrap scroll.
bool log_view_t::go_sideways(const text_place_t& place, bool right)
{
    const bool forward = right != is_mirrored();
    if (place.item >= text_item_t::first_line) {
        const line_t& line = place.element->GetLines().at(place.item - text_item_t::first_line);
        if (line.can_expand() && line.has(line_t::expanded) != forward)
            return toggle_repeats(place);
    }
    if (m_layout.wraps())
        return false;
    const int step = m_layout.text_font().get_line_height() * 3;
    scroll_sideways(m_layout.left() + (forward ? step : -step));
    return true;
}

bool log_view_t::go_by_key(int key)
{
    m_layout.settle();
    const text_place_t place = get_place();
    if (!place.is_set())
        return false;
    const int window = m_layout.get_size().y, row = m_layout.text_font().get_line_height();
    const text_extent_t extent = extent_of(m_layout, place);
    const std::int64_t above = m_layout.top() - extent.top;
    const std::int64_t below = extent.top + extent.height - m_layout.top() - window;
    switch (key) {
    case WXK_UP:
    case WXK_NUMPAD_UP:
        if (extent.height > window && above > 0 && below < 0)
            scroll_to(m_layout.top() - row); // through a text that is higher than the window
        else
            go_to(next_shown(place, false));
        return true;
    case WXK_DOWN:
    case WXK_NUMPAD_DOWN:
        if (extent.height > window && below > 0 && above >= 0)
            scroll_to(m_layout.top() + row);
        else
            go_to(next_shown(place, true));
        return true;
    case WXK_PAGEUP:
    case WXK_NUMPAD_PAGEUP:
    case WXK_PAGEDOWN:
    case WXK_NUMPAD_PAGEDOWN:
    case WXK_SPACE: {
        const bool up = key == WXK_PAGEUP || key == WXK_NUMPAD_PAGEUP;
        const int page = std::max(row, window - row);
        const std::int64_t before = m_layout.top();
        scroll_to(before + (up ? -page : page));
        m_selection.clear();
        text_place_t there = m_layout.top() == before && !up ? m_selection.end_of_all() : get_place();
        if (!there.is_set()) // there is no room for any in the window
            there = next_shown(place, !up);
        else if (!is_shown(there))
            there = next_shown(there, false);
        there.byte = 0;
        go_to(there);
        return true;
    }
    case WXK_LEFT:
    case WXK_RIGHT:
        return go_sideways(place, key == WXK_RIGHT);
    case WXK_HOME:
    case WXK_NUMPAD_HOME: {
        const text_place_t first{m_log->GetElements().front().get(), text_item_t::header, 0};
        go_to(is_shown(first) ? first : next_shown(first, true));
        return true;
    }
    case WXK_END:
    case WXK_NUMPAD_END: {
        text_place_t last = m_selection.end_of_all();
        last.byte = 0;
        go_to(is_shown(last) ? last : next_shown(last, false));
        return true;
    }
    default:
        return false;
    }
}

void log_view_t::on_key(wxKeyEvent& event)
{
    if (!m_log) {
        event.Skip();
        return;
    }
    const int key = event.GetKeyCode();
    const bool control = event.ControlDown(), shift = event.ShiftDown();
    if (event.AltDown()) {
        event.Skip();
        return;
    }
    const auto search = [this](CEventLog::search_t what) {
        const auto signal = m_log->search_requested();
        signal.emit(what);
    };
    if (control && (key == 'C' || key == WXK_INSERT))
        copy();
    else if (control && key == 'A')
        select_all();
    else if (control && (key == '+' || key == '=' || key == WXK_NUMPAD_ADD))
        zoom_by_user(m_zoom + zoom_step);
    else if (control && (key == '-' || key == WXK_NUMPAD_SUBTRACT))
        zoom_by_user(m_zoom - zoom_step);
    else if (control && (key == '0' || key == WXK_NUMPAD0))
        zoom_by_user(100);
    else if (control && key == 'F')
        search(CEventLog::search_t::open);
    else if (key == WXK_F3)
        search(shift ? CEventLog::search_t::previous : CEventLog::search_t::next);
    else if (key == WXK_TAB && !control)
        tab(!shift);
    else if (control && !shift && (key == WXK_LEFT || key == WXK_RIGHT) &&
             move_to_link((key == WXK_RIGHT) != is_mirrored())) {
    } else if (!control && !shift && (key == WXK_RETURN || key == WXK_NUMPAD_ENTER) && activate_link()) {
    } else if (shift && select_by_key(key, control)) {
    } else if (!control && !shift && go_by_key(key)) {
    } else if (control && (key == WXK_HOME || key == WXK_END) && go_by_key(key)) {
    } else if (key == WXK_ESCAPE && !m_selection.is_empty())
        select(m_selection.get_caret(), m_selection.get_caret());
    else
        event.Skip();
}

} // namespace vdxcfrw7
