#include "wx_helpers1/fit.h"

#include <wx/sizer.h>
#include <wx/toplevel.h>
#include <wx/weakref.h>

namespace wx_helpers1 {
namespace {

void forget_measurements(wxWindow* window)
{
    window->InvalidateBestSize();
    for (wxWindow* child : window->GetChildren())
        if (!child->IsTopLevel())
            forget_measurements(child);
}

void fit(wxTopLevelWindow* window)
{
    forget_measurements(window);
    window->SetMinSize(wxDefaultSize);
    window->GetSizer()->SetSizeHints(window);
}

} // namespace

void fit_to_contents(wxTopLevelWindow* window)
{
    if (!window || !window->GetSizer())
        return;
    fit(window);
    // Text fields of a panel know their style, and with it their height, only once they are on the screen.
    window->CallAfter([alive = wxWeakRef<wxTopLevelWindow>(window)] {
        if (alive && alive->GetSizer() && alive->GetSizer())
            fit(alive);
    });
}

} // namespace wx_helpers1
