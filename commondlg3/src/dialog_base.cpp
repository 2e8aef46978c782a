#include "commondlg3/dialog_base.h"

#include <wx_helpers1/resource_loader.h>
#include <wx_helpers1/text.h>

#include <wx/xrc/xmlres.h>

#include <algorithm>

namespace commondlg3 {

wxBEGIN_EVENT_TABLE(dialog_base_t, dummy) EVT_INIT_DIALOG(generic_base_t<dummy>::handle_init_dialog_event)
    EVT_CLOSE(dialog_base_t::handle_close) EVT_BUTTON(XRCID("m_btn_ok"), dialog_base_t::handle_ok)
        EVT_BUTTON(XRCID("m_btn_cancel"), generic_base_t<dummy>::handle_cancel)
            EVT_BUTTON(XRCID("m_btn_help"), generic_base_t<dummy>::handle_help)
                EVT_HELP(wxID_ANY, dialog_base_t::handle_dialog_help)
                    EVT_TIMER(wxID_ANY, dialog_base_t::handle_timer_event) wxEND_EVENT_TABLE()

                        dialog_base_t::dialog_base_t() = default;
dialog_base_t::~dialog_base_t() = default;

bool dialog_base_t::load_from_xml_resource(wxWindow* parent, const std::string& resource_file,
                                           const std::string& catalog_name, const std::string& object_name)
{
    const wx_helpers1::resource_loader_t loader(resource_file, catalog_name);
    SetEscapeId(XRCID("m_btn_cancel"));
    return loader.load_dialog(this, parent, object_name);
}

bool dialog_base_t::load(wxWindow* parent)
{
    if (!m_loaded)
        m_loaded = load_from_xml_resource(parent, m_resource_file, m_catalog_name, m_resource_object);
    return m_loaded;
}

int dialog_base_t::show_modal(wxWindow* parent)
{
    return load(parent) ? ShowModal() : 0;
}

bool dialog_base_t::show_nonmodal(wxWindow* parent, bool show)
{
    return load(parent) && Show(show);
}

void dialog_base_t::end_dialog(int code)
{
    if (IsModal()) {
        EndModal(code);
        return;
    }
    m_return_code = code;
    SetReturnCode(code);
    if (m_loaded)
        Show(false);
}

void dialog_base_t::on_help()
{
    const std::string topic = m_help_topic; // a slot may set another
    if (!topic.empty())
        m_help_signal.emit(topic);
}

void dialog_base_t::handle_ok(wxCommandEvent&)
{
    m_return_code = wxID_OK;
    on_ok();
    end_dialog(m_return_code);
}

void dialog_base_t::handle_close(wxCloseEvent&)
{
    m_return_code = wxID_CANCEL;
    on_cancel();
    end_dialog(m_return_code);
}

void dialog_base_t::handle_dialog_help(wxHelpEvent&)
{
    on_help();
}

void dialog_base_t::help_activated()
{
    on_help();
}

void dialog_base_t::set_title(const std::string& title)
{
    SetTitle(wx_helpers1::to_wx_locale(title));
}

std::string dialog_base_t::get_title() const
{
    return wx_helpers1::from_wx_locale(GetTitle());
}

wxSize dialog_base_t::get_proportional_size(float fx, float fy, const wxSize& min) const
{
    const wxWindow* parent = GetParent();
    if (!parent)
        return min;
    const wxSize size = parent->GetSize();
    const auto part = [](float fraction, int of, int least) {
        // A fraction that no pixel count can hold, or that is no number, is none.
        const double wanted = static_cast<double>(fraction) * of;
        const int pixels = wanted > -2e9 && wanted < 2e9 ? static_cast<int>(wanted) : 0;
        return std::max({pixels, least, 0});
    };
    return wxSize(part(fx, size.x, min.x), part(fy, size.y, min.y));
}

} // namespace commondlg3
