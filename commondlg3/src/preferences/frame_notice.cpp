#include "frame_notice.h"

#include "commondlg3/simple_message_panel.h"

#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/panel.h>
#include <wx/sizer.h>
#include <wx/wrapsizer.h>

namespace commondlg3 {
namespace {

constexpr int notice_gap = 9;
constexpr std::size_t most_actions = 2;

} // namespace

void frame_notice_t::make()
{
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    m_place->SetSize(
        m_place->GetParent()->GetClientSize()); // by it the message learns what is beside its text
    m_message = new simple_message_panel_t(m_place);
    sizer->Add(m_message, 0, wxEXPAND);
    auto* buttons = new wxWrapSizer(wxHORIZONTAL, wxREMOVE_LEADING_SPACES);
    for (std::size_t i = 0; i < most_actions; ++i) {
        auto* button = new wxButton(m_place, wxID_ANY);
        button->Bind(wxEVT_BUTTON, [this, i](wxCommandEvent&) {
            const auto chosen = m_actions[i].chosen; // it may take the notice away
            chosen();
        });
        buttons->Add(button, 0, wxTOP | wxRIGHT, notice_gap);
        m_buttons.push_back(button);
    }
    sizer->Add(buttons, 0, wxEXPAND | wxBOTTOM, notice_gap);
    m_place->SetSizer(sizer);
}

void frame_notice_t::show(const std::string& text, const std::vector<action_t>& actions)
{
    if (!m_message)
        make();
    m_actions = actions;
    for (std::size_t i = 0; i < most_actions; ++i) {
        m_buttons[i]->Show(i < actions.size());
        if (i < actions.size())
            m_buttons[i]->SetLabel(wx_helpers1::to_label(actions[i].label));
    }
    m_message->set_message(simple_message_panel_t::severity_t::warning, text);
    m_message->enable(true);
    m_place->Show();
    m_place->GetParent()->Layout();
    wx_helpers1::announce(m_place, text);
}

void frame_notice_t::hide()
{
    if (!is_shown())
        return;
    // A window of which nothing has the focus would hear no keys.
    wxWindow* const focus = wxWindow::FindFocus();
    if (focus && m_place->IsDescendant(focus))
        (m_before && m_before->IsEnabled() ? m_before.get() : m_place->GetParent())->SetFocus();
    m_place->Hide();
    m_place->GetParent()->Layout();
}

void frame_notice_t::set_focus()
{
    if (!is_shown() || m_actions.empty())
        return;
    m_before = wxWindow::FindFocus();
    m_buttons.front()->SetFocus();
}

bool frame_notice_t::is_shown() const
{
    return m_place->IsShown();
}

} // namespace commondlg3
