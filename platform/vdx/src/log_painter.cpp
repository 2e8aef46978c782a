#include "log_view.h"

#include "paint_dc.h"
#include "shown_text.h"

#include <wx/settings.h>

#include <algorithm>

namespace vdxcfrw7 {
namespace {

bool begins_right_to_left(std::string_view row)
{
    const char* const end = row.data() + row.size();
    for (const char* at = row.data(); at < end;) {
        const char32_t c = decode(at, end);
        if ((c >= 0x590 && c < 0x900) || (c >= 0xfb1d && c < 0xff00 && c < 0xfe00) ||
            (c >= 0xfe70 && c < 0xff00))
            return true;
        if ((c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= 0xc0 && c < 0x590) || c >= 0x900)
            return false;
    }
    return false;
}

class painter_t
{
public:
    painter_t(paint_dc_t& dc, log_view_t& view)
        : m_dc(dc),
          m_view(view),
          m_layout(view.get_layout()),
          m_colours(view.get_colours()),
          m_mirrored(view.GetLayoutDirection() == wxLayout_RightToLeft)
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
    }

private:
    // A row that is selected from byte `from` to byte `to` of its own.
    void draw_row(font_metrics_t& font, std::string_view row, int x, std::int64_t y, const wxColour& ink,
                  std::size_t from, std::size_t to, bool to_the_end)
    {
        const wxString shown = to_shown(row);
        m_dc.SetFont(font.get_font());
        m_dc.SetTextForeground(ink);
        const int top = static_cast<int>(y);
        if (from >= to && !to_the_end) {
            m_dc.DrawText(shown, x, top);
            return;
        }
        const std::vector<int> widths = font.partial_widths(row);
        const auto x_of = [&](std::size_t byte) {
            std::size_t index = 0;
            const char* const end = row.data() + row.size();
            for (const char* at = row.data(); at < end && static_cast<std::size_t>(at - row.data()) < byte;
                 ++index)
                decode(at, end);
            return index ? widths[index - 1] : 0;
        };
        const int whole = widths.empty() ? 0 : widths.back();
        int left = x_of(from), right = to_the_end ? std::max(whole, m_layout.scaled(4)) : x_of(to);
        if (begins_right_to_left(row) != m_mirrored) {
            const int mirrored = whole - right;
            right = whole - left;
            left = std::max(0, mirrored);
        }
        const wxRect rect(x + left, top, std::max(1, right - left), font.get_line_height());
        m_dc.DrawText(shown, x, top);
        m_dc.SetPen(*wxTRANSPARENT_PEN);
        m_dc.SetBrush(wxBrush(m_colours.selection));
        m_dc.DrawRectangle(rect);
        const paint_dc_t::clip_t clip(m_dc, rect);
        m_dc.SetTextForeground(m_colours.selected_ink);
        m_dc.DrawText(shown, x, top);
    }

    void draw_rows(font_metrics_t& font, const CMessageElement& element, std::size_t item,
                   std::string_view text, const std::vector<std::uint32_t>& rows, int x, std::int64_t y,
                   const wxColour& ink)
    {
        std::size_t from = 0, to = 0;
        const bool selected = m_view.get_selected_part(element, item, text.size(), from, to);
        const int height = font.get_line_height();
        std::size_t row = y < 0 ? static_cast<std::size_t>(-y / height) : 0;
        for (; row < rows.size(); ++row) {
            const std::int64_t row_y = y + static_cast<std::int64_t>(row) * height;
            if (row_y >= m_layout.get_size().y)
                break;
            const std::size_t begin = rows[row];
            const std::size_t end = row + 1 < rows.size() ? rows[row + 1] : text.size();
            std::size_t row_from = 0, row_to = 0;
            if (selected && from < end && to > begin) {
                row_from = std::max(from, begin) - begin;
                row_to = std::min(to, end) - begin;
            }
            draw_row(font, text.substr(begin, end - begin), x, row_y, ink, row_from, row_to,
                     selected && from <= begin && to >= end && begin == end);
        }
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
                m_dc.DrawBitmap(bundle.GetBitmapFor(&m_view), m_layout.margin(), y + m_layout.header_top(),
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
        if (m_view.get_selected_part(element, text_item_t::body, 1, from, to)) {
            m_dc.SetPen(*wxTRANSPARENT_PEN);
            m_dc.SetBrush(wxBrush(
                m_colours.selection.ChangeLightness(m_colours.background.GetLuminance() > 0.5 ? 150 : 60)));
            m_dc.DrawRectangle(x, body_y, m_layout.text_width(), body->get_height());
        }
        m_dc.set_pieces(true);
        body->draw(m_dc, x, body_y, 0, m_layout.get_size().y);
        m_dc.set_pieces(false);
    }

    void draw_line(const CMessageElement& element, std::size_t index, std::int64_t y)
    {
        const line_t& line = element.GetLines().at(index);
        const int row = m_layout.text_font().get_line_height();
        const wxBitmap icon = m_view.get_image(line.image);
        if (icon.IsOk() && y > -row)
            m_dc.DrawBitmap(icon, m_layout.text_left(),
                            static_cast<int>(y) +
                                std::max(0, (row - static_cast<int>(icon.GetLogicalHeight())) / 2),
                            true);
        const std::string_view text = line.get_text();
        if (!line.has(line_t::status)) {
            draw_rows(m_layout.text_font(), element, text_item_t::first_line + index, text,
                      m_layout.rows_of(line), m_layout.line_left(), y, m_colours.ink);
            return;
        }
        // What is being done now, in one row.
        const std::string_view first = text.substr(0, std::min<std::size_t>(text.find('\n'), 1000));
        wxString shown = to_shown(first);
        m_dc.SetFont(m_layout.text_font().get_font());
        m_dc.SetTextForeground(m_colours.secondary);
        if (m_dc.GetTextExtent(shown).x > m_layout.line_width())
            shown = wxControl::Ellipsize(shown, m_dc, wxELLIPSIZE_END, m_layout.line_width(),
                                         wxELLIPSIZE_FLAGS_NONE);
        m_dc.DrawText(shown, m_layout.line_left(), static_cast<int>(y));
    }

    void draw_tail(const CMessageElement& element, int y, int)
    {
        const CGauge& gauge = element.GetGauge();
        if (!gauge.IsShown())
            return;
        const int x = m_layout.text_left();
        y += m_layout.scaled(4);
        if (!gauge.GetCaption().empty()) {
            m_dc.SetFont(m_layout.text_font().get_font());
            m_dc.SetTextForeground(m_colours.ink);
            const wxString shown = to_shown(gauge.GetCaption().substr(0, 1000));
            m_dc.DrawText(wxControl::Ellipsize(shown, m_dc, wxELLIPSIZE_END, m_layout.text_width(),
                                               wxELLIPSIZE_FLAGS_NONE),
                          x, y);
            y += m_layout.text_font().get_line_height() + m_layout.scaled(3);
        }
        const wxRect bar(x, y, m_layout.text_width(), m_layout.bar_height());
        m_dc.SetPen(wxPen(m_colours.border));
        m_dc.SetBrush(wxBrush(m_colours.background));
        m_dc.DrawRectangle(bar);
        const int filled = static_cast<int>(static_cast<std::int64_t>(bar.width - 2) * gauge.GetValue() /
                                            std::max(1, gauge.GetRange()));
        m_dc.SetPen(*wxTRANSPARENT_PEN);
        m_dc.SetBrush(wxBrush(m_colours.selection));
        if (filled > 0)
            m_dc.DrawRectangle(bar.x + 1, bar.y + 1, filled, bar.height - 2);
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
