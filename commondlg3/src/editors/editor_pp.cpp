#include "commondlg3/editor_pp.h"

#include "base/wrapped_labels.h"
#include "commondlg3/choosers.h"
#include "commondlg3/resources.h"
#include "commondlg3/text_utils.h"
#include "editor_details.h"
#include "editor_looks.h"
#include "editor_messages.h"
#include "panels/field_message.h"
#include "panels/severity.h"
#include "paths/shown_path.h"

#include <gen_helpers2/assertion.h>
#include <gen_helpers2/stdpaths.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/enabling.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/static_picture_ctrl.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/tooltip.h>

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/listbox.h>
#include <wx/weakref.h>

#include <algorithm>

namespace commondlg3 {
namespace {

using severity_t = caption_panel_t::severity_t;
using wx_helpers1::from_wx;
using wx_helpers1::to_label;
using wx_helpers1::to_wx;

constexpr char editor_pp_unit[] = "editor_settings";
constexpr char blanks[] = " \n\r\t";

template <class Ctrl>
Ctrl* find_control(wxWindow* page, const char* name)
{
    auto* found = from_xrc<Ctrl>(page, name);
    GH2_ASSERT_TEXT(found, name, editor_pp_unit);
    return found;
}

// One line of a list: what would break it shows as a blank.
wxString entry_text(std::string text)
{
    std::replace_if(
        text.begin(), text.end(), [](unsigned char c) { return c < ' ' || c == 0x7F; }, ' ');
    return to_label(text);
}

} // namespace

std::string editor_pp_t::system_default_suffix;
std::string editor_pp_t::browse_editor_display_name;

editor_pp_t::editor_pp_t(const editor_data_t& data, unsigned flags)
    : m_data(data), m_unchanged(data), m_flags(flags)
{
    set_resource_object("pref.editor");
}

editor_pp_t::~editor_pp_t() = default;

bool editor_pp_t::has_controls() const
{
    return m_language_gap && m_language && m_language_text && m_editor_list && m_static_text_cmd_line &&
           m_command_line && m_default && m_info_text;
}

void editor_pp_t::load_auxiliary_strings()
{
    pref_base_t::load_auxiliary_strings();
    system_default_suffix = translate_message("pref.editor.system_default_suffix", {});
    browse_editor_display_name = translate_message("pref.editor.browse", {});
}

void editor_pp_t::on_init_dialog()
{
    m_language_gap = find_control<wxWindow>(this, "m_language_gap");
    m_language = find_control<wxChoice>(this, "m_language");
    m_language_text = find_control<wxStaticText>(this, "m_language_text");
    m_editor_list = find_control<wxListBox>(this, "m_editor_list");
    m_static_text_cmd_line = find_control<wxStaticText>(this, "m_static_text_cmd_line");
    m_command_line = find_control<wxTextCtrl>(this, "m_command_line");
    m_default = find_control<wxButton>(this, "m_default");
    m_info_text = find_control<wxStaticText>(this, "m_info_text");
    m_info_icon = from_xrc<wx_helpers1::static_picture_ctrl_t>(this, "m_info_icon");
    pref_base_t::on_init_dialog();
    if (!has_controls())
        return;
    m_missing_program = std::make_unique<field_message_t>(
        from_xrc<wx_helpers1::static_picture_ctrl_t>(this, "m_missing_icon"),
        from_xrc<wxStaticText>(this, "m_missing_program"), m_editor_list);
    if (m_info_icon)
        m_info_icon->set_picture(caption_panel_t::get_picture(severity_t::warning));
    m_language_label = from_xrc<wxStaticText>(this, "m_language_label");
    m_list_label = from_xrc<wxStaticText>(this, "m_list_label");
    wx_helpers1::set_label_for(m_language_label, m_language);
    wx_helpers1::set_label_for(m_list_label, m_editor_list);
    wx_helpers1::set_label_for(m_static_text_cmd_line, m_command_line);
    m_language->Bind(wxEVT_CHOICE, &editor_pp_t::on_language_changed, this);
    m_editor_list->Bind(wxEVT_LISTBOX, &editor_pp_t::on_selection_changed, this);
    m_editor_list->Bind(wxEVT_LISTBOX_DCLICK, &editor_pp_t::on_activated, this);
    m_editor_list->Bind(wxEVT_LEFT_UP, &editor_pp_t::on_mouse_up, this);
    m_command_line->Bind(wxEVT_TEXT, &editor_pp_t::on_cmd_line_edit, this);
    m_default->Bind(wxEVT_BUTTON, &editor_pp_t::on_set_as_default, this);
    m_editor_list->Bind(wxEVT_KEY_DOWN, &editor_pp_t::on_key, this);
    Bind(wxEVT_SIZE, &editor_pp_t::on_resize, this);
    m_looks = std::make_unique<editor_looks_t>([this] { update_details(); });
    if (m_flags & (show_details | show_actions))
        m_details = std::make_unique<editor_details_t>(*this);
    update_shown_controls();
    load_settings();
}

void editor_pp_t::load_settings()
{
    if (!has_controls())
        return;
    m_language->Clear();
    for (const language_t language : m_data.get_languages())
        m_language->Append(to_label(language_info::get_localized_name(language)));
    const language_t language = m_data.get_selected_language();
    m_language->SetStringSelection(to_label(language_info::get_localized_name(language)));
    update_state_for_language(language);
    set_unchanged();
}

void editor_pp_t::set_unchanged()
{
    m_unchanged = m_data;
    m_chosen = false;
}

bool editor_pp_t::save_settings()
{
    return pref_base_t::save_settings(); // the copy is up to date at any time
}

void editor_pp_t::on_language_changed(wxCommandEvent& event)
{
    event.Skip();
    const std::string name = from_wx(m_language->GetStringSelection());
    m_data.set_selected_language(language_info::get_language_by_name(name));
    update_state_for_language(m_data.get_selected_language());
}

bool editor_pp_t::is_browse_entry(int index) const
{
    return index >= 0 && index == static_cast<int>(m_names.size());
}

std::string editor_pp_t::get_selected_editor_name() const
{
    const int index = m_editor_list ? m_editor_list->GetSelection() : wxNOT_FOUND;
    return index >= 0 && index < static_cast<int>(m_names.size()) ? m_names[static_cast<std::size_t>(index)]
                                                                  : std::string();
}

// The arrow keys pass over the browse entry; a click on it is told by on_mouse_up().
void editor_pp_t::on_selection_changed(wxCommandEvent& event)
{
    if (!get_selected_editor_name().empty()) {
        on_editor_list_clicked(event);
        return;
    }
    event.Skip();
    wx_helpers1::set_enabled(m_default, false, m_editor_list);
}

void editor_pp_t::on_activated(wxCommandEvent& event)
{
    if (is_browse_entry(event.GetSelection()))
        on_editor_list_clicked(event);
    else
        event.Skip();
}

void editor_pp_t::on_mouse_up(wxMouseEvent& event)
{
    event.Skip();
    if (is_browse_entry(m_editor_list->HitTest(event.GetPosition())) &&
        is_browse_entry(m_editor_list->GetSelection()))
        browse();
}

void editor_pp_t::on_editor_list_clicked(wxCommandEvent& event)
{
    event.Skip();
    if (!has_controls())
        return;
    if (is_browse_entry(event.GetSelection())) {
        browse();
        return;
    }
    m_chosen = true;
    use_selected_editor(m_data.get_selected_language());
}

void editor_pp_t::use_selected_editor(language_t language)
{
    const std::string sel_edt_name = get_selected_editor_name();
    if (!GH2_ASSERT(!sel_edt_name.empty(), editor_pp_unit))
        return;
    m_data.set_selected_editor_name(language, sel_edt_name);
    show_editor(language, m_data.get_editor(language, sel_edt_name));
}

// Whatever brought it up, there is one chooser: a double click is a click, and an activation, as well. It
// opens when the toolkit is through with the key or the click.
void editor_pp_t::browse()
{
    if (m_browsing)
        return;
    m_browsing = true;
    CallAfter([this] {
        const wxWeakRef<wxWindow> alive(this); // the host may go while the chooser or a message is shown
        std::string path;
        const bool chosen = file_dlg(this, true, path, std::string(), std::string(),
                                     translate_message("pref.editor.open_editor_dlg", {}),
                                     gen_helpers2::stdpaths::get_working_dir().as_string());
        if (!alive)
            return;
        m_browsing = false;
        if (chosen)
            add_custom_editor(path);
        else
            select_selected_editor();
        if (alive)
            m_editor_list->SetFocus();
    });
}

std::string editor_pp_t::find_free_name(const std::string& leaf) const
{
    constexpr int limit = 100;
    const language_t language = m_data.get_selected_language();
    for (int counter = 1; counter <= limit; ++counter) {
        const std::string name = counter == 1 ? leaf : leaf + " (" + std::to_string(counter) + ")";
        if (m_data.get_editor_type(language, name) == editor_data_t::editor_type_none)
            return name;
    }
    return std::string();
}

void editor_pp_t::add_custom_editor(const std::string& path)
{
    const language_t language = m_data.get_selected_language();
    const std::string leaf = path.substr(path.rfind('/') + 1);
    const std::string name = find_free_name(leaf);
    if (leaf.empty() || name.empty()) {
        select_selected_editor();
        if (leaf.empty())
            return;
        show_msg_box(translate_message("pref.editor.warning", {}),
                     translate_message("pref.editor.custom_editors_limit_exceeded", {}),
                     message_window_t::icon_types_t::warning, this);
        return;
    }
    if (!m_data.add_editor(language, system_editor_t(name, name, path, path)))
        return;
    m_editor_list->Insert(entry_text(name), static_cast<unsigned>(m_names.size()));
    m_names.push_back(name);
    look_at({m_data.get_editor(language, name)});
    select_entry_of(language, name);
    wxCommandEvent chosen(wxEVT_LISTBOX, m_editor_list->GetId());
    chosen.SetEventObject(m_editor_list);
    chosen.SetInt(m_editor_list->GetSelection());
    m_editor_list->ProcessWindowEvent(chosen);
}

void editor_pp_t::select_selected_editor()
{
    const language_t language = m_data.get_selected_language();
    select_entry_of(language, m_data.get_selected_editor_name(language));
}

void editor_pp_t::select_entry_of(language_t language, const std::string& name)
{
    const auto found = std::find(m_names.begin(), m_names.end(), name);
    const int index = found == m_names.end() ? wxNOT_FOUND : static_cast<int>(found - m_names.begin());
    m_editor_list->SetSelection(index);
    if (index != wxNOT_FOUND)
        m_editor_list->EnsureVisible(index);
    update_default_button(language);
}

void editor_pp_t::on_key(wxKeyEvent& event)
{
    const bool renames = event.GetKeyCode() == WXK_F2;
    const bool removes = event.GetKeyCode() == WXK_DELETE;
    if (event.HasAnyModifiers() || (!renames && !removes) || !m_details || !m_details->can_be_renamed()) {
        event.Skip();
        return;
    }
    wxCommandEvent pressed(wxEVT_BUTTON, m_editor_list->GetId());
    pressed.SetEventObject(m_editor_list);
    if (renames)
        on_rename(pressed);
    else
        on_remove(pressed);
    ProcessWindowEvent(pressed); // for the host
}

void editor_pp_t::on_cmd_line_edit(wxCommandEvent& event)
{
    event.Skip();
    const language_t language = m_data.get_selected_language();
    const std::string name = get_selected_editor_name();
    if (name.empty())
        return;
    system_editor_t editor = m_data.get_editor(language, name);
    editor.command_line = editor.executable + " " + from_wx(m_command_line->GetValue());
    m_data.set_editor(language, name, editor);
    look_at({editor});
    fill_info_message(language, editor);
    update_details();
}

void editor_pp_t::on_set_as_default(wxCommandEvent& event)
{
    event.Skip();
    m_data.set_default_editor_name(m_data.get_selected_language(), get_selected_editor_name());
    update_default_button(m_data.get_selected_language());
    update_details();
}

std::string editor_pp_t::get_cmd_line_args(const system_editor_t& editor)
{
    if (editor.executable.empty() && editor.command_line.empty())
        return std::string();
    const bool begins = editor.command_line.compare(0, editor.executable.size(), editor.executable) == 0;
    if (!GH2_ASSERT_TEXT(begins, "false", editor_pp_unit))
        return std::string();
    const std::size_t start = editor.command_line.find_first_not_of(blanks, editor.executable.size());
    return start == std::string::npos ? std::string() : editor.command_line.substr(start);
}

void editor_pp_t::update_state_for_language(language_t language)
{
    if (!has_controls())
        return;
    m_filling = true;
    m_editor_list->Clear();
    m_names.clear();
    m_command_line->ChangeValue(wxString());
    m_command_line->Disable();
    show_missing_program(system_editor_t());
    set_info_text(editor_blank_line);
    wx_helpers1::set_label_text(
        m_language_text, translate_message("pref.editor.language_text",
                                           {{"language", language_info::get_localized_name(language)}}));

    const std::string system_default = m_data.get_system_default_editor_name(language);
    wxArrayString entries;
    std::vector<system_editor_t> editors;
    for (const system_editor_t& editor : m_data.get_editors(language)) {
        entries.Add(get_entry_text(language, editor));
        m_names.push_back(editor.name);
        editors.push_back(editor);
    }
    if (m_flags & show_details)
        look_at(editors);
    entries.Add(entry_text(browse_editor_display_name));
    m_editor_list->Set(entries);

    for (const std::string& name :
         {m_data.get_selected_editor_name(language), m_data.get_default_editor_name(language), system_default,
          m_names.empty() ? std::string() : m_names.front()}) {
        if (m_data.get_editor_type(language, name) == editor_data_t::editor_type_none)
            continue;
        select_entry_of(language, name);
        use_selected_editor(language);
        break;
    }
    update_default_button(language);
    m_filling = false;
    update_details();
}

wxString editor_pp_t::get_entry_text(language_t language, const system_editor_t& editor) const
{
    const std::string system_default = m_data.get_system_default_editor_name(language);
    const bool is_system_default = !system_default.empty() && editor.name == system_default;
    return entry_text(is_system_default
                          ? wx_helpers1::with_direction(as_shown(editor.display_name) + system_default_suffix)
                          : editor.display_name);
}

void editor_pp_t::show_editor(language_t language, const system_editor_t& editor)
{
    m_command_line->ChangeValue(to_wx(get_cmd_line_args(editor)));
    m_command_line->Enable();
    if (!(m_flags & show_details)) // those of the list are looked at all at once
        look_at({editor});
    fill_info_message(language, editor);
    update_details();
    update_default_button(language);
}

void editor_pp_t::update_default_button(language_t language)
{
    const std::string name = get_selected_editor_name();
    const std::string default_name = m_data.get_default_editor_name(language);
    wx_helpers1::set_enabled(m_default, !name.empty() && name != default_name, m_editor_list);
    const std::string shown = m_data.get_editor(language, default_name).display_name;
    wx_helpers1::SetTooltip(m_default,
                            shown.empty() ? std::string()
                                          : translate_message("pref.editor.default_is", {{"editor", shown}}));
}

void editor_pp_t::look_at(const std::vector<system_editor_t>& editors)
{
    m_looks->look_at(editors);
}

// More is known, or something else is shown.
void editor_pp_t::update_details()
{
    if (!has_controls() || m_filling)
        return;
    const language_t language = m_data.get_selected_language();
    show_missing_program(m_data.get_editor(language, get_selected_editor_name()));
    if (!m_details)
        return;
    m_details->show_list();
    m_details->show_selected();
    rewrap();
}

void editor_pp_t::update_shown_controls()
{
    if (!has_controls())
        return;
    const bool choose = (m_flags & language_bits) == choose_language;
    m_language_gap->Show(choose);
    m_language->Show(choose);
    if (m_language_label)
        m_language_label->Show(choose);
    m_language_text->Show(!choose);
    m_default->Show(m_flags & show_default);
    m_info_text->Show(m_flags & show_info);
    show_info_icon();
    m_static_text_cmd_line->Hide();
    m_command_line->Hide();
    rewrap();
}

void editor_pp_t::on_update_ui_settings()
{
    pref_base_t::on_update_ui_settings();
    rewrap();
}

void editor_pp_t::on_resize(wxSizeEvent&)
{
    rewrap();
}

void editor_pp_t::rewrap()
{
    if (!has_controls())
        return;
    std::vector<wxStaticText*> labels{m_info_text, m_missing_program->get_label(), m_language_text};
    if (m_details) {
        const auto others = m_details->get_labels();
        labels.insert(labels.end(), others.begin(), others.end());
    }
    rewrap_page(*this, labels);
}

} // namespace commondlg3
