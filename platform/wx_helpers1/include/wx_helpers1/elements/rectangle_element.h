#pragma once

#include "wx_helpers1/elements/element.h"

#include <wx/colour.h>

namespace wx_helpers1 {

/// A frame, a coloured area, or both. GUI thread.
class WX_HELPERS1_EXPORT rectangle_element_t : public element_t
{
public:
    /// An invalid colour, which it begins with, fills nothing.
    void set_fill(const wxColour& colour);
    /// The colour of the border.
    void set_border(const wxColour& colour);
    /// Whether there is one; not at first.
    void show_border(bool shown);
    /// How far what is drawn stays inside of the element's place, in pixels on each side.
    void set_margin(int margin);
    int get_margin() const { return m_margin; }
    /// Leaves the upper border away between these pixels of the window, for a caption in it.
    void set_gap(int left, int right);

protected:
    void draw(wxDC& dc, wxWindow& window) const override;

private:
    wxColour m_fill;
    wxColour m_border;
    bool m_border_shown = false;
    int m_margin = 0;
    int m_gap_left = 0;
    int m_gap_right = 0;
};

} // namespace wx_helpers1
