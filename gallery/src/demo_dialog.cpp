#include "demo_dialog.h"

#include "missing_resource.h"
#include "window_run.h"

#include <commondlg3/resources.h>

#include <wx_helpers1/ui_settings.h>

#include <wx/checkbox.h>
#include <wx/sizer.h>
#include <wx/xrc/xmlres.h>

#include <algorithm>

namespace gallery {

demo_dialog_t::demo_dialog_t(const char* object) : m_object(object)
{
    set_resource_file(resource_file());
    m_catalog_name = "gallery";
}

wxWindow* demo_dialog_t::get_area()
{
    wxWindow* area = FindWindow(XRCID("m_area"));
    return area ? area : this;
}

void demo_dialog_t::insert_panel(wxWindow* panel, int place, int margin, wxWindow* after)
{
    wxSizer* sizer = panel->GetParent()->GetSizer();
    const auto index = std::min(static_cast<std::size_t>(place), sizer->GetItemCount());
    sizer->Insert(index, panel, 0, wxEXPAND | wxLEFT | wxRIGHT | wxTOP, margin);
    if (after)
        panel->MoveAfterInTabOrder(after);
    else if (wxWindow* first = panel->GetParent()->GetChildren().GetFirst()->GetData(); first != panel)
        panel->MoveBeforeInTabOrder(first);
}

void demo_dialog_t::finish_layout()
{
    const wx_helpers1::ui_settings_t* settings = wx_helpers1::ui_settings_t::get();
    if (auto* dark = commondlg3::from_xrc<wxCheckBox>(this, "m_dark")) {
        dark->SetValue(settings && settings->is_dark());
        dark->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) { switch_theme(event.IsChecked()); });
    }
    fit_to_contents();
    fit_to_contents(); // the panel knows its height once it has been given its width
    keep_on_screen(FindWindow(XRCID("m_area")));
    centre_on_parent();
}

void demo_dialog_t::switch_theme(bool dark)
{
    if (wx_helpers1::ui_settings_t* settings = wx_helpers1::ui_settings_t::get())
        settings->set_theme(dark ? wx_helpers1::theme_t::dark : wx_helpers1::theme_t::light);
}

int demo_dialog_t::run(wxWindow* parent)
{
    return window_run_t::run(m_object, parent, {own_layout(get_resource_object())},
                             [this](window_run_t& run) {
                                 run.show(*this);
                                 run.set_data(get_state());
                             });
}

} // namespace gallery
