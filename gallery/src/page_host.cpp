#include "page_host.h"

#include "missing_resource.h"

#include <wx/sizer.h>

namespace gallery {

page_host_t::page_host_t(commondlg3::pref_base_t* page) : m_page(page)
{
    set_resource_file(resource_file());
    m_catalog_name = "gallery";
    set_resource_object("dlg.page_host");
}

void page_host_t::on_init_dialog()
{
    m_page->get_end_signal().connect(
        this, [this](commondlg3::generic_base_t<wxPanel>*, int code) { end_dialog(code); });
    m_page->create(this);
    need_sizer()->Add(m_page, 1, wxEXPAND);
    fit_to_contents();
    centre_on_parent();
}

void page_host_t::on_cancel()
{
    m_page->on_cancel();
}

} // namespace gallery
