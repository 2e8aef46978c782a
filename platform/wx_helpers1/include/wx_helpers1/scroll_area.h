#pragma once

#include "wx_helpers1/export.h"

#include <wx/scrolwin.h>

namespace wx_helpers1 {

/// A window that scrolls what has no room in it. The layouts of resources have it in place of the toolkit's,
/// which lets what is in it believe that it gets the room of the scroll bar as well: a text that breaks its
/// own lines is then too wide, and nobody tells it better.
/// @since 3.1
class WX_HELPERS1_EXPORT scroll_area_t : public wxScrolledWindow
{
public:
    scroll_area_t() = default;
    explicit scroll_area_t(wxWindow* parent) : wxScrolledWindow(parent) {}

    bool InformFirstDirection(int, int, int) override { return false; }
    void ScrollWindow(int dx, int dy, const wxRect* rect = nullptr) override;

private:
    wxDECLARE_DYNAMIC_CLASS(scroll_area_t);
};

} // namespace wx_helpers1
