#include "leave_dlg.h"

#include "base/wrapped_labels.h"
#include "commondlg3/resources.h"

#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/button.h>
#include <wx/stattext.h>

#include <utility>

namespace commondlg3 {
namespace {

constexpr int id_discard = wxID_NO;
constexpr int comfortable_leave_width = 420;

} // namespace

leave_dlg_t::leave_dlg_t(std::string pages) : m_pages(std::move(pages))
{
    set_resource_object("dlg.leave_preferences");
}

leave_dlg_t::answer_t leave_dlg_t::ask(wxWindow* parent)
{
    switch (show_modal(parent)) {
    case wxID_OK:
        return answer_t::save;
    case id_discard:
        return answer_t::discard;
    default:
        return answer_t::stay;
    }
}

void leave_dlg_t::on_init_dialog()
{
    m_question = from_xrc<wxStaticText>(this, "m_question");
    m_list = from_xrc<wxStaticText>(this, "m_changed_pages");
    auto* discard = from_xrc<wxButton>(this, "m_btn_discard");
    if (!m_question || !m_list || !discard)
        return;
    wx_helpers1::set_label_text(m_list, m_pages);
    discard->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { end_dialog(id_discard); });
    if (const auto* settings = wx_helpers1::ui_settings_t::get())
        wx_helpers1::apply_font(m_question, settings->get_font(wx_helpers1::ui_font::bold));
    wx_helpers1::set_accessible_description(this, wx_helpers1::from_wx(m_question->GetLabelText()) + "\n" +
                                                      m_pages);
    wx_helpers1::set_accessible_role(this, wx_helpers1::accessible_role_t::alert);
    fit_again();
    centre_on_parent();
    m_btn_ok->SetFocus();
}

void leave_dlg_t::fit_again()
{
    fit_to_contents(comfortable_leave_width);
    if (m_question && fit_wrapped_labels(*this, {m_question, m_list}))
        fit_to_contents(comfortable_leave_width);
}

} // namespace commondlg3
