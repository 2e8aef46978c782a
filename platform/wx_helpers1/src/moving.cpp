#include "wx_helpers1/moving.h"

#include "wx_helpers1/inspect.h"

#include <wx/toplevel.h>
#include <wx/window.h>

#include <gtk/gtk.h>

namespace wx_helpers1 {

void let_keys_into(wxWindow* child)
{
    while (child->IsShown() && !child->IsTopLevel() && child->GetParent() &&
           child->AcceptsFocusFromKeyboard()) {
        child = child->GetParent();
        child->SetCanFocus(false);
        child->m_dirtyTabOrder = true; // its list of the children that Tab goes to is made anew
    }
}

void move_window(wxWindow* window, wxWindow* parent, bool shown)
{
    const auto* top = wxDynamicCast(wxGetTopLevelParent(window), wxTopLevelWindow);
    wxWindow* focused = top ? get_focus_in(*top) : nullptr;
    const bool has_focus = focused && (focused == window || window->IsDescendant(focused));
    window->Reparent(parent);
    window->m_showOnIdle = false;
    window->Show(shown);
    if (shown)
        gtk_widget_show(GTK_WIDGET(window->GetHandle())); // also what the toolkit takes for shown already
    let_keys_into(window);
    if (has_focus && shown)
        focused->SetFocus(); // which it lost on the way
}

void forget_client_size(wxTopLevelWindow* window)
{
    if (window->m_wxwindow)
        gtk_widget_set_size_request(window->m_wxwindow, -1, -1);
}

} // namespace wx_helpers1
