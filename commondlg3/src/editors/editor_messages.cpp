#include "editor_messages.h"

#include "commondlg3/editor_pp.h"
#include "commondlg3/text_utils.h"
#include "editor_looks.h"
#include "panels/field_message.h"
#include "panels/severity.h"
#include "paths/shown_path.h"

#include <gen_helpers2/assertion.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/static_picture_ctrl.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/tooltip.h>

#include <wx/listbox.h>

#include <string>

// What the page says below its list.
namespace commondlg3 {
namespace {

using wx_helpers1::from_wx;
using severity_t = caption_panel_t::severity_t;
constexpr char editor_messages_unit[] = "editor_settings";

using state_t = editor_look_t::state_t;

// Why an editor cannot be used, and what to do; empty where it can.
std::string sentence_about(const gen_helpers2::system_editor_t& editor, const editor_look_t& look)
{
    switch (look.state) {
    case state_t::not_found:
        return translate_message("pref.editor.program_not_found", {{"program", as_shown(editor.executable)}});
    case state_t::bad_quotes:
        return translate_message("editor.failed.bad_quotes", {{"editor", editor.display_name}});
    case state_t::no_terminal:
        return translate_message("editor.failed.no_terminal", {{"program", as_shown(look.program)}});
    case state_t::no_answer:
        return translate_message("pref.editor.no_answer",
                                 {{"dir", as_shown(look.place)}, {"program", as_shown(editor.executable)}});
    case state_t::unknown:
    case state_t::ready:
    case state_t::no_command: // has a line of its own
        break;
    }
    return std::string();
}

std::string sentence_about_missing_system(const editor_data_t& data, language_info::language_t language)
{
    for (const auto& editor : data.get_editors(language))
        if (data.get_editor_type(language, editor.name) == editor_data_t::editor_type_system)
            return std::string();
    switch (data.get_system_state(language)) {
    case editor_data_t::system_state_t::none:
        return translate_message("pref.editor.system_none");
    case editor_data_t::system_state_t::no_answer:
        return translate_message("pref.editor.system_no_answer",
                                 {{"dir", as_shown(data.get_silent_folder())}});
    case editor_data_t::system_state_t::not_asked:
        return translate_message("pref.editor.system_not_asked");
    case editor_data_t::system_state_t::found:
        break;
    }
    return std::string();
}

} // namespace

void editor_pp_t::fill_info_message(language_t language, const system_editor_t& editor)
{
    if (!has_controls())
        return;
    std::string hint;
    std::string info = editor_blank_line;
    if (!editor.command_line.empty())
        hint = translate_message("pref.editor.usage_hint",
                                 {{"command", as_shown(editor.command_line + " +<line> <path to file>")}});
    wx_helpers1::SetTooltip(m_editor_list, hint);
    if (editor.command_line.empty()) {
        switch (m_data.get_editor_type(language, editor.name)) {
        case editor_data_t::editor_type_system:
            info = translate_message("pref.editor.editor_not_found_system", {});
            break;
        case editor_data_t::editor_type_env_var:
            info = translate_message("pref.editor.editor_not_found_env_var", {});
            break;
        case editor_data_t::editor_type_custom:
            info = translate_message("pref.editor.editor_not_found_custom", {});
            break;
        default:
            GH2_ASSERT_TEXT(false, "false", editor_messages_unit);
        }
    }
    show_missing_program(editor);
    set_info_text(info); // what it says describes the list
}

// The user learns it here, not when a file is to be opened.
void editor_pp_t::show_missing_program(const system_editor_t& editor)
{
    const language_t language = m_data.get_selected_language();
    severity_t severity = severity_t::warning;
    std::string text;
    if (!editor.command_line.empty())
        text = sentence_about(editor, m_looks->get(editor));
    if (text.empty() && (m_flags & show_details)) {
        severity = severity_t::information;
        text = sentence_about_missing_system(m_data, language);
    }
    if (m_missing_program->say(severity, m_flags & show_info ? text : std::string()))
        rewrap();
}

void editor_pp_t::set_info_text(const std::string& text)
{
    const bool is_news = from_wx(m_info_text->GetLabelText()) != text;
    wx_helpers1::set_label_text(m_info_text, text);
    show_info_icon();
    if (!is_news)
        return;
    rewrap();
    if (text != editor_blank_line && m_editor_list->IsShownOnScreen())
        wx_helpers1::announce(m_editor_list, text);
}

// The line keeps its height when it is blank.
void editor_pp_t::show_info_icon()
{
    const std::string text = from_wx(m_info_text->GetLabelText());
    if (text != editor_blank_line)
        wx_helpers1::set_accessible_description(m_editor_list, text);
    if (!m_info_icon)
        return;
    m_info_icon->set_description(severity_name(severity_t::warning));
    m_info_icon->Show(text != editor_blank_line && (m_flags & show_info));
}

} // namespace commondlg3
