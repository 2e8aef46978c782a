// Links in a log: where they stand, and what mouse and keyboard do with them.
#include "log_view.h"

#include "shown_text.h"

#include <wx_helpers1/guarded.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace vdxcfrw7 {
namespace {

// What the maker of a body wrote as the target of a link.
log_link_t to_link(const std::string& target)
{
    const auto found = find_links(target);
    if (found.size() == 1 && found[0].begin == 0 && found[0].end == target.size())
        return found[0].link;
    log_link_t link;
    link.target = target;
    return link;
}

// What the text's maker made a link comes before what only looks like one. Such a link may lead where its text
// does not say: nothing but what would be a link by itself, and files, are places to go.
std::vector<text_link_t> styled_links(const styled_text_t& shown)
{
    std::vector<text_link_t> links = find_links(shown.text);
    for (const marked_link_t& marked : shown.links) {
        const auto found = find_links(marked.target);
        const bool is_whole =
            found.size() == 1 && found[0].begin == 0 && found[0].end == marked.target.size();
        if (!is_whole && marked.target.compare(0, 7, "file://") != 0)
            continue;
        links.erase(std::remove_if(links.begin(), links.end(),
                                   [&marked](const text_link_t& link) {
                                       return link.begin < marked.end && link.end > marked.begin;
                                   }),
                    links.end());
        links.push_back({marked.begin, marked.end, to_link(marked.target)});
    }
    std::sort(links.begin(), links.end(),
              [](const text_link_t& a, const text_link_t& b) { return a.begin < b.begin; });
    return links;
}

} // namespace

std::vector<text_link_t> log_view_t::text_links(const text_place_t& item)
{
    if (!item.is_set() || m_selection.is_whole(*item.element, item.item))
        return {};
    if (item.item >= text_item_t::first_line) {
        const line_t& line = item.element->GetLines().at(item.item - text_item_t::first_line);
        if (line.has(line_t::status))
            return {};
        if (line.has(line_t::styled))
            return styled_links(*m_layout.shown_line(line).styled);
    }
    std::string storage;
    return find_links(text_of(*item.element, item.item, storage));
}

std::vector<view_link_t> log_view_t::links_of(const text_place_t& item)
{
    std::vector<view_link_t> links;
    for (text_link_t& found : text_links(item))
        links.push_back({{item.element, item.item, found.begin}, found.end, std::move(found.link)});
    html_body_t* body =
        item.is_set() && item.item == text_item_t::body ? m_layout.body_of(*item.element) : nullptr;
    if (body)
        for (const auto& link : body->get_links()) {
            const std::size_t before = links.size();
            links.push_back({{item.element, item.item, before}, before, to_link(link.target)});
        }
    return links;
}

std::vector<wxRect> log_view_t::rects_of(const view_link_t& link)
{
    const CMessageElement& element = *link.place.element;
    const int top = static_cast<int>(m_layout.top_of(element) - m_layout.top());
    std::vector<wxRect> rects;
    if (link.place.item == text_item_t::header)
        return rects_in_rows(link, m_layout.text_left(), top + m_layout.header_top());
    if (link.place.item >= text_item_t::first_line) {
        const std::size_t line = link.place.item - text_item_t::first_line;
        return rects_in_rows(link, m_layout.line_left() - m_layout.left(),
                             static_cast<int>(m_layout.top_of_line(element, line) - m_layout.top()));
    }
    const int body_top = top + m_layout.body_top(element);
    html_body_t* body = m_layout.body_of(element);
    if (!body)
        return rects_in_rows(link, m_layout.text_left(), body_top);
    const auto links = body->get_links();
    if (link.place.byte < links.size())
        rects = links[link.place.byte].rects;
    for (wxRect& rect : rects)
        rect.Offset(m_layout.text_left(), body_top);
    return rects;
}

std::vector<wxRect> log_view_t::rects_in_rows(const view_link_t& link, int x, int y)
{
    const CMessageElement& element = *link.place.element;
    const bool is_line = link.place.item >= text_item_t::first_line;
    const bool is_header = link.place.item == text_item_t::header;
    std::string storage;
    std::string_view text;
    std::vector<std::uint32_t> rows;
    const style_runs_t* runs = nullptr;
    if (is_line) {
        const line_t& line = element.GetLines().at(link.place.item - text_item_t::first_line);
        rows = m_layout.rows_of(line);
        const log_layout_t::shown_line_t shown = m_layout.shown_line(line);
        text = shown.text;
        runs = shown.get_runs();
    } else {
        text = text_of(element, link.place.item, storage);
        rows = is_header ? m_layout.header_rows(element) : m_layout.body_rows(element);
    }
    font_metrics_t& font = is_line     ? m_layout.text_font()
                           : is_header ? m_layout.bold_font()
                                       : m_layout.italic_font();
    std::vector<wxRect> rects;
    const int height = font.get_line_height();
    auto row = std::upper_bound(rows.begin(), rows.end(), link.place.byte) - rows.begin() - 1;
    for (; row < static_cast<std::ptrdiff_t>(rows.size()) && rows[static_cast<std::size_t>(row)] < link.end;
         ++row) {
        const auto index = static_cast<std::size_t>(row);
        const std::size_t begin = rows[index];
        const std::size_t end = index + 1 < rows.size() ? rows[index + 1] : text.size();
        const std::string_view shown = text.substr(begin, end - begin);
        const PangoDirection direction = get_direction(text, begin);
        text_shaper_t& shaper = font.get_shaper();
        const int whole = is_mirrored() ? shaper.width_of(shown, direction, {runs, begin}) : 0;
        for (const auto& [left, right] :
             shaper.places_of(shown, direction, std::max(link.place.byte, begin) - begin,
                              std::min(link.end, end) - begin, {runs, begin}))
            rects.emplace_back(x + (is_mirrored() ? whole - right : left), y + static_cast<int>(row) * height,
                               right - left, height);
    }
    return rects;
}

view_link_t log_view_t::link_at(const wxPoint& point)
{
    for (view_link_t& link : links_of(place_at(point)))
        for (const wxRect& rect : rects_of(link))
            if (rect.Contains(point))
                return std::move(link);
    return {};
}

view_link_t log_view_t::get_link()
{
    const text_place_t place = get_place();
    if (m_link.is_set() && m_link.element == place.element && m_link.item == place.item)
        for (view_link_t& link : links_of(place))
            if (link.place == m_link)
                return std::move(link);
    return {};
}

bool log_view_t::move_to_link(bool forward)
{
    const text_place_t place = get_place();
    const std::vector<view_link_t> links = links_of(place);
    if (links.empty())
        return false;
    const auto at = std::find_if(links.begin(), links.end(),
                                 [this](const view_link_t& link) { return link.place == m_link; });
    const auto next = at == links.end() ? (forward ? links.begin() : std::prev(links.end()))
                      : forward         ? (std::next(at) == links.end() ? at : std::next(at))
                                        : (at == links.begin() ? at : std::prev(at));
    m_link = next->place;
    m_by_keyboard = true;
    show_place(m_link);
    Refresh(false);
    if (const auto& words = m_log->GetWords().link)
        m_accessible.say(words(next->link.target));
    return true;
}

bool log_view_t::activate_link()
{
    view_link_t link = get_link();
    if (!link.is_set()) {
        const std::vector<view_link_t> links = links_of(get_place());
        if (links.empty())
            return false;
        link = links.front();
    }
    activate(link);
    return true;
}

void log_view_t::activate(const view_link_t& link)
{
    const auto signal = m_log->link_activated();
    const log_link_t activated = link.link; // whoever is told may end the log
    wx_helpers1::guarded([&] { signal.emit(activated); });
}

bool CEventLog::GetLinkAt(const wxPoint& point, log_link_t& link)
{
    const view_link_t found = m_view ? m_view->link_at(point) : view_link_t();
    if (found.is_set())
        link = found.link;
    return found.is_set();
}

} // namespace vdxcfrw7
