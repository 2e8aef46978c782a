#include "wx_helpers1/enabling.h"

#include <wx/window.h>

namespace wx_helpers1 {
namespace {

bool has_focus(const wxWindow* control)
{
    for (const wxWindow* at = wxWindow::FindFocus(); at; at = at->GetParent())
        if (at == control)
            return true;
    return false;
}

bool can_have_focus(const wxWindow* control)
{
    return control && control->IsShown() && control->IsEnabled() && control->CanAcceptFocusFromKeyboard();
}

// The first below this window, in the order of Tab, that is no part of `without`.
wxWindow* first_below(wxWindow* parent, const wxWindow* without, wxWindow* after)
{
    bool passed = !after;
    for (wxWindow* child : parent->GetChildren()) {
        if (child == after)
            passed = true;
        if (!passed || child == without || child == after || !child->IsShown() || !child->IsEnabled() ||
            child->IsTopLevel())
            continue;
        if (wxWindow* inside = first_below(child, without, nullptr))
            return inside;
        if (can_have_focus(child))
            return child;
    }
    return nullptr;
}

wxWindow* next_after(wxWindow* control)
{
    for (wxWindow* at = control; !at->IsTopLevel() && at->GetParent(); at = at->GetParent()) {
        if (wxWindow* behind = first_below(at->GetParent(), control, at))
            return behind;
        if (wxWindow* anywhere = first_below(at->GetParent(), control, nullptr))
            return anywhere;
    }
    return nullptr;
}

void give_focus_on(wxWindow* control, wxWindow* instead)
{
    wxWindow* heir = can_have_focus(instead) ? instead : next_after(control);
    if (heir)
        heir->SetFocus();
}

} // namespace

void set_enabled(wxWindow* control, bool enabled, wxWindow* instead)
{
    if (control->IsThisEnabled() == enabled)
        return;
    if (!enabled && has_focus(control))
        give_focus_on(control, instead);
    control->Enable(enabled);
}

void set_enabled(std::initializer_list<std::pair<wxWindow*, bool>> controls, wxWindow* instead)
{
    wxWindow* heir = nullptr;
    for (const auto& [control, enabled] : controls) {
        if (!control || !enabled)
            continue;
        control->Enable();
        heir = heir ? heir : control;
    }
    for (const auto& [control, enabled] : controls)
        if (control && !enabled)
            set_enabled(control, false, heir ? heir : instead);
}

} // namespace wx_helpers1
