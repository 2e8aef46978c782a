#include "wx_helpers1/moving.h"

#include <wx/window.h>

#include <gtk/gtk.h>

namespace wx_helpers1 {

void move_window(wxWindow* window, wxWindow* parent, bool shown)
{
    window->Hide();
    window->Reparent(parent);
    window->Show(shown);
    if (shown)
        gtk_widget_show(GTK_WIDGET(window->GetHandle()));
}

} // namespace wx_helpers1
