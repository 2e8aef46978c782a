#include "wrapped_labels.h"

#include <wx_helpers1/label.h>

#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

#include <algorithm>

namespace commondlg3 {
namespace {

void lay_out(wxWindow& window)
{
    if (auto* scrolled = wxDynamicCast(&window, wxScrolledWindow)) {
        scrolled->FitInside();
        scrolled->Layout();
        return;
    }
    const wxSize size = window.GetClientSize();
    const int least = window.GetSizer()->CalcMin().y;
    window.GetSizer()->SetDimension(wxPoint(0, 0), wxSize(size.x, std::max(size.y, least)));
}

} // namespace

bool fit_wrapped_labels(wxWindow& window, const std::vector<wxStaticText*>& labels)
{
    // In a window that is too narrow for them, controls complain of the room that they are given.
    if (!window.GetSizer() || window.GetClientSize().x < window.GetSizer()->GetMinSize().x)
        return false;
    lay_out(window);
    bool changed = false;
    for (wxStaticText* label : labels) {
        const int width = label->GetSize().x;
        wx_helpers1::set_wrap_width(label, width);
        const wxSize least(1,
                           label->GetLabelText().empty() ? 0 : wx_helpers1::height_for_width(label, width));
        changed |= least != label->GetMinSize();
        label->SetMinSize(least);
    }
    if (changed)
        lay_out(window);
    return changed;
}

} // namespace commondlg3
