#include "wx_helpers1/scrolled_text.h"

#include <wx/dcclient.h>
#include <wx/renderer.h>
#include <wx/textctrl.h>
#include <wx/weakref.h>
#include <wx/window.h>

#include <gtk/gtk.h>

namespace wx_helpers1 {

void show_focus_frame(wxWindow* window)
{
    wxWindow* parent = window ? window->GetParent() : nullptr;
    if (!parent)
        return;
    constexpr int distance = 3;
    const auto place = [](const wxWindow* framed) { return framed->GetRect().Inflate(distance); };
    const auto refresh = [window, place](wxFocusEvent& event) {
        event.Skip();
        window->GetParent()->RefreshRect(place(window));
    };
    window->Bind(wxEVT_SET_FOCUS, refresh);
    window->Bind(wxEVT_KILL_FOCUS, refresh);
    const auto draw = [framed = wxWeakRef<wxWindow>(window), parent, place](wxPaintEvent& event) {
        event.Skip();
        wxPaintDC dc(parent);
        if (framed && framed->HasFocus() && framed->IsShown())
            wxRendererNative::Get().DrawFocusRect(parent, dc, place(framed));
    };
    parent->Bind(wxEVT_PAINT, draw);
}

void scroll_only_down(wxTextCtrl* text)
{
    if (text && GTK_IS_SCROLLED_WINDOW(text->m_widget))
        gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(text->m_widget), GTK_POLICY_NEVER,
                                       GTK_POLICY_AUTOMATIC);
}

} // namespace wx_helpers1
