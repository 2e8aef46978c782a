#pragma once

#include <commondlg3/dialog_base.h>
#include <commondlg3/pref_base.h>

#include <string>

namespace gallery {

/// A dialog with OK and Cancel around one page that has no buttons of its own.
class page_frame_t : public commondlg3::dialog_base_t
{
public:
    /// Takes the page over: the dialog destroys it as its child.
    page_frame_t(commondlg3::pref_base_t* page, const std::string& title);

    void on_init_dialog() override;
    void handle_ok(wxCommandEvent& event) override;
    void on_cancel() override;

private:
    void fit();
    void on_idle(wxIdleEvent& event);

    commondlg3::pref_base_t* m_page;
    std::string m_title;
};

} // namespace gallery
