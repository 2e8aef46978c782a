#include "commondlg3/opt_in_pp.h"

#include "base/wrapped_labels.h"
#include "commondlg3/resources.h"
#include "commondlg3/text_utils.h"

#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/radiobut.h>
#include <wx/sizer.h>

namespace commondlg3 {

opt_in_pp_t::opt_in_pp_t(user_consent_t stored) : consent(stored)
{
    set_resource_object("pref.optin");
}

opt_in_pp_t::~opt_in_pp_t() = default;

bool opt_in_pp_t::has_controls() const
{
    return m_agree && m_refuse && m_question && m_explanation && m_record_label && m_record_text;
}

void opt_in_pp_t::on_init_dialog()
{
    m_agree = from_xrc<wxRadioButton>(this, "m_radioBtn5");
    m_refuse = from_xrc<wxRadioButton>(this, "m_radioBtn6");
    m_question = from_xrc<wxStaticText>(this, "m_question");
    m_explanation = from_xrc<wxStaticText>(this, "m_explanation");
    m_record_label = from_xrc<wxStaticText>(this, "m_record_label");
    m_record_text = from_xrc<wxTextCtrl>(this, "m_record");
    if (!has_controls())
        return;
    // One of a group is always selected: while the user has not decided, it is one that nobody sees.
    m_neither = new wxRadioButton(this, wxID_ANY, "None of the above");
    m_neither->Hide();
    start_again(consent);
    set_bold_font(m_question);
    // Not as a value of its own: the field's limit on what is typed must not cut what is shown.
    m_record_text->ChangeValue(wx_helpers1::to_label(m_record));
    m_record_text->SetInsertionPoint(0);
    m_record_label->Show(!m_record.empty());
    m_record_text->Show(!m_record.empty());
    wx_helpers1::set_label_for(m_record_label, m_record_text);
    for (wxRadioButton* answer : {m_agree, m_refuse})
        wx_helpers1::set_accessible_description(answer, wx_helpers1::from_wx(m_question->GetLabelText()));
    if (m_keeper)
        make_written();
    Bind(wxEVT_SIZE, &opt_in_pp_t::on_size, this);
    Fit();
}

void opt_in_pp_t::set_conset(bool agree)
{
    if (!m_agree || !m_refuse)
        return;
    // The toolkit knows only selecting; that the other is cleared follows.
    m_agree->SetValue(agree);
    m_refuse->SetValue(!agree);
}

void opt_in_pp_t::start_again(user_consent_t stored)
{
    consent = stored;
    if (consent != user_consent_t::not_decided)
        set_conset(consent == user_consent_t::given);
    else if (m_neither)
        m_neither->SetValue(true);
    if (m_written_label) // another record may be there by now
        ask_keeper();
}

opt_in_pp_t::user_consent_t opt_in_pp_t::get_selected() const
{
    if (m_agree && m_agree->GetValue())
        return user_consent_t::given;
    if (m_refuse && m_refuse->GetValue())
        return user_consent_t::refused;
    return consent;
}

bool opt_in_pp_t::is_changed() const
{
    return get_selected() != consent;
}

bool opt_in_pp_t::save_settings()
{
    consent = get_selected();
    return true;
}

void opt_in_pp_t::on_update_ui_settings()
{
    pref_base_t::on_update_ui_settings();
    rewrap();
}

void opt_in_pp_t::on_size(wxSizeEvent&)
{
    rewrap();
}

void opt_in_pp_t::rewrap()
{
    if (has_controls())
        rewrap_page(*this, {m_question, m_explanation, m_written_label});
}

} // namespace commondlg3
