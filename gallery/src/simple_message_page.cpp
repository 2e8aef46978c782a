#include "simple_message_page.h"

#include "json_report.h"
#include "missing_resource.h"

#include <commondlg3/resources.h>
#include <wx_helpers1/text.h>

#include <wx/checkbox.h>
#include <wx/choice.h>

#include <algorithm>
#include <string>

namespace gallery {

using commondlg3::from_xrc;
using severity_t = commondlg3::simple_message_panel_t::severity_t;

simple_message_page_t::simple_message_page_t(const nlohmann::json& data)
    : demo_dialog_t(object_name), m_data(data)
{
    set_resource_object("dlg.simple_message_demo");
}

void simple_message_page_t::on_init_dialog()
{
    m_severity = from_xrc<wxChoice>(this, "m_severity");
    m_text = from_xrc<wxTextCtrl>(this, "m_text");
    m_shown = from_xrc<wxCheckBox>(this, "m_shown");
    if (!m_severity || !m_text || !m_shown)
        return;
    m_strip = new commondlg3::simple_message_panel_t(get_area());
    constexpr int below_the_text = 1;
    insert_panel(m_strip, below_the_text, 18);
    m_severity->SetSelection(std::clamp(get_int(m_data, "severity", 2), 0, 3));
    m_text->ChangeValue(wx_helpers1::to_wx(get_string(m_data, "text", text("sample.supplemental.warning"))));
    m_shown->SetValue(get_bool(m_data, "shown", true));
    m_severity->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { update(); });
    m_text->Bind(wxEVT_TEXT, [this](wxCommandEvent& event) {
        event.Skip();
        update();
    });
    m_shown->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent&) {
        update();
        report_signal(object_name, "shown", m_strip->IsShown());
    });
    update();
    m_severity->SetFocus();
    finish_layout();
}

void simple_message_page_t::update()
{
    m_strip->enable(m_shown->GetValue());
    m_strip->set_message(static_cast<severity_t>(m_severity->GetSelection()),
                         wx_helpers1::from_wx(m_text->GetValue()));
    Layout();
}

nlohmann::json simple_message_page_t::get_state() const
{
    return {{"severity", m_severity ? m_severity->GetSelection() : -1},
            {"text", m_text ? wx_helpers1::from_wx(m_text->GetValue()) : std::string()},
            {"shown", m_shown && m_shown->GetValue()}};
}

int open_simple_message_page(const nlohmann::json& data, wxWindow* parent)
{
    simple_message_page_t page(data);
    return page.run(parent);
}

} // namespace gallery
