#include "log_layout.h"

#include "html_markup.h"
#include "log_times.h"

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace vdxcfrw7 {
namespace {

constexpr std::size_t kept_bodies = 96;
constexpr std::size_t kept_rows = 512;
// What shaping can count in. A line that is wider is broken there, wrapping or not.
constexpr int unlimited_width = 1 << 20;
// Nobody scrolls through more of the same, and a height has 32 bits.
constexpr std::uint64_t most_copies = 100000;
constexpr std::size_t most_rows_seen = 1000; // of one line, to find its width

} // namespace

log_layout_t::log_layout_t(CEventLog& log) : m_log(log)
{
    m_dc.SelectObject(m_pixel);
}

void log_layout_t::set_look(wxWindow& window, const wxFont& text, const wxFont& bold,
                            const log_colours_t& colours, double scale, int zoom)
{
    m_scale = scale * zoom / 100;
    m_zoom = zoom;
    m_dc.SelectObject(wxNullBitmap); // it keeps the resolution that it began with
    m_dc.SelectObject(m_pixel);
    m_text.set(window, text, m_dc);
    m_bold.set(window, bold, m_dc);
    m_italic.set(window, text.Italic(), m_dc);
    m_look.set_window(window);
    m_look.font = text;
    m_look.ink = colours.ink;
    m_look.link = colours.link;
    m_look.border = colours.border;
    m_look.background = colours.background;
    m_look.line_height = m_text.get_line_height();
    m_count_width = label_width(shown_count(999999)) + scaled(12);
    // The widths of lines in one row are those of the old font.
    for (const auto& element : m_log.GetElements())
        for (auto& block : element->m_lines.get_blocks())
            for (line_t& line : block.lines)
                line.width = line_t::no_width;
    invalidate();
}

void log_layout_t::set_size(const wxSize& size)
{
    const bool wider = size.x != m_size.x;
    stay_where_read();
    m_size = size;
    if (wider)
        invalidate();
    m_left = std::min(m_left, max_left());
}

// The anchor is the row that is read, not the line: other rows of it come and go.
void log_layout_t::stay_where_read()
{
    if (!m_follow)
        pick_anchor(top());
}

void log_layout_t::invalidate()
{
    ++m_layout;
    m_bodies.clear();
    m_body_of.clear();
    m_rows.clear();
    m_refining = 0;
    m_refining_head = 0;
    m_widest = 0;
    for (const auto& element : m_log.GetElements()) {
        measure_tail(*element);
        update_height(*element);
    }
}

void log_layout_t::element_added(CMessageElement& element)
{
    m_heights.append(0);
    estimate_head(element);
    measure_tail(element);
    update_height(element);
    m_refining_head = std::min(m_refining_head, element.m_index);
}

void log_layout_t::element_removing(CMessageElement& element)
{
    if (m_anchor.element == &element) {
        // What stands below it stays where it is, or what stands above when it is the last.
        const std::int64_t y = top_of(element) - top();
        const auto& all = m_log.GetElements();
        m_anchor = {};
        if (element.m_index + 1 < all.size()) {
            m_anchor.element = all[element.m_index + 1].get();
            m_anchor.y = std::max<std::int64_t>(0, y + m_heights.get(element.m_index));
        } else if (element.m_index > 0) {
            m_anchor.element = all[element.m_index - 1].get();
            m_anchor.part = part_t::tail;
            m_anchor.y = y - m_anchor.element->m_tail_height;
        }
    }
    if (const auto found = m_body_of.find(&element); found != m_body_of.end()) {
        m_bodies.erase(found->second);
        m_body_of.erase(found);
    }
    forget_rows();
    if (m_refining > element.m_index)
        --m_refining;
    if (m_refining_head > element.m_index)
        --m_refining_head;
    m_heights.erase(element.m_index);
}

void log_layout_t::head_changed(CMessageElement& element)
{
    if (const auto found = m_body_of.find(&element); found != m_body_of.end()) {
        m_bodies.erase(found->second);
        m_body_of.erase(found);
    }
    element.m_head_layout = 0;
    estimate_head(element);
    update_height(element);
    m_refining_head = std::min(m_refining_head, element.m_index);
}

void log_layout_t::tail_changed(CMessageElement& element)
{
    measure_tail(element);
    update_height(element);
}

void log_layout_t::update_height(CMessageElement& element)
{
    m_heights.set(element.m_index,
                  element.IsFilteredOut()
                      ? 0
                      : element.m_head_height + element.m_lines.get_height() + element.m_tail_height);
}

int log_layout_t::break_width(const line_t& line) const
{
    return m_wrap ? line_width(line) : unlimited_width;
}

std::uint32_t log_layout_t::height_of_copy(line_t& line, bool shape)
{
    if (!line.has(line_t::adjusted)) {
        line.set(line_t::inexact, false);
        return height_of_rows(1);
    }
    const int width = break_width(line);
    bool complex = false;
    if (line.width == line_t::no_width) {
        // Faces are taken to be as wide as they can be: most lines have room for that.
        const shown_line_t shown = read_line(line);
        const bool faces = shown.styled && shown.styled->has_faces;
        const font_metrics_t::extent_t extent = (faces ? m_bold : m_text).measure(shown.text);
        line.width = extent.width;
        complex = (extent.complex || (faces && extent.width > width)) &&
                  shown.text.size() <= font_metrics_t::longest_shaped;
        if (complex)
            line.width = line_t::no_width;
    }
    if (line.width != line_t::no_width && line.width <= width) {
        line.set(line_t::inexact, false);
        m_widest = std::max<int>(m_widest, line.width);
        return height_of_rows(1);
    }
    line.set(line_t::inexact, complex && !shape);
    return height_of_rows(break_line(line, read_line(line), nullptr, shape));
}

std::uint32_t log_layout_t::get_copies(const line_store_t& lines, std::size_t index)
{
    return lines.at(index).has(line_t::expanded)
               ? static_cast<std::uint32_t>(std::min(lines.get_count(index), most_copies))
               : 1;
}

std::uint32_t log_layout_t::get_copy_height(const line_store_t& lines, std::size_t index) const
{
    return lines.at(index).height / get_copies(lines, index);
}

std::uint32_t log_layout_t::height_of_line(line_store_t& lines, std::size_t index, bool shape)
{
    const std::uint64_t copy = height_of_copy(lines.at(index), shape);
    constexpr std::uint64_t highest = std::uint32_t(1) << 31;
    // Whole copies, however high one is.
    return static_cast<std::uint32_t>(copy *
                                      std::min<std::uint64_t>(get_copies(lines, index), highest / copy));
}

void log_layout_t::measure_new(line_t& line)
{
    line.height = height_of_copy(line, false);
}

void log_layout_t::line_added(CMessageElement& element)
{
    line_store_t& lines = element.m_lines;
    line_store_t::block_t& block = lines.get_blocks().back();
    // The first line of a block begins it in the layout of the day; a block from before a resize stays
    // stale.
    if (block.lines.size() == 1) {
        block.layout = m_layout;
        block.refined = 0;
    }
    if (block.lines.back().has(line_t::inexact)) {
        m_refining = std::min(m_refining, element.m_index);
    } else if (block.refined + 1 == block.lines.size())
        ++block.refined;
    update_height(element);
}

void log_layout_t::line_changed(CMessageElement& element, std::size_t index)
{
    line_t& line = element.m_lines.at(index);
    line.width = line_t::no_width;
    m_rows.erase(line.text);
    m_styled.erase(line.text);
    element.m_lines.set_height(index, height_of_line(element.m_lines, index, true));
    update_height(element);
}

void log_layout_t::line_repeated(CMessageElement& element, std::size_t index)
{
    line_store_t& lines = element.m_lines;
    m_rows.erase(lines.at(index).text); // the first time the count takes some of its width
    lines.set_height(index, height_of_line(lines, index, true));
    update_height(element);
}

void log_layout_t::lines_changed(CMessageElement& element, std::size_t seen)
{
    if (m_anchor.element == &element)
        m_anchor.line = seen;
    for (auto& block : element.m_lines.get_blocks())
        block.layout = 0;
    forget_rows();
    m_refining = std::min(m_refining, element.m_index);
    update_height(element);
}

int log_layout_t::picture_height(const CMessageElement::head_t& head) const
{
    return head.picture.is_empty() ? 0 : head.picture.get_still().get_size().y * m_zoom / 100;
}

void log_layout_t::estimate_head(CMessageElement& element)
{
    const auto& head = element.m_head;
    int height = header_top();
    const int picture = picture_height(head);
    const int header = head.header.empty()
                           ? 0
                           : static_cast<int>(m_bold.break_rows(head.header, text_width(), nullptr, false)) *
                                 m_bold.get_line_height();
    height += std::max(picture, header);
    if (!head.body.empty())
        height +=
            line_gap() + static_cast<int>(m_italic.break_rows(head.body, text_width(), nullptr, false)) *
                             m_italic.get_line_height();
    element.m_head_height = height + scaled(4);
}

int log_layout_t::body_top(const CMessageElement& element)
{
    const auto& head = element.m_head;
    const int rows = head.header.empty() ? 0 : static_cast<int>(header_rows(element).size());
    return header_top() + rows * m_bold.get_line_height() + line_gap();
}

bool log_layout_t::measure_head(CMessageElement& element)
{
    if (element.m_head_layout == m_layout)
        return false;
    element.m_head_layout = m_layout;
    const auto& head = element.m_head;
    const int picture = picture_height(head);
    int height = header_top() + picture;
    int text = body_top(element) - line_gap();
    if (html_body_t* body = body_of(element))
        text += line_gap() + body->get_height();
    else if (body_is_plain(element))
        text += line_gap() + static_cast<int>(body_rows(element).size()) * m_italic.get_line_height();
    height = std::max(height, text) + scaled(4);
    const bool changed = height != element.m_head_height;
    element.m_head_height = height;
    return changed;
}

int log_layout_t::gauge_height(const CMessageElement& element) const
{
    if (!element.GetGauge().IsShown())
        return 0;
    const int row = m_text.get_line_height() + scaled(3);
    const int rows =
        (element.GetGauge().GetCaption().empty() ? 0 : row) + (element.GetGauge().IsNoteShown() ? row : 0);
    return scaled(4) + rows + bar_height() + scaled(4);
}

int log_layout_t::label_width(const std::string& label)
{
    const font_metrics_t::extent_t extent = m_text.measure(label);
    return extent.width != line_t::no_width
               ? extent.width
               : m_text.get_shaper().width_of(label, direction_of(label, 0, PANGO_DIRECTION_LTR));
}

std::vector<log_layout_t::button_place_t> log_layout_t::button_places(const CMessageElement& element)
{
    std::vector<button_place_t> places;
    if (!element.ButtonsShown())
        return places;
    const int gap = scaled(8);
    int x = text_left(), y = gauge_height(element) + scaled(6), height = 0;
    for (const auto& button : element.GetButtons())
        if (button->IsShown())
            height = std::max(height, m_button_sizes.size_of(button->GetLabel(), button->IsDefault()).y);
    for (const auto& button : element.GetButtons()) {
        if (!button->IsShown())
            continue;
        // Narrower than what the theme has around a label it would complain, and is cut off instead.
        const int width = std::min(m_button_sizes.size_of(button->GetLabel(), button->IsDefault()).x,
                                   std::max(scaled(40), text_width()));
        if (x > text_left() && x + width > m_size.x - margin()) {
            x = text_left();
            y += height + gap;
        }
        places.push_back({button.get(), wxRect(x, y, width, height)});
        x += width + gap;
    }
    return places;
}

void log_layout_t::measure_tail(CMessageElement& element)
{
    const auto buttons = button_places(element);
    element.m_tail_height =
        (buttons.empty() ? gauge_height(element) : buttons.back().rect.GetBottom() + 1) + scaled(9);
}

bool log_layout_t::body_is_plain(const CMessageElement& element) const
{
    const auto& head = element.m_head;
    return !head.body.empty() && !head.laid_out;
}

html_body_t* log_layout_t::body_of(const CMessageElement& element)
{
    if (element.m_head.body.empty() || body_is_plain(element))
        return nullptr;
    const auto found = m_body_of.find(&element);
    if (found != m_body_of.end()) {
        m_bodies.splice(m_bodies.begin(), m_bodies, found->second);
        return m_bodies.front().html.get();
    }
    m_bodies.push_front({&element, std::make_unique<html_body_t>(element.m_head.body, m_look)});
    m_body_of[&element] = m_bodies.begin();
    if (m_bodies.size() > kept_bodies) {
        m_body_of.erase(m_bodies.back().element);
        m_bodies.pop_back();
    }
    m_bodies.front().html->set_width(text_width());
    return m_bodies.front().html.get();
}

std::vector<std::uint32_t> log_layout_t::header_rows(const CMessageElement& element)
{
    std::vector<std::uint32_t> rows;
    m_bold.break_rows(element.m_head.header, text_width(), &rows);
    return rows;
}

std::vector<std::uint32_t> log_layout_t::body_rows(const CMessageElement& element)
{
    std::vector<std::uint32_t> rows;
    m_italic.break_rows(element.m_head.body, text_width(), &rows);
    return rows;
}

const std::vector<std::uint32_t>& log_layout_t::rows_of(const line_t& line)
{
    static const std::vector<std::uint32_t> one(1, 0);
    if (!line.has(line_t::adjusted) || (line.width != line_t::no_width && line.width <= break_width(line)))
        return one;
    const auto found = m_rows.find(line.text);
    if (found != m_rows.end())
        return found->second;
    if (m_rows.size() >= kept_rows)
        m_rows.clear();
    auto& rows = m_rows[line.text];
    break_line(line, shown_line(line), &rows, true);
    return rows;
}

bool log_layout_t::measure_block(line_store_t& lines, std::size_t number)
{
    line_store_t::block_t& block = lines.get_blocks()[number];
    if (block.layout == m_layout)
        return false;
    block.layout = m_layout;
    block.refined = 0;
    bool exact = true;
    for (std::size_t i = 0; i < block.lines.size(); ++i) {
        line_t& line = block.lines[i];
        line.height = line.has(line_t::expanded)
                          ? height_of_line(lines, number * line_store_t::block_size + i, false)
                          : height_of_copy(line, false);
        exact = exact && !line.has(line_t::inexact);
    }
    if (exact)
        block.refined = block.lines.size();
    const std::int64_t before = block.height;
    lines.sum_up(block);
    return block.height != before;
}

void log_layout_t::set_wrap(bool wrap)
{
    if (wrap == m_wrap)
        return;
    stay_where_read();
    m_wrap = wrap;
    m_left = 0;
    invalidate();
}

void log_layout_t::set_time_width(int pixels)
{
    if (pixels == m_time_width)
        return;
    stay_where_read();
    m_time_width = pixels;
    invalidate();
}

int log_layout_t::max_left() const
{
    return m_wrap ? 0 : std::max(0, m_widest + scaled(6) - line_width());
}

// Lines in several rows, and such as only shaping can measure, know no width of their own.
void log_layout_t::see_width(const line_t& line)
{
    if (m_wrap || line.width != line_t::no_width || !line.has(line_t::adjusted))
        return;
    const std::vector<std::uint32_t> rows = rows_of(line);
    const shown_line_t shown_line = this->shown_line(line);
    const std::string_view text = shown_line.text;
    for (std::size_t row = 0; row < rows.size() && row < most_rows_seen; ++row) {
        const std::size_t end = row + 1 < rows.size() ? rows[row + 1] : text.size();
        const std::string_view shown = text.substr(rows[row], end - rows[row]);
        const std::string_view part = shown.substr(0, font_metrics_t::longest_shaped);
        const double width = m_text.get_shaper().width_of(part, direction_of(part, 0, PANGO_DIRECTION_LTR),
                                                          {shown_line.get_runs(), rows[row]});
        const double whole = part.empty() ? 0 : width * shown.size() / part.size();
        m_widest = std::max(m_widest, static_cast<int>(std::min<double>(whole, unlimited_width)));
    }
}

} // namespace vdxcfrw7
