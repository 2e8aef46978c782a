#include "editor_details.h"

#include "commondlg3/resources.h"
#include "commondlg3/text_utils.h"
#include "panels/field_message.h"
#include "paths/shown_path.h"
#include "rename_editor_dlg.h"

#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/enabling.h>
#include <wx_helpers1/entry_details.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/static_picture_ctrl.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/button.h>
#include <wx/listbox.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/weakref.h>

#include <algorithm>
#include <utility>

namespace commondlg3 {
namespace {

constexpr int details_gap = 6;
using look_state_t = editor_look_t::state_t;

template <class Window>
Window* dressed(Window* window)
{
    if (const auto* settings = wx_helpers1::ui_settings_t::get())
        wx_helpers1::apply_font(window, settings->get_font(wx_helpers1::ui_font::text));
    return window;
}

// Beside the entry of an editor: what it is, and whether it can be used.
std::string state_text(bool is_default, look_state_t state)
{
    std::string text = is_default ? translate_message("pref.editor.state_default") : std::string();
    std::string trouble;
    if (state == look_state_t::not_found || state == look_state_t::no_command)
        trouble = translate_message("pref.editor.state_missing");
    else if (state == look_state_t::no_answer)
        trouble = translate_message("pref.editor.state_no_answer");
    if (!text.empty() && !trouble.empty())
        text += " ";
    return text + trouble;
}

} // namespace

editor_details_t::editor_details_t(editor_pp_t& page)
    : m_page(page), m_trial([this](caption_panel_t::severity_t severity, const std::string& text) {
          show_trial(severity, text);
      })
{
    if (has(editor_pp_t::show_details)) {
        m_command = dressed(new wxStaticText(&page, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                                             wxST_NO_AUTORESIZE));
        insert_below_list(nullptr, m_command, false);
    }
    if (has(editor_pp_t::show_actions)) {
        m_try = make_button("m_try", "pref.editor.try");
        m_try->Bind(wxEVT_BUTTON, &editor_pp_t::on_try, &page);
    }
}

editor_details_t::~editor_details_t() = default;

bool editor_details_t::has(editor_pp_t::flags_t flag) const
{
    return (m_page.m_flags & flag) != 0;
}

wxButton* editor_details_t::make_button(const char* name, const std::string& label)
{
    auto* button = dressed(new wxButton(&m_page, wxID_ANY, wx_helpers1::to_wx(translate_message(label)),
                                        wxDefaultPosition, wxDefaultSize, 0, wxDefaultValidator, name));
    wxSizer* row = m_page.m_default->GetContainingSizer();
    row->Add(button, 0, wxRIGHT | wxBOTTOM, details_gap);
    wxWindow* last = m_page.m_default;
    for (wxWindow* before : {m_try, m_rename, m_remove})
        if (before)
            last = before;
    button->MoveAfterInTabOrder(last);
    return button;
}

void editor_details_t::insert_below_list(wxSizer* sizer, wxWindow* window, bool behind_buttons)
{
    wxSizer* outer = m_page.m_editor_list->GetContainingSizer();
    const wxSizer* row = m_page.m_default->GetContainingSizer();
    std::size_t place = 0;
    for (const wxSizerItem* item : outer->GetChildren()) {
        if (item->GetSizer() == row)
            break;
        ++place;
    }
    if (behind_buttons)
        ++place;
    if (sizer)
        outer->Insert(place, sizer, 0, wxEXPAND | wxBOTTOM, details_gap);
    else
        outer->Insert(place, window, 0, wxEXPAND | wxBOTTOM, details_gap);
}

void editor_details_t::make_buttons_of_custom()
{
    if (m_rename)
        return;
    m_rename = make_button("m_rename", "pref.editor.rename");
    m_rename->Bind(wxEVT_BUTTON, &editor_pp_t::on_rename, &m_page);
    m_remove = make_button("m_remove", "pref.editor.remove");
    m_remove->Bind(wxEVT_BUTTON, &editor_pp_t::on_remove, &m_page);
}

bool editor_details_t::can_be_renamed() const
{
    return has(editor_pp_t::show_actions) &&
           m_page.m_data.get_editor_type(m_page.m_data.get_selected_language(),
                                         m_page.get_selected_editor_name()) ==
               editor_data_t::editor_type_custom;
}

void editor_details_t::show_list()
{
    const auto language = m_page.m_data.get_selected_language();
    const std::string default_name = m_page.m_data.get_default_editor_name(language);
    std::vector<wx_helpers1::entry_detail_t> details;
    bool has_custom = false;
    for (const auto& editor : m_page.m_data.get_editors(language)) {
        has_custom = has_custom || m_page.m_data.get_editor_type(language, editor.name) ==
                                       editor_data_t::editor_type_custom;
        if (!has(editor_pp_t::show_details))
            continue;
        const editor_look_t look = m_page.m_looks->get(editor);
        const std::string& program = look.program.empty() ? editor.executable : look.program;
        details.push_back(
            {look.icon, state_text(editor.name == default_name, look.state), as_shown(program)});
    }
    if (has(editor_pp_t::show_details))
        wx_helpers1::set_entry_details(m_page.m_editor_list, std::move(details));
    if (has_custom && has(editor_pp_t::show_actions))
        make_buttons_of_custom();
}

void editor_details_t::show_selected()
{
    const auto language = m_page.m_data.get_selected_language();
    const std::string name = m_page.get_selected_editor_name();
    const auto look = m_page.m_looks->get(m_page.m_data.get_editor(language, name));
    std::string text;
    if (!look.command.empty())
        text = translate_message("pref.editor.command", {{"command", as_shown(look.command)}}) + "\n" +
               translate_message("pref.editor.placeholders", {{"line", line_word}, {"file", file_word}});
    if (m_command)
        wx_helpers1::set_label_text(m_command, text);
    if (m_try) {
        wx_helpers1::set_enabled(m_try, !name.empty(), m_page.m_editor_list);
        wx_helpers1::set_accessible_description(m_try, text);
    }
    if (m_tried && name != m_tried_name) {
        m_trial.forget();
        m_tried->say(caption_panel_t::severity_t::information, std::string());
    }
    if (m_rename)
        wx_helpers1::set_enabled({{m_rename, can_be_renamed()}, {m_remove, can_be_renamed()}},
                                 m_page.m_editor_list);
}

std::vector<wxStaticText*> editor_details_t::get_labels() const
{
    return {m_command, m_tried ? m_tried->get_label() : nullptr};
}

void editor_details_t::try_editor()
{
    const auto language = m_page.m_data.get_selected_language();
    if (const std::string name = m_page.get_selected_editor_name(); !name.empty())
        m_trial.start(m_page.m_data.get_editor(language, m_tried_name = name), language);
}

void editor_details_t::show_trial(caption_panel_t::severity_t severity, const std::string& text)
{
    if (!m_tried) {
        auto* icon = new wx_helpers1::static_picture_ctrl_t(&m_page, wxID_ANY);
        auto* label = dressed(new wxStaticText(&m_page, wxID_ANY, wxEmptyString, wxDefaultPosition,
                                               wxDefaultSize, wxST_NO_AUTORESIZE));
        auto* sizer = new wxBoxSizer(wxHORIZONTAL);
        sizer->Add(icon, 0, wxRIGHT, details_gap);
        sizer->Add(label, 1, wxEXPAND);
        insert_below_list(sizer, nullptr, true);
        m_tried = std::make_unique<field_message_t>(icon, label, m_try);
    }
    if (m_tried->say(severity, text))
        m_page.rewrap();
}

// What the page's buttons do.

void editor_pp_t::on_try(wxCommandEvent& event)
{
    event.Skip();
    if (m_details)
        m_details->try_editor();
}

void editor_pp_t::on_rename(wxCommandEvent& event)
{
    event.Skip();
    const language_t language = m_data.get_selected_language();
    const std::string name = get_selected_editor_name();
    if (!m_details || !m_details->can_be_renamed())
        return;
    system_editor_t editor = m_data.get_editor(language, name);
    const wxWeakRef<wxWindow> alive(this); // the host may go while the dialog is shown
    rename_editor_dlg_t dialog(editor.display_name);
    const bool chosen = dialog.show_modal(this) == wxID_OK;
    if (!alive || !chosen || get_selected_editor_name() != name)
        return;
    editor.display_name = dialog.get_name();
    m_data.set_editor(language, name, editor);
    m_editor_list->SetString(static_cast<unsigned>(m_editor_list->GetSelection()),
                             get_entry_text(language, editor));
    update_details();
    m_editor_list->SetFocus();
}

void editor_pp_t::on_remove(wxCommandEvent& event)
{
    event.Skip();
    const language_t language = m_data.get_selected_language();
    const std::string name = get_selected_editor_name();
    if (!m_details || !m_details->can_be_renamed())
        return;
    const std::string shown = m_data.get_editor(language, name).display_name;
    m_data.remove_editor(language, name);
    if (m_data.get_default_editor_name(language) == name)
        m_data.set_default_editor_name(language, std::string());
    m_data.set_selected_editor_name(language, std::string());
    const int index = m_editor_list->GetSelection();
    m_names.erase(m_names.begin() + index);
    m_editor_list->Delete(static_cast<unsigned>(index));
    if (m_names.empty()) {
        update_state_for_language(language);
    } else {
        select_entry_of(language, m_names[std::min(static_cast<std::size_t>(index), m_names.size() - 1)]);
        use_selected_editor(language);
        update_details();
    }
    m_editor_list->SetFocus();
    wx_helpers1::announce(m_editor_list, translate_message("pref.editor.removed", {{"editor", shown}}));
}

} // namespace commondlg3
