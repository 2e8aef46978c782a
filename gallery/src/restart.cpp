#include "restart.h"

#include <wx/app.h>
#include <wx/window.h>

namespace gallery {
namespace {

bool requested = false;

} // namespace

void request_restart()
{
    requested = true;
    wxTheApp->CallAfter([] {
        if (wxWindow* window = wxTheApp->GetTopWindow())
            window->Close();
    });
}

bool is_restart_requested()
{
    return requested;
}

} // namespace gallery
