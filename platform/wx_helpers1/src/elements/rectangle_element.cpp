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
    dc.SetPen(wxPen(m_border));
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    if (m_gap_right <= m_gap_left) {
        dc.DrawRectangle(rect);
        return;
    }
    // A line ends before its last point.
    const int top = rect.GetTop(), bottom = rect.GetBottom(), left = rect.GetLeft(), right = rect.GetRight();
    if (m_gap_left > left)
        dc.DrawLine(left, top, std::min(m_gap_left, right), top);
    if (m_gap_right <= right)
        dc.DrawLine(std::max(m_gap_right, left), top, right, top);
    dc.DrawLine(left, top, left, bottom);
    dc.DrawLine(right, top, right, bottom);
    dc.DrawLine(left, bottom, right + 1, bottom);
}

} // namespace wx_helpers1
