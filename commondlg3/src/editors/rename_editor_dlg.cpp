#include "rename_editor_dlg.h"

#include "commondlg3/resources.h"

#include <gen_helpers2/strings.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/enabling.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <utility>

namespace commondlg3 {

rename_editor_dlg_t::rename_editor_dlg_t(std::string name) : m_name(std::move(name))
{
    set_resource_object("dlg.rename_editor");
}

rename_editor_dlg_t::~rename_editor_dlg_t() = default;

void rename_editor_dlg_t::on_init_dialog()
{
    m_field = from_xrc<wxTextCtrl>(this, "m_name");
    if (!m_field)
        return;
    wx_helpers1::set_label_for(from_xrc<wxStaticText>(this, "m_name_label"), m_field);
    m_field->ChangeValue(wx_helpers1::to_wx(m_name));
    m_field->Bind(wxEVT_TEXT, [this](wxCommandEvent& event) {
        event.Skip();
        allow_ok();
    });
    allow_ok();
    fit_to_contents();
    centre_on_parent();
    m_field->SetFocus();
    m_field->SelectAll();
}

void rename_editor_dlg_t::allow_ok()
{
    if (m_btn_ok)
        wx_helpers1::set_enabled(
            m_btn_ok, !gen_helpers2::trim(wx_helpers1::from_wx(m_field->GetValue())).empty(), m_field);
}

void rename_editor_dlg_t::on_ok()
{
    if (m_field)
        m_name = gen_helpers2::trim(wx_helpers1::from_wx(m_field->GetValue()));
    dialog_base_t::on_ok();
}

} // namespace commondlg3
