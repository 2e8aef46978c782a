#pragma once

#include <commondlg3/dialog_base.h>
#include <commondlg3/pref_base.h>

namespace gallery {

/// A dialog around one page: the page's own buttons end it, its close box and Escape cancel the page.
class page_host_t : public commondlg3::dialog_base_t
{
public:
    /// Takes the page over: the dialog destroys it as its child.
    explicit page_host_t(commondlg3::pref_base_t* page);

    void on_init_dialog() override;
    void on_cancel() override;

private:
    commondlg3::pref_base_t* m_page;
};

} // namespace gallery
