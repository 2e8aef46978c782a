#pragma once

#include "commondlg3/generic_base.h"

#include <string>

namespace commondlg3 {

/// The base of preference pages and of other panels that live inside a host's window.
///
///     auto* page = new my_page_t(data);              // the host's window owns it once it is created
///     page->get_end_signal().connect(this, &host_t::on_page_ended);
///     page->create(parent);
///     sizer->Add(page, 1, wxEXPAND);
///
/// The host's OK and Cancel reach the page as on_ok() and on_cancel(); the page's own buttons, where it has
/// any, do the same. Ending hides the page and raises the end signal: the host decides what ending means. GUI
/// thread.
///
/// When the layout cannot be loaded the page is there, empty: its controls are null, and so every override
/// must expect. A later create() tries again and, once it succeeds, runs the first-time steps on the real
/// layout.
class COMMONDLG3_EXPORT pref_base_t : public generic_base_t<wxPanel>
{
public:
    pref_base_t();
    ~pref_base_t() override;

    /// Loads the layout below `parent`, shows the page and runs its init-dialog steps.
    void create(wxWindow* parent);

    bool load_from_xml_resource(wxWindow* parent, const std::string& resource_file,
                                const std::string& catalog_name, const std::string& object_name) override;
    void end_dialog(int code) override;

    /// Never squeezes what is in the page: hosts try sizes while they lay themselves out, and what does not
    /// fit hangs over the edges until the host makes room. @since 3.1
    bool Layout() override;

private:
    wxDECLARE_EVENT_TABLE();
};

/// A plain panel with no behaviour of its own, for panels in resources that need a named class.
class COMMONDLG3_EXPORT panel_t : public wxPanel
{
public:
    using wxPanel::wxPanel;

private:
    wxDECLARE_DYNAMIC_CLASS(panel_t);
};

} // namespace commondlg3
