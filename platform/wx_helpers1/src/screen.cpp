#include "wx_helpers1/screen.h"

#include <wx/display.h>
#include <wx/toplevel.h>

#include <gtk/gtk.h>

namespace wx_helpers1 {

unsigned display_near(const wxWindow* window)
{
    for (; window; window = window->GetParent()) {
        if (!window->IsTopLevel() || !window->IsShown())
            continue;
        const wxRect rect = window->GetRect();
        const int index = wxDisplay::GetFromPoint(wxPoint(rect.x + rect.width / 2, rect.y + rect.height / 2));
        if (index != wxNOT_FOUND)
            return static_cast<unsigned>(index);
    }
    return 0;
}

void place_window(wxTopLevelWindow* window, const wxPoint& position)
{
    window->Move(position);
    GtkWidget* widget = window->GetHandle();
    if (widget && gtk_widget_get_realized(widget) && !gtk_widget_get_mapped(widget))
        gdk_window_move(gtk_widget_get_window(widget), position.x, position.y);
}

} // namespace wx_helpers1
