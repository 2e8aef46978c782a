#include "search_bar.h"

#include "commondlg3/image_loader.h"
#include "commondlg3/text_utils.h"

#include <msngr2/messenger.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/tooltip.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/bmpbuttn.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>

namespace commondlg3 {
namespace {

using wx_helpers1::to_label;
using search_t = vdxcfrw7::CEventLog::search_t;

// In the order of the choice.
constexpr int severities[] = {
    0,
    msngr2::sev_warning | msngr2::sev_error | msngr2::sev_critical,
    msngr2::sev_error | msngr2::sev_critical,
};

wxButton* make_button(search_bar_t* parent, image_loader_t::image_type_t image, const std::string& name)
{
    const wx_helpers1::wxStaticPicture picture = image_loader_t::get().load_image(image);
    auto* button = new wxBitmapButton(parent, wxID_ANY, picture.get_bundle(), wxDefaultPosition,
                                      wxDefaultSize, wxBORDER_NONE);
    if (auto* settings = wx_helpers1::ui_settings_t::get())
        settings->changed().connect(parent, [button, picture] { button->SetBitmap(picture.get_bundle()); });
    wx_helpers1::SetTooltip(button, name);
    wx_helpers1::set_accessible_name(button, name);
    return button;
}

} // namespace

search_bar_t::search_bar_t(wxWindow* parent, vdxcfrw7::CEventLog& log) : wxPanel(parent), m_log(log)
{
    using image = image_loader_t::image_type_t;
    const std::string hint = translate_message("inplace_ctrl.find_hint");
    m_text = new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, wxTE_PROCESS_ENTER);
    m_text->SetHint(to_label(hint));
    m_text->SetMaxLength(1000);
    wx_helpers1::set_accessible_name(m_text, hint);
    auto* previous = make_button(this, image::up, translate_message("inplace_ctrl.find_previous"));
    auto* next = make_button(this, image::down, translate_message("inplace_ctrl.find_next"));
    m_only_matching =
        new wxCheckBox(this, wxID_ANY, to_label(translate_message("inplace_ctrl.only_matching")));
    wxArrayString choices;
    choices.Add(to_label(translate_message("inplace_ctrl.filter_all")));
    choices.Add(to_label(translate_message("inplace_ctrl.filter_warnings")));
    choices.Add(to_label(translate_message("inplace_ctrl.filter_errors")));
    m_severity = new wxChoice(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, choices);
    m_severity->SetSelection(0);
    wx_helpers1::set_accessible_name(m_severity, translate_message("inplace_ctrl.filter"));
    m_answer = new wxStaticText(this, wxID_ANY, wxString());
    wx_helpers1::keep_label_relations(m_answer);
    auto* close_button = make_button(this, image::cross, translate_message("inplace_ctrl.find_close"));

    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(m_text, 1, wxALIGN_CENTRE_VERTICAL);
    row->Add(previous, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, 4);
    row->Add(next, 0, wxALIGN_CENTRE_VERTICAL);
    row->Add(m_severity, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, 8);
    row->Add(close_button, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, 4);
    auto* below = new wxBoxSizer(wxHORIZONTAL);
    below->Add(m_only_matching, 0, wxALIGN_CENTRE_VERTICAL);
    below->AddStretchSpacer();
    below->Add(m_answer, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, 8);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(row, 0, wxEXPAND);
    sizer->Add(below, 0, wxEXPAND | wxTOP, 2);
    SetSizer(sizer);

    m_text->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { filter(); });
    m_text->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { find(true); });
    previous->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { find(false); });
    next->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { find(true); });
    close_button->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { close(); });
    m_severity->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { filter(); });
    m_only_matching->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent&) { filter(); });
    Bind(wxEVT_CHAR_HOOK, &search_bar_t::on_key, this);
    m_log.hidden_changed().connect(this, &search_bar_t::tell_hidden);
}

std::string search_bar_t::get_text() const
{
    return wx_helpers1::from_wx(m_text->GetValue());
}

void search_bar_t::search(search_t what)
{
    switch (what) {
    case search_t::open:
        open();
        break;
    case search_t::close:
        close();
        break;
    case search_t::next:
    case search_t::previous:
        if (get_text().empty())
            open();
        else
            find(what == search_t::next);
        break;
    }
}

void search_bar_t::open()
{
    Show();
    GetParent()->Layout();
    filter();
    m_text->SetFocus();
    m_text->SelectAll();
}

void search_bar_t::close()
{
    Hide();
    GetParent()->Layout();
    m_log.SetFilter(0, std::string());
    if (wxWindow* window = m_log.GetWindow())
        window->SetFocus();
}

void search_bar_t::find(bool forward)
{
    const std::string text = get_text();
    if (text.empty())
        return;
    if (m_log.Find(text, forward))
        tell_hidden();
    else {
        m_answer->SetLabelText(to_label(translate_message("inplace_ctrl.not_found")));
        Layout();
    }
}

void search_bar_t::filter()
{
    m_log.SetFilter(severities[std::max(0, m_severity->GetSelection())],
                    m_only_matching->GetValue() ? get_text() : std::string());
    tell_hidden();
}

void search_bar_t::tell_hidden()
{
    const std::size_t hidden = m_log.GetHiddenCount();
    const wxString text =
        hidden ? to_label(translate_message("inplace_ctrl.hidden_lines", {{"count", hidden}})) : wxString();
    if (text == m_answer->GetLabelText())
        return;
    m_answer->SetLabelText(text);
    Layout();
}

void search_bar_t::on_key(wxKeyEvent& event)
{
    const int key = event.GetKeyCode();
    if (key == WXK_ESCAPE)
        close();
    else if (key == WXK_F3)
        find(!event.ShiftDown());
    else if (event.ControlDown() && key == 'F')
        open();
    else if (key == WXK_RETURN && event.ShiftDown() && FindFocus() == m_text)
        find(false);
    else
        event.Skip();
}

} // namespace commondlg3
