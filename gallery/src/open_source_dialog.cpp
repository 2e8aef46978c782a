#include "open_source_dialog.h"

#include "editor_page.h"
#include "json_report.h"
#include "missing_resource.h"
#include "window_run.h"

#include <commondlg3/choosers.h>
#include <commondlg3/editor_launch.h>
#include <commondlg3/message_window.h>
#include <commondlg3/resources.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/spinctrl.h>
#include <wx/weakref.h>

#include <string>

namespace gallery {
namespace {

using commondlg3::editor_data_t;
using commondlg3::editor_failure_t;
using commondlg3::language_info;
using nlohmann::json;
using wx_helpers1::from_wx;
using wx_helpers1::to_wx;

// JSON is UTF-8; paths need not be.
json text_for_json(const std::string& bytes)
{
    return wx_helpers1::to_label(bytes).utf8_string();
}

language_info::language_t language_of(const std::string& file)
{
    const auto language = language_info::get_language(file);
    return editor_data_t::is_supported_language(language) ? language : language_info::other;
}

// What the user chose; or else the default, what the desktop would take, or the first.
editor_data_t::system_editor_t editor_for(const editor_data_t& editors, const std::string& file)
{
    const auto language = language_of(file);
    for (const std::string& name :
         {editors.get_selected_editor_name(language), editors.get_default_editor_name(language),
          editors.get_system_default_editor_name(language)})
        if (editors.get_editor_type(language, name) != editor_data_t::editor_type_none)
            return editors.get_editor(language, name);
    const auto all = editors.get_editors(language);
    return all.is_valid() ? *all : editor_data_t::system_editor_t();
}

void open_in(const editor_data_t::system_editor_t& editor, const std::string& object, const std::string& file,
             int line, wxWindow* parent)
{
    const wxWeakRef<wxWindow> alive(parent);
    const auto tell = [alive, object](const editor_failure_t& failure) {
        report_signal(object, "failed",
                      {{"command", text_for_json(failure.command)},
                       {"exit_code", failure.exit_code},
                       {"signal", failure.signal},
                       {"text", text_for_json(failure.get_text())}});
        if (alive)
            commondlg3::show_editor_failure(failure, alive.get());
    };
    if (commondlg3::open_in_editor(editor, file, line, tell))
        report_signal(object, "started", text_for_json(editor.name));
}

} // namespace

open_source_dialog_t::open_source_dialog_t(const editor_data_t& editors, const std::string& file, int line)
    : m_editors(editors), m_first_file(file), m_first_line(line)
{
    set_resource_file(resource_file());
    m_catalog_name = "gallery";
    set_resource_object(object_name);
}

json open_source_dialog_t::get_data() const
{
    return m_file && m_line ? json{{"file", text_for_json(get_file())},
                                   {"line", m_line->GetValue()},
                                   {"editor", text_for_json(get_editor().name)}}
                            : json::object();
}

void open_source_dialog_t::on_init_dialog()
{
    m_file = commondlg3::from_xrc<wxTextCtrl>(this, "m_file");
    m_line = commondlg3::from_xrc<wxSpinCtrl>(this, "m_line");
    m_editor = commondlg3::from_xrc<wxStaticText>(this, "m_editor");
    auto* button = commondlg3::from_xrc<wxButton>(this, "m_btn_browse");
    auto* open_button = commondlg3::from_xrc<wxButton>(this, "m_btn_open");
    if (!m_file || !m_line || !m_editor || !button || !open_button)
        return;
    wx_helpers1::set_label_for(commondlg3::from_xrc<wxStaticText>(this, "m_file_label"), m_file);
    wx_helpers1::set_label_for(commondlg3::from_xrc<wxStaticText>(this, "m_line_label"), m_line);
    m_file->Bind(wxEVT_TEXT, [this](wxCommandEvent& event) {
        event.Skip();
        show_editor();
    });
    button->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { browse(); });
    open_button->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { open(); });
    m_file->ChangeValue(to_wx(m_first_file));
    m_line->SetValue(m_first_line);
    show_editor();
    fit_again();
    centre_on_parent();
    m_file->SetFocus();
}

void open_source_dialog_t::fit_again()
{
    if (m_editor)
        m_editor->SetMinSize(wx_helpers1::natural_size(m_editor)); // later ones end in an ellipsis
    fit_to_contents();
}

std::string open_source_dialog_t::get_file() const
{
    return from_wx(m_file->GetValue());
}

editor_data_t::system_editor_t open_source_dialog_t::get_editor() const
{
    return editor_for(m_editors, get_file());
}

void open_source_dialog_t::show_editor()
{
    const std::string language = language_info::get_localized_name(language_of(get_file()));
    wx_helpers1::set_label_text(m_editor,
                                commondlg3::message_window_t::get_message(
                                    "gallery", "open_source.editor",
                                    {{"language", language}, {"editor", get_editor().display_name}}));
}

void open_source_dialog_t::browse()
{
    std::string file = get_file();
    if (commondlg3::file_dlg(this, true, file, "", "", text("open_source.choose"), ""))
        m_file->SetValue(to_wx(file));
    m_file->SetFocus();
}

void open_source_dialog_t::open()
{
    open_in(get_editor(), object_name, get_file(), m_line->GetValue(), this);
}

editor_data_t::system_editor_t get_users_editor(const std::string& file)
{
    gen_helpers2::error_code_t ignored; // the preferences dialog tells it
    editor_data_t editors = load_editors(ignored);
    // A busy machine that does not answer the first question answers a later one.
    const auto language = language_of(file);
    const auto no_answer = editor_data_t::system_state_t::no_answer;
    for (int again = 0; again < 3 && editors.get_system_state(language) == no_answer; ++again)
        editors.load_system_info(language);
    return editor_for(editors, file);
}

void open_in_users_editor(const std::string& object, const std::string& file, int line, wxWindow* parent)
{
    open_in(get_users_editor(file), object, file, line, parent);
}

int open_open_source_dialog(const json& data, wxWindow* parent)
{
    constexpr auto object = open_source_dialog_t::object_name;
    return window_run_t::run(object, parent, {own_layout(object)}, [&](window_run_t& run) {
        gen_helpers2::error_code_t ignored; // the preferences dialog tells it
        open_source_dialog_t dialog(load_editors(ignored), get_string(data, "file", ""),
                                    get_int(data, "line", 1));
        run.show(dialog);
        run.set_data(dialog.get_data());
    });
}

} // namespace gallery
