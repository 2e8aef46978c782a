#include "wx_helpers1/scroll_area.h"

#include <gtk/gtk.h>

namespace wx_helpers1 {

wxIMPLEMENT_DYNAMIC_CLASS(scroll_area_t, wxScrolledWindow);

// The toolkit moves the controls along, and has what they draw moved in the next layout. In the middle of a
// layout, where an area that grows while its end is seen scrolls back, there is no next one: what is asked for
// then is forgotten.
void scroll_area_t::ScrollWindow(int dx, int dy, const wxRect* rect)
{
    wxScrolledWindow::ScrollWindow(dx, dy, rect);
    GtkWidget* const scrolled = m_wxwindow;
    for (const wxWindow* child : GetChildren()) {
        GtkWidget* const widget = child->GetHandle();
        if (!widget || gtk_widget_get_parent(widget) != scrolled || !gtk_widget_get_mapped(widget))
            continue;
        GtkAllocation place;
        gtk_widget_get_allocation(widget, &place);
        gtk_widget_size_allocate(widget, &place);
    }
}

} // namespace wx_helpers1
