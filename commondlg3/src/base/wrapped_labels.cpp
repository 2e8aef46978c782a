#include "wrapped_labels.h"

#include <wx_helpers1/label.h>

#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

namespace commondlg3 {

void lay_out_unsqueezed(wxWindow& window)
{
    wxSizer* sizer = window.GetSizer();
    if (!sizer)
        return;
    wxSize size = window.GetClientSize();
    size.IncTo(sizer->CalcMin());
    sizer->SetDimension(wxPoint(0, 0), size);
}

namespace {

void lay_out(wxWindow& window)
{
    if (auto* scrolled = wxDynamicCast(&window, wxScrolledWindow)) {
        scrolled->FitInside();
        scrolled->Layout();
        return;
    }
    lay_out_unsqueezed(window);
}

} // namespace

bool fit_wrapped_labels(wxWindow& window, const std::vector<wxStaticText*>& labels)
{
    if (!window.GetSizer())
        return false;
    lay_out(window);
    bool changed = false;
    for (wxStaticText* label : labels) {
        if (!label)
            continue;
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

void rewrap_page(wxWindow& page, const std::vector<wxStaticText*>& labels)
{
    if (fit_wrapped_labels(page, labels))
        page.SendSizeEventToParent(wxSEND_EVENT_POST);
}

} // namespace commondlg3
