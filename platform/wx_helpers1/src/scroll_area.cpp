#include "wx_helpers1/scroll_area.h"

#include <gtk/gtk.h>

namespace wx_helpers1 {

wxIMPLEMENT_DYNAMIC_CLASS(scroll_area_t, wxScrolledWindow);

// The toolkit moves the controls along, and has what they draw moved in the next layout. In the middle of
// a layout, where an area that grows while its end is seen scrolls back, there is no next one: what is
// asked for then is forgotten. Each goes to where it shall be, not to where it was: that may be older than
// what our layout gave it.
void scroll_area_t::ScrollWindow(int dx, int dy, const wxRect* rect)
{
    wxScrolledWindow::ScrollWindow(dx, dy, rect);
    GtkWidget* const scrolled = m_wxwindow;
    if (!gtk_widget_get_mapped(scrolled))
        return;
    const bool mirrored = gtk_widget_get_direction(scrolled) == GTK_TEXT_DIR_RTL;
    const int width = gdk_window_get_width(gtk_widget_get_window(scrolled));
    for (const wxWindow* child : GetChildren()) {
        GtkWidget* const widget = child->GetHandle();
        if (!widget || gtk_widget_get_parent(widget) != scrolled || !gtk_widget_get_mapped(widget))
            continue;
        const wxRect at = child->GetRect();
        GtkAllocation place = {mirrored ? width - at.x - at.width : at.x, at.y, at.width, at.height};
        if (!at.IsEmpty())
            gtk_widget_size_allocate(widget, &place);
    }
}

} // namespace wx_helpers1
