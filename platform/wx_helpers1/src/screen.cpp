#include "wx_helpers1/screen.h"

#include <wx/display.h>
#include <wx/toplevel.h>

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

} // namespace wx_helpers1
