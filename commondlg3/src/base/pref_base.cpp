#include "commondlg3/pref_base.h"

#include "wrapped_labels.h"

#include <wx_helpers1/resource_loader.h>

#include <wx/xrc/xmlres.h>

namespace commondlg3 {

// clang-format off
wxBEGIN_EVENT_TABLE(pref_base_t, wxPanel)
    EVT_INIT_DIALOG(generic_base_t<wxPanel>::handle_init_dialog_event)
    EVT_CLOSE(generic_base_t<wxPanel>::handle_close)
    EVT_BUTTON(XRCID("m_btn_ok"), pref_base_t::handle_ok)
    EVT_BUTTON(XRCID("m_btn_cancel"), generic_base_t<wxPanel>::handle_cancel)
    EVT_BUTTON(XRCID("m_btn_help"), generic_base_t<wxPanel>::handle_help)
    EVT_TIMER(wxID_ANY, pref_base_t::handle_timer_event)
wxEND_EVENT_TABLE()
    // clang-format on

    wxIMPLEMENT_DYNAMIC_CLASS(panel_t, wxPanel);

pref_base_t::pref_base_t() = default;
pref_base_t::~pref_base_t() = default;

bool pref_base_t::load_from_xml_resource(wxWindow* parent, const std::string& resource_file,
                                         const std::string& catalog_name, const std::string& object_name)
{
    return wx_helpers1::resource_loader_t(resource_file, catalog_name).load_panel(this, parent, object_name);
}

void pref_base_t::create(wxWindow* parent)
{
    if (!m_loaded) {
        m_loaded = load_from_xml_resource(parent, m_resource_file, m_catalog_name, m_resource_object);
        // The first-time steps of an earlier, failed creation ran on an empty page: they are due on the real
        // one.
        if (m_loaded)
            m_initialized = false;
    }
    if (!GetHandle() && parent)
        Create(parent);
    if (GetHandle())
        Show(true);
    wxInitDialogEvent event(GetId());
    event.SetEventObject(this);
    handle_init_dialog_event(event);
}

void pref_base_t::end_dialog(int code)
{
    if (GetHandle())
        Show(false);
    generic_base_t<wxPanel>::end_dialog(code);
}

bool pref_base_t::Layout()
{
    lay_out_unsqueezed(*this);
    return GetSizer();
}

} // namespace commondlg3
