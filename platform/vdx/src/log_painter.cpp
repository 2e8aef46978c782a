#include "log_view.h"

#include "log_times.h"
#include "paint_dc.h"
#include "shown_text.h"

#include <wx/control.h>
#include <wx/settings.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace vdxcfrw7 {
namespace {

class painter_t
{
public:
    painter_t(paint_dc_t& dc, log_view_t& view)
        : m_dc(dc),
          m_view(view),
          m_layout(view.get_layout()),
          m_colours(view.get_colours()),
          m_mirrored(view.is_mirrored())
    {
    }

    void draw()
    {
        m_dc.SetBackground(wxBrush(m_colours.background));
        m_dc.Clear();
        for (const auto& item : m_layout.visible_items()) {
            switch (item.part) {
            case log_layout_t::part_t::head:
                draw_head(*item.element, static_cast<int>(item.y));
                break;
            case log_layout_t::part_t::line:
                draw_line(*item.element, item.line, item.y);
                break;
            case log_layout_t::part_t::tail:
                draw_tail(*item.element, static_cast<int>(item.y), item.height);
                break;
            }
        }
        draw_marks();
        draw_place();
        draw_link();
    }

private:
    void draw_place()
    {
        const text_place_t place = m_view.shows_place() ? m_view.get_place() : text_place_t();
        if (!place.is_set())
            return;
        text_extent_t extent = extent_of(m_layout, place);
        if (place.item == text_item_t::header) { // without the room above it
            const int room = m_layout.header_top() - m_layout.scaled(3);
            extent.top += room;
            extent.height -= room;
        }
        m_dc.SetPen(wxPen(m_colours.link, m_layout.scaled(1)));
        m_dc.SetBrush(*wxTRANSPARENT_BRUSH);
        m_dc.DrawRoundedRectangle(
            m_layout.text_left() - m_layout.scaled(5), static_cast<int>(extent.top - m_layout.top()),
            m_layout.text_width() + m_layout.scaled(10), extent.height, m_layout.scaled(3));
    }

    // Where the keyboard is among the links of a text.
    void draw_link()
    {
        const view_link_t link = m_view.shows_place() ? m_view.get_link() : view_link_t();
        if (!link.is_set())
            return;
        m_dc.SetPen(wxPen(m_colours.link, m_layout.scaled(2)));
        m_dc.SetBrush(*wxTRANSPARENT_BRUSH);
        for (const wxRect& rect : m_view.rects_of(link))
            m_dc.DrawRectangle(wxRect(rect).Inflate(m_layout.scaled(2), 0));
    }

    struct range_t
    {
        std::size_t from; // bytes
        std::size_t to;
    };

    // Part of a row on a ground of its own.
    void draw_part(font_metrics_t& font, std::string_view row, PangoDirection direction, row_style_t style,
                   int x, int top, const range_t& part, const wxColour& ground, const wxColour& ink)
    {
        text_shaper_t& shaper = font.get_shaper();
        style.colours = nullptr; // its own would not be readable on that ground
        auto places = shaper.places_of(row, direction, part.from, part.to, style);
        if (places.empty())
            places.emplace_back(0, m_layout.scaled(4));
        const int whole = m_mirrored ? shaper.width_of(row, direction, style) : 0;
        m_dc.SetPen(*wxTRANSPARENT_PEN);
        m_dc.SetBrush(wxBrush(ground));
        PangoLayout* const layout = shaper.layout_of(row, direction, style);
        for (const auto& [left, right] : places) {
            const wxRect rect(x + (m_mirrored ? whole - right : left), top, right - left,
                              font.get_line_height());
            m_dc.DrawRectangle(rect);
            const paint_dc_t::clip_t clip(m_dc, rect);
            m_dc.draw_layout(layout, x, top, ink);
        }
    }

    // Where something was found in a text, for as much of it as can be seen.
    std::vector<range_t> matches_in(const CMessageElement& element, std::size_t item, std::string_view text,
                                    std::size_t seen_from, std::size_t seen_to)
    {
        std::vector<range_t> matches;
        text_matcher_t& matcher = m_view.get_found().get_matcher();
        if (matcher.is_empty() || !is_found(element, item))
            return matches;
        matcher.start(text);
        for (text_matcher_t::match_t match{}; matcher.next(match) && match.begin < seen_to;)
            if (match.end > seen_from)
                matches.push_back({match.begin, match.end});
        return matches;
    }

    void draw_rows(font_metrics_t& font, const CMessageElement& element, std::size_t item,
                   std::string_view text, const std::vector<std::uint32_t>& rows, int x, std::int64_t y,
                   const wxColour& ink, const style_runs_t* runs = nullptr)
    {
        std::size_t from = 0, to = 0;
        const bool selected = m_view.get_selection().get_part(element, item, text.size(), from, to);
        const int height = font.get_line_height();
        const std::size_t first = y < 0 ? static_cast<std::size_t>(-y / height) : 0;
        const std::size_t behind = std::min<std::size_t>(
            rows.size(), first + static_cast<std::size_t>(m_layout.get_size().y / height) + 2);
        if (first >= behind)
            return;
        const std::vector<range_t> matches =
            matches_in(element, item, text, rows[first], behind < rows.size() ? rows[behind] : text.size());
        style_runs_t with_links;
        if (const auto links = m_view.text_links({&element, item, 0}); !links.empty()) {
            if (runs)
                with_links = *runs;
            for (const text_link_t& link : links)
                mark_link(with_links, link.begin, link.end);
            runs = &with_links;
        }
        PangoDirection direction = PANGO_DIRECTION_LTR;
        for (std::size_t row = first; row < behind; ++row) {
            const std::int64_t row_y = y + static_cast<std::int64_t>(row) * height;
            if (row_y >= m_layout.get_size().y)
                break;
            const std::size_t begin = rows[row];
            const std::size_t end = row + 1 < rows.size() ? rows[row + 1] : text.size();
            // The rows of a paragraph run alike, and looking for its beginning takes time.
            if (row == first || ends_line(text, begin))
                direction = m_view.get_direction(text, begin);
            const std::string_view shown_row = text.substr(begin, end - begin);
            const row_style_t style{runs, begin, &m_view.get_style_colours()};
            const int top = static_cast<int>(row_y);
            m_dc.draw_layout(font.get_shaper().layout_of(shown_row, direction, style), x, top, ink);
            const auto draw_range = [&](const range_t& range, const wxColour& ground,
                                        const wxColour& colour) {
                if (range.from < end && range.to > begin)
                    draw_part(font, shown_row, direction, style, x, top,
                              {std::max(range.from, begin) - begin, std::min(range.to, end) - begin}, ground,
                              colour);
            };
            for (const range_t& match : matches)
                draw_range(match, m_colours.match, m_colours.match_ink);
            if (selected)
                draw_range({from, to}, m_colours.selection, m_colours.selected_ink);
            if (selected && begin == end && from <= begin && to >= end)
                draw_part(font, shown_row, direction, style, x, top, {0, 0}, m_colours.selection,
                          m_colours.selected_ink);
        }
    }

    void draw_marks()
    {
        if (m_view.get_found().get_matcher().is_empty())
            return;
        const int width = m_layout.scaled(5), thickness = m_layout.scaled(2);
        m_dc.SetPen(*wxTRANSPARENT_PEN);
        m_dc.SetBrush(wxBrush(m_colours.mark));
        for (const int y : m_view.get_marks())
            m_dc.DrawRectangle(m_layout.get_size().x - width, y, width, thickness);
    }

    void draw_head(CMessageElement& element, int y)
    {
        const auto& head = element.GetHead();
        if (element.GetIndex() > 0) {
            m_dc.SetPen(wxPen(m_colours.border));
            m_dc.DrawLine(m_layout.margin(), y, m_layout.get_size().x - m_layout.margin(), y);
        }
        if (!head.picture.is_empty()) {
            const auto still = head.picture.is_animation()
                                   ? head.picture.get_animation().get_frame(m_view.get_frame())
                                   : head.picture.get_still();
            const wxBitmapBundle bundle = still.get_bundle(m_colours.ink);
            if (bundle.IsOk())
                m_dc.DrawBitmap(m_view.get_bitmap(bundle), m_layout.margin(), y + m_layout.header_top(),
                                true);
        }
        const int x = m_layout.text_left();
        if (!head.header.empty())
            draw_rows(m_layout.bold_font(), element, text_item_t::header, head.header,
                      m_layout.header_rows(element), x, y + m_layout.header_top(), m_colours.ink);
        const int body_y = y + m_layout.body_top(element);
        if (m_layout.body_is_plain(element)) {
            draw_rows(m_layout.italic_font(), element, text_item_t::body, head.body,
                      m_layout.body_rows(element), x, body_y, m_colours.ink);
            return;
        }
        html_body_t* body = m_layout.body_of(element);
        if (!body)
            return;
        std::size_t from = 0, to = 0;
        if (m_view.get_selection().get_part(element, text_item_t::body, 1, from, to)) {
            m_dc.SetPen(*wxTRANSPARENT_PEN);
            m_dc.SetBrush(wxBrush(m_colours.selection));
            m_dc.DrawRectangle(x, body_y, m_layout.text_width(), body->get_height());
            body->draw(m_dc, x, body_y, m_layout.get_size().y, m_colours.selected_ink);
        } else
            body->draw(m_dc, x, body_y, m_layout.get_size().y, wxColour());
    }

    void draw_line(const CMessageElement& element, std::size_t index, std::int64_t y)
    {
        const line_store_t& lines = element.GetLines();
        const std::uint32_t copies = log_layout_t::get_copies(lines, index);
        const std::int64_t height = m_layout.get_copy_height(lines, index);
        std::int64_t copy = y < 0 && height > 0 ? -y / height : 0;
        for (; copy < copies && y + copy * height < m_layout.get_size().y; ++copy)
            draw_copy(element, index, y + copy * height, copy == 0);
    }

    void draw_copy(const CMessageElement& element, std::size_t index, std::int64_t y, bool first)
    {
        const line_t& line = element.GetLines().at(index);
        const int row = m_layout.text_font().get_line_height();
        const wxBitmap icon = m_view.get_image(line.image);
        if (icon.IsOk() && y > -row)
            m_dc.DrawBitmap(icon, m_layout.text_left(),
                            static_cast<int>(y) +
                                std::max(0, (row - static_cast<int>(icon.GetLogicalHeight())) / 2),
                            true);
        if (line.has(line_t::status)) {
            draw_status(line, static_cast<int>(y));
            return;
        }
        if (first && y > -row) {
            draw_time(element, index, static_cast<int>(y));
            if (line.can_expand())
                draw_badge(line.has(line_t::repeated) ? shown_count(element.GetLines().get_count(index))
                                                      : shown_length(line.length),
                           line.has(line_t::expanded), static_cast<int>(y));
        }
        const auto draw_text = [&] {
            const auto& rows = m_layout.rows_of(line);
            const log_layout_t::shown_line_t shown = m_layout.shown_line(line);
            draw_rows(m_layout.text_font(), element, text_item_t::first_line + index, shown.text, rows,
                      m_layout.line_left() - m_layout.left(), y, m_colours.ink, shown.get_runs());
        };
        if (m_layout.wraps()) {
            draw_text();
            return;
        }
        const paint_dc_t::clip_t clip(
            m_dc, wxRect(m_layout.line_left(), 0, m_layout.line_width(line), m_layout.get_size().y));
        draw_text();
    }

    // What is being done now, in one row.
    void draw_status(const line_t& line, int y)
    {
        const std::string_view first = first_line(m_layout.shown_line(line).text.substr(0, 1000));
        wxString shown = to_shown(first);
        m_dc.SetFont(m_layout.text_font().get_font());
        m_dc.SetTextForeground(m_colours.secondary);
        if (m_dc.GetTextExtent(shown).x > m_layout.line_width())
            shown = wxControl::Ellipsize(shown, m_dc, wxELLIPSIZE_END, m_layout.line_width(),
                                         wxELLIPSIZE_FLAGS_NONE);
        m_dc.DrawText(shown, m_layout.line_left(), y);
    }

    void draw_time(const CMessageElement& element, std::size_t index, int y)
    {
        if (m_view.get_times() == CEventLog::times_t::none)
            return;
        const std::string time =
            shown_time(element.GetLines().get_time(index), m_view.get_times(), element.GetBeginning());
        m_dc.SetFont(m_layout.text_font().get_font());
        m_dc.SetTextForeground(m_colours.secondary);
        m_dc.draw_text(to_shown(time), m_layout.time_left(), y, PANGO_DIRECTION_LTR);
    }

    // At the end of the line's first row, as a button that it is.
    void draw_badge(const std::string& text, bool expanded, int y)
    {
        const int height = m_layout.text_font().get_line_height();
        const int width = m_layout.label_width(text) + m_layout.scaled(12);
        const wxRect rect(m_layout.line_left() + m_layout.line_width() - width, y, width, height);
        m_dc.SetPen(wxPen(m_colours.border));
        m_dc.SetBrush(wxBrush(expanded ? m_colours.background : m_colours.selection));
        m_dc.DrawRoundedRectangle(rect, height / 2.0);
        m_dc.SetFont(m_layout.text_font().get_font());
        m_dc.SetTextForeground(expanded ? m_colours.ink : m_colours.selected_ink);
        m_dc.draw_text(to_shown(text), rect.x + m_layout.scaled(6), y, PANGO_DIRECTION_LTR);
    }

    void draw_tail(const CMessageElement& element, int y, int)
    {
        const CGauge& gauge = element.GetGauge();
        if (!gauge.IsShown())
            return;
        const int x = m_layout.text_left();
        y += m_layout.scaled(4);
        if (!gauge.GetCaption().empty()) {
            draw_short(gauge.GetCaption(), x, y, m_colours.ink);
            y += m_layout.text_font().get_line_height() + m_layout.scaled(3);
        }
        if (gauge.IsNoteShown())
            draw_short(gauge.GetNote(), x, y + m_layout.bar_height() + m_layout.scaled(3),
                       m_colours.secondary);
        const wxRect bar(x, y, m_layout.text_width(), m_layout.bar_height());
        m_dc.SetPen(wxPen(m_colours.border));
        m_dc.SetBrush(wxBrush(m_colours.background));
        m_dc.DrawRectangle(bar);
        const wxRect inside = wxRect(bar).Deflate(1);
        if (gauge.IsBusy()) {
            draw_busy(inside);
            return;
        }
        const int filled = static_cast<int>(static_cast<std::int64_t>(bar.width - 2) * gauge.GetValue() /
                                            std::max(1, gauge.GetRange()));
        m_dc.SetPen(*wxTRANSPARENT_PEN);
        m_dc.SetBrush(wxBrush(m_colours.selection));
        if (filled > 0)
            m_dc.DrawRectangle(inside.x, inside.y, filled, inside.height);
    }

    // A text in one row.
    void draw_short(const std::string& text, int x, int y, const wxColour& ink)
    {
        m_dc.SetFont(m_layout.text_font().get_font());
        m_dc.SetTextForeground(ink);
        const wxString shown = to_shown(first_line(std::string_view(text).substr(0, 1000)));
        m_dc.DrawText(
            wxControl::Ellipsize(shown, m_dc, wxELLIPSIZE_END, m_layout.text_width(), wxELLIPSIZE_FLAGS_NONE),
            x, y);
    }

    // A piece that goes back and forth or, where nothing may move, stripes.
    void draw_busy(const wxRect& inside)
    {
        const paint_dc_t::clip_t clip(m_dc, inside);
        if (m_view.is_animated()) {
            constexpr int frames = 24; // from one end to the other
            const int piece = std::max(1, inside.width / 5);
            const int frame = static_cast<int>(m_view.get_frame() % (2 * frames));
            const int way = (inside.width - piece) * std::min(frame, 2 * frames - frame) / frames;
            m_dc.SetPen(*wxTRANSPARENT_PEN);
            m_dc.SetBrush(wxBrush(m_colours.selection));
            m_dc.DrawRectangle(inside.x + way, inside.y, piece, inside.height);
            return;
        }
        const int step = m_layout.scaled(8), slant = inside.height;
        m_dc.SetPen(wxPen(m_colours.selection, m_layout.scaled(3)));
        for (int at = inside.x - slant; at < inside.GetRight() + step; at += step)
            m_dc.DrawLine(at, inside.GetBottom() + 1, at + slant, inside.y - 1);
    }

    paint_dc_t& m_dc;
    log_view_t& m_view;
    log_layout_t& m_layout;
    const log_colours_t& m_colours;
    bool m_mirrored;
};

} // namespace

void draw_log(paint_dc_t& dc, log_view_t& view)
{
    painter_t(dc, view).draw();
}

} // namespace vdxcfrw7
