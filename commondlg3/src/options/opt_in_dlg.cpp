#include "commondlg3/opt_in_dlg.h"

#include "commondlg3/resources.h"

#include <wx_helpers1/enabling.h>

#include <wx/button.h>
#include <wx/sizer.h>

namespace commondlg3 {
namespace {

constexpr int comfortable_width = 520;

} // namespace

opt_in_dlg_t::opt_in_dlg_t(opt_in_pp_t::user_consent_t consent) : m_consent(consent)
{
    set_resource_object("dlg.optin");
}

opt_in_dlg_t::~opt_in_dlg_t() = default;

void opt_in_dlg_t::on_init_dialog()
{
    auto* place = from_xrc<wxPanel>(this, "m_panel");
    if (!place)
        return;
    m_page = new opt_in_pp_t(m_consent);
    m_page->set_record(m_record);
    m_page->create(place);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_page, 1, wxEXPAND);
    place->SetSizer(sizer);
    allow_ok();
    Bind(wxEVT_RADIOBUTTON, &opt_in_dlg_t::on_input, this);
    fit_to_contents(comfortable_width);
    keep_on_screen(place);
    centre_on_parent();
}

void opt_in_dlg_t::on_input(wxCommandEvent& event)
{
    event.Skip();
    if (!m_page)
        return;
    m_page->save_settings();
    allow_ok();
}

void opt_in_dlg_t::allow_ok()
{
    if (m_btn_ok)
        wx_helpers1::set_enabled(m_btn_ok, m_page->consent != opt_in_pp_t::user_consent_t::not_decided,
                                 m_btn_cancel);
}

void opt_in_dlg_t::on_ok()
{
    dialog_base_t::on_ok();
    if (m_page)
        m_consent = m_page->consent;
    const auto signal = m_answer_signal; // a slot may destroy this window
    signal.emit(m_consent == opt_in_pp_t::user_consent_t::given);
}

void opt_in_dlg_t::on_cancel()
{
    dialog_base_t::on_cancel();
    if (!m_page)
        return;
    m_page->start_again(m_consent);
    allow_ok();
}

} // namespace commondlg3
