#include "wx_helpers1/main_window.h"

#include <wx/app.h>
#include <wx/window.h>

namespace wx_helpers1 {

wxWindow* get_main_window()
{
    const auto* app = wxDynamicCast(wxApp::GetInstance(), wxApp);
    wxWindow* window = app ? app->GetTopWindow() : nullptr;
    return window && !window->IsBeingDeleted() ? window : nullptr;
}

} // namespace wx_helpers1
