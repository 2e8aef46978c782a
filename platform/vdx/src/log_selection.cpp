#include "log_selection.h"

#include "vdx/event_log.h"

#include "html_markup.h"
#include "log_layout.h"
#include "log_times.h"

#include <gen_helpers2/strings.h>

#include <algorithm>
#include <utility>

namespace vdxcfrw7 {

bool operator<(const text_place_t& a, const text_place_t& b)
{
    if (a.element != b.element)
        return a.element->GetIndex() < b.element->GetIndex();
    return a.item != b.item ? a.item < b.item : a.byte < b.byte;
}

std::string_view text_of(const line_t& line, std::string& storage)
{
    return get_shown_text(line, storage);
}

std::string_view text_of(const CMessageElement& element, std::size_t item, std::string& storage)
{
    if (item == text_item_t::header)
        return element.GetHead().header;
    if (item == text_item_t::body) {
        storage = element.GetBodyText();
        return storage;
    }
    return text_of(element.GetLines().at(item - text_item_t::first_line), storage);
}

std::size_t number_of_items(const CMessageElement& element)
{
    return text_item_t::first_line + element.GetLines().size();
}

bool log_selection_t::is_whole(const CMessageElement& element, std::size_t item) const
{
    return item == text_item_t::body && !m_layout.body_is_plain(element);
}

text_place_t log_selection_t::end_of(const CMessageElement& element, std::size_t item) const
{
    std::string storage;
    const std::size_t length = text_of(element, item, storage).size();
    return {&element, item, is_whole(element, item) ? std::min<std::size_t>(length, 1) : length};
}

text_place_t log_selection_t::end_of_all() const
{
    const auto& elements = m_log.GetElements();
    return elements.empty() ? text_place_t()
                            : end_of(*elements.back(), number_of_items(*elements.back()) - 1);
}

text_place_t log_selection_t::next_item(const text_place_t& place) const
{
    if (place.item + 1 < number_of_items(*place.element))
        return {place.element, place.item + 1, 0};
    const std::size_t next = place.element->GetIndex() + 1;
    return next < m_log.GetElements().size() ? text_place_t{m_log.GetElements()[next].get(), 0, 0}
                                             : end_of(*place.element, place.item);
}

text_place_t log_selection_t::previous_item(const text_place_t& place) const
{
    if (place.item > 0)
        return {place.element, place.item - 1, 0};
    const std::size_t index = place.element->GetIndex();
    if (index == 0)
        return {place.element, 0, 0};
    const CMessageElement* before = m_log.GetElements()[index - 1].get();
    return {before, number_of_items(*before) - 1, 0};
}

std::pair<text_place_t, text_place_t> log_selection_t::get_ends() const
{
    return m_begin < m_caret ? std::make_pair(m_begin, m_caret) : std::make_pair(m_caret, m_begin);
}

bool log_selection_t::get_part(const CMessageElement& element, std::size_t item, std::size_t length,
                               std::size_t& from, std::size_t& to) const
{
    if (is_empty())
        return false;
    const auto [first, last] = get_ends();
    const text_place_t begin{&element, item, 0}, end{&element, item, length};
    if (end < first || last < begin)
        return false;
    from = first.element == &element && first.item == item ? std::min(first.byte, length) : 0;
    to = last.element == &element && last.item == item ? std::min(last.byte, length) : length;
    return from < to || (length == 0 && first < begin && end < last);
}

namespace {

// Who selects a line to its end means all of it, also where only its first part is shown.
std::string_view with_rest(const line_t& line, std::size_t from, std::string_view shown, std::string& storage)
{
    if (!line.is_long() || line.has(line_t::expanded))
        return shown;
    line_t all = line;
    all.set(line_t::expanded, true);
    return get_shown_text(all, storage).substr(from);
}

} // namespace

std::string log_selection_t::get_text(bool html) const
{
    std::string result, storage;
    if (is_empty())
        return result;
    const auto [first, last] = get_ends();
    bool any = false;
    for (std::size_t index = first.element->GetIndex(); index <= last.element->GetIndex(); ++index) {
        const CMessageElement& element = *m_log.GetElements()[index];
        if (element.IsFilteredOut())
            continue;
        const std::size_t begin = &element == first.element ? first.item : 0;
        const std::size_t end = &element == last.element ? last.item + 1 : number_of_items(element);
        for (std::size_t item = begin; item < end; ++item) {
            if (item >= text_item_t::first_line &&
                element.GetLines().at(item - text_item_t::first_line).has(line_t::hidden))
                continue;
            std::string_view text = text_of(element, item, storage);
            const bool whole = is_whole(element, item);
            std::size_t from = 0, to = 0;
            if (!get_part(element, item, whole ? 1 : text.size(), from, to) ||
                (item < text_item_t::first_line && text.empty()))
                continue;
            const bool to_the_end = to == text.size();
            if (!whole)
                text = text.substr(from, to - from);
            if (item >= text_item_t::first_line && to_the_end)
                text = with_rest(element.GetLines().at(item - text_item_t::first_line), from, text, storage);
            std::string timed;
            if (m_copy_times && item >= text_item_t::first_line && from == 0) {
                timed = copied_time(element.GetLines().get_time(item - text_item_t::first_line));
                text = timed.empty() ? text : timed.append(text);
            }
            if (!html) {
                result += any ? "\n" : "";
                result += text;
            } else if (whole)
                result += "<p>" + safe_markup(element.GetHead().body) + "</p>\n";
            else if (item == text_item_t::header)
                result += "<p><b>" + text_to_markup(text) + "</b></p>\n";
            else
                result += "<p>" + text_to_markup(text) + "</p>\n";
            any = true;
        }
    }
    return html ? gen_helpers2::replace_invalid_utf8(result) : result;
}

void log_selection_t::select(const text_place_t& from, const text_place_t& to)
{
    m_begin = from;
    m_caret = to;
}

void log_selection_t::select_all()
{
    const text_place_t end = end_of_all();
    if (end.is_set())
        select({m_log.GetElements().front().get(), 0, 0}, end);
}

void log_selection_t::move_caret(const text_place_t& place, bool extend)
{
    if (!place.is_set())
        return;
    if (!extend || !m_begin.is_set())
        m_begin = extend && m_caret.is_set() ? m_caret : place;
    m_caret = place;
}

void log_selection_t::texts_changed(const CMessageElement& element)
{
    for (text_place_t* place : {&m_begin, &m_caret})
        if (place->element == &element) {
            place->item = std::min(place->item, number_of_items(element) - 1);
            place->byte = std::min(place->byte, end_of(element, place->item).byte);
        }
}

void text_place_t::lines_dropped(const CMessageElement& from, std::size_t lines)
{
    if (element != &from || item < text_item_t::first_line)
        return;
    const bool gone = item < text_item_t::first_line + lines;
    item = gone ? text_item_t::first_line : item - lines;
    byte = gone ? 0 : byte;
}

void log_selection_t::lines_dropped(const CMessageElement& element, std::size_t lines)
{
    for (text_place_t* place : {&m_begin, &m_caret})
        place->lines_dropped(element, lines);
}

void log_selection_t::element_removing(const CMessageElement& element)
{
    if (m_begin.element == &element || m_caret.element == &element)
        clear();
}

} // namespace vdxcfrw7
