#include "wx_helpers1/button_look.h"

#include <wx/button.h>
#include <wx/toplevel.h>

#include <gtk/gtk.h>

namespace wx_helpers1 {

void set_destructive_look(wxButton* button, bool destructive)
{
    if (!button || !button->GetHandle())
        return;
    GtkStyleContext* style = gtk_widget_get_style_context(GTK_WIDGET(button->GetHandle()));
    if (gtk_style_context_has_class(style, GTK_STYLE_CLASS_DESTRUCTIVE_ACTION) == destructive)
        return; // a changed style costs the time of many buttons
    if (destructive)
        gtk_style_context_add_class(style, GTK_STYLE_CLASS_DESTRUCTIVE_ACTION);
    else
        gtk_style_context_remove_class(style, GTK_STYLE_CLASS_DESTRUCTIVE_ACTION);
}

void clear_default_button(wxTopLevelWindow* window)
{
    window->SetDefaultItem(nullptr);
    if (window->GetHandle())
        gtk_window_set_default(GTK_WINDOW(window->GetHandle()), nullptr);
}

} // namespace wx_helpers1
