#include "wx_helpers1/elements/rectangle_element.h"

#include <wx/dc.h>

#include <algorithm>

namespace wx_helpers1 {

void rectangle_element_t::set_fill(const wxColour& colour)
{
    if (colour == m_fill)
        return;
    m_fill = colour;
    damage();
}

void rectangle_element_t::set_border(const wxColour& colour)
{
    if (colour == m_border)
        return;
    m_border = colour;
    damage();
}

void rectangle_element_t::show_border(bool shown)
{
    if (shown == m_border_shown)
        return;
    m_border_shown = shown;
    damage();
}

void rectangle_element_t::set_margin(int margin)
{
    if (margin == m_margin)
        return;
    m_margin = margin;
    damage();
}

void rectangle_element_t::set_gap(int left, int right)
{
    if (left == m_gap_left && right == m_gap_right)
        return;
    m_gap_left = left;
    m_gap_right = right;
    damage();
}

void rectangle_element_t::draw(wxDC& dc, wxWindow&) const
{
    wxRect rect = get_rect();
    rect.Deflate(m_margin);
    if (rect.IsEmpty())
        return;
    if (m_fill.IsOk()) {
        dc.SetPen(*wxTRANSPARENT_PEN);
        dc.SetBrush(wxBrush(m_fill));
        dc.DrawRectangle(rect);
    }
    if (!m_border_shown || !m_border.IsOk())
        return;
    // As filled strips: where a drawn line ends depends on the kind of device context.
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(m_border));
    const int end = rect.x + rect.width;
    if (m_gap_right > m_gap_left) {
        dc.DrawRectangle(rect.x, rect.y, std::clamp(m_gap_left, rect.x, end) - rect.x, 1);
        const int after = std::clamp(m_gap_right, rect.x, end);
        dc.DrawRectangle(after, rect.y, end - after, 1);
    } else {
        dc.DrawRectangle(rect.x, rect.y, rect.width, 1);
    }
    dc.DrawRectangle(rect.x, rect.GetBottom(), rect.width, 1);
    dc.DrawRectangle(rect.x, rect.y, 1, rect.height);
    dc.DrawRectangle(rect.GetRight(), rect.y, 1, rect.height);
}

} // namespace wx_helpers1
