#include "commondlg3/clipboard_dlg.h"

#include "commondlg3/resources.h"

#include <wx_helpers1/clipboard.h>
#include <wx_helpers1/text.h>

#include <wx/checkbox.h>
#include <wx/textctrl.h>

namespace commondlg3 {

clipboard_dlg_t::clipboard_dlg_t()
{
    set_resource_object("dlg.clipboard");
}

clipboard_dlg_t::~clipboard_dlg_t() = default;

void clipboard_dlg_t::on_init_dialog()
{
    m_text = from_xrc<wxTextCtrl>(this, "m_textCtrl13");
    m_wrap = from_xrc<wxCheckBox>(this, "m_checkBox14");
    Bind(wxEVT_SIZE, &clipboard_dlg_t::on_resize, this);
    if (!m_text || !m_wrap)
        return;
    m_wrap->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) {
        event.Skip();
        const long other = m_text->GetWindowStyleFlag() & ~(wxTE_WORDWRAP | wxTE_DONTWRAP);
        m_text->SetWindowStyleFlag(other | (m_wrap->GetValue() ? wxTE_WORDWRAP : wxTE_DONTWRAP));
    });
    fill_controls();
    fit_to_contents();
    centre_on_parent();
    m_text->SetFocus();
}

void clipboard_dlg_t::fill_controls()
{
    if (m_text)
        m_text->ChangeValue("Sample text");
}

void clipboard_dlg_t::on_ok()
{
    dialog_base_t::on_ok();
    if (m_text)
        wx_helpers1::copy_to_clipboard(wx_helpers1::from_wx(m_text->GetValue()));
}

void clipboard_dlg_t::on_resize(wxSizeEvent& event)
{
    event.Skip();
    Layout();
}

} // namespace commondlg3
