#include "commondlg3/result_saving_pp.h"

#include "base/wrapped_labels.h"
#include "commondlg3/choosers.h"
#include "commondlg3/name_chars.h"
#include "commondlg3/path_validation.h"
#include "commondlg3/resources.h"
#include "commondlg3/text_utils.h"
#include "folder_watch.h"
#include "panels/field_message.h"
#include "paths/path_field.h"
#include "paths/shown_path.h"
#include "preview_texts.h"

#include <cfgmgr2/message_catalog.h>
#include <cfgmgr2/product_locations.h>
#include <cpil/catalog.h>
#include <gen_helpers2/stdpaths.h>
#include <rdmgr2/result_directory_manager.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/enabling.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/static_picture_ctrl.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>
#include <wx/weakref.h>

#include <algorithm>
#include <locale>
#include <optional>

namespace commondlg3 {
namespace {

using CPIL_2_18::i18n::catalog_key;
using severity_t = caption_panel_t::severity_t;
using rdmgr2::ResultDirectoryManager;
using wx_helpers1::from_wx;
using wx_helpers1::to_wx;

std::string without_blanks_at_end(std::string text)
{
    const std::locale locale;
    while (!text.empty() && std::isspace(text.back(), locale))
        text.pop_back();
    return text;
}

std::string text_in(const wxTextCtrl* ctrl)
{
    return from_wx(ctrl->GetValue());
}

// A product may explain the placeholder in its own words; the library's are for all others.
std::string product_text(const std::string& key, const char* key_for_any)
{
    const std::string name = cfgmgr2::IProductLocations::get()->get_product_short_name();
    std::string own = key;
    for (const char c : name)
        own += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    own += "_2011";
    const auto catalog = cfgmgr2::getMessageCatalog("commondlg");
    return translate_message(catalog && catalog->has_message(own) ? own : key_for_any, {});
}

// Nothing that was entered is lost: it can be read, and copied, in the warning.
std::string replacement_text(const std::string& entered, const std::string& used)
{
    const CPIL_2_18::generic::varg_list values{{"entered", entered}, {"used", used}};
    return "\n" + translate_message(entered.empty() ? catalog_key("pref.result_saving.replaced_nothing")
                                                    : catalog_key("pref.result_saving.replaced"),
                                    values);
}

} // namespace

result_saving_pp_t::result_saving_pp_t(const result_saving_data_t& data, unsigned flags)
    : m_data(data), m_flags(flags)
{
    set_resource_object("pref.result_saving");
}

result_saving_pp_t::result_saving_pp_t(const result_saving_data_t& data, bool with_project,
                                       bool with_folder_check)
    : result_saving_pp_t(data, (with_project ? show_project : 0U) | (with_folder_check ? check_folder : 0U) |
                                   show_accessibility)
{
}

result_saving_pp_t::~result_saving_pp_t() = default;

bool result_saving_pp_t::has_controls() const
{
    return m_template_label && m_template && m_explanation && m_accessibility && m_storing_label &&
           m_to_folder && m_to_project && m_folder && m_browse && m_project_folder && m_example &&
           m_template_trouble && m_folder_trouble;
}

void result_saving_pp_t::set_max_text_limit()
{
    m_template = from_xrc<wxTextCtrl>(this, "m_textCtrl14");
    m_folder = from_xrc<wxTextCtrl>(this, "m_textCtrl16");
    set_max_len_options(m_template,
                        {translate_message("pref.result_saving.templ"), max_len_options_t::no_limit_given});
    set_max_len_options(m_folder,
                        {translate_message("pref.result_saving.dir"), max_len_options_t::no_limit_given});
    pref_base_t::set_max_text_limit();
}

void result_saving_pp_t::load_auxiliary_strings()
{
    pref_base_t::load_auxiliary_strings();
    load_messages();
}

void result_saving_pp_t::load_messages()
{
    m_messages.restricted_ats = translate_message("pref.result_saving.restricted_ats_message");
    m_messages.undefined = translate_message("pref.result_saving.undefined_tooltip_text");
    m_messages.project_directory = translate_message("pref.result_saving.curr_project_dir");
    m_messages.at_explanation = product_text("pref.result_saving.at_explanation_",
                                             catalog_key("pref.result_saving.at_explanation_any_2011"));
    m_messages.at_example =
        product_text("pref.result_saving.at_example_", catalog_key("pref.result_saving.at_example_any_2011"));
}

void result_saving_pp_t::on_init_dialog()
{
    m_template_label = from_xrc<wxStaticText>(this, "m_staticText74");
    m_explanation = from_xrc<wxStaticText>(this, "m_staticText14");
    m_accessibility = from_xrc<wxCheckBox>(this, "m_checkBox7");
    m_storing_label = from_xrc<wxStaticText>(this, "m_staticText8");
    m_to_folder = from_xrc<wxRadioButton>(this, "m_radioBtn13");
    m_to_project = from_xrc<wxRadioButton>(this, "m_radioBtn14");
    m_browse = from_xrc<wxButton>(this, "m_button28");
    m_project_folder = from_xrc<wxStaticText>(this, "m_text_proj_default_folder");
    m_example = from_xrc<wxStaticText>(this, "m_example");
    m_template_trouble = std::make_unique<field_message_t>(
        from_xrc<wx_helpers1::static_picture_ctrl_t>(this, "m_template_icon"),
        from_xrc<wxStaticText>(this, "m_template_note"), m_template);
    m_folder_trouble =
        std::make_unique<field_message_t>(from_xrc<wx_helpers1::static_picture_ctrl_t>(this, "m_folder_icon"),
                                          from_xrc<wxStaticText>(this, "m_folder_note"), m_folder);
    if (!has_controls())
        return;
    m_template->Bind(wxEVT_TEXT, &result_saving_pp_t::on_text_edit, this);
    m_folder->Bind(wxEVT_TEXT, &result_saving_pp_t::on_folder_text_edit, this);
    m_to_folder->Bind(wxEVT_RADIOBUTTON, &result_saving_pp_t::on_radio_disk, this);
    m_to_project->Bind(wxEVT_RADIOBUTTON, &result_saving_pp_t::on_radio_proj, this);
    m_browse->Bind(wxEVT_BUTTON, &result_saving_pp_t::on_button_browse, this);
    Bind(wxEVT_SIZE, &result_saving_pp_t::on_resize, this);
    wx_helpers1::set_accessible_name(m_folder, from_wx(m_to_folder->GetLabelText()));
    for (wxRadioButton* choice : {m_to_folder, m_to_project})
        wx_helpers1::set_accessible_description(choice, from_wx(m_storing_label->GetLabelText()));
    wx_helpers1::set_label_text(m_explanation,
                                translate_message("text.two_sentences", {{"first", m_messages.at_explanation},
                                                                         {"second", m_messages.at_example}}));
    update_shown_controls();
    load_settings();
}

// Feedback comes once, when everything is in place.
void result_saving_pp_t::load_settings()
{
    if (!has_controls())
        return;
    m_template->ChangeValue(to_wx(m_data.get_name_template()));
    m_folder->ChangeValue(to_wx(m_data.get_folder()));
    m_accessibility->SetValue(m_data.get_vs_accessibility());
    const bool to_folder = m_data.get_proj_storing() == result_saving_data_t::project_storing_t::to_folder;
    m_to_folder->SetValue(to_folder);
    m_to_project->SetValue(!to_folder);
    wx_helpers1::set_label_text(m_project_folder, m_messages.project_directory + " " +
                                                      as_shown(m_data.get_proj_default_folder()));
    process_enable_controls(to_folder || !(m_flags & show_project));
    m_unchanged = get_shown();
    check_template();
}

result_saving_pp_t::shown_t result_saving_pp_t::get_shown() const
{
    return {text_in(m_template), text_in(m_folder), m_accessibility->GetValue(), m_to_folder->GetValue()};
}

bool result_saving_pp_t::is_changed() const
{
    if (!has_controls())
        return false;
    const shown_t now = get_shown();
    return now.name_template != m_unchanged.name_template || now.folder != m_unchanged.folder ||
           now.accessibility != m_unchanged.accessibility || now.to_folder != m_unchanged.to_folder;
}

bool result_saving_pp_t::save_settings()
{
    if (!has_controls())
        return true;
    std::string title;
    std::string details;
    std::string replaced;
    std::string name_template = text_in(m_template);
    if (filter_result_template(name_template)) {
        replaced = replacement_text(text_in(m_template), name_template);
        title = translate_message("pref.result_saving.wrong_result_templ", {});
        details = translate_message("pref.result_saving.wrong_result_templ_details", {});
    }
    m_data.set_name_template(name_template);

    std::string folder = without_blanks_at_end(text_in(m_folder));
    if (has_checked_folder()) {
        if (folder != text_in(m_folder))
            m_folder->ChangeValue(to_wx(folder));
        if (check_file_or_folder(m_folder, false, true, false)) {
            folder = text_in(m_folder);
        } else {
            folder = gen_helpers2::stdpaths::get_temp_dir().as_string();
            replaced += replacement_text(text_in(m_folder), folder);
            if (title.empty()) {
                title = translate_message("pref.result_saving.wrong_result_dir", {});
                details = translate_message("pref.result_saving.wrong_result_dir_details", {});
            }
        }
    }
    m_data.set_folder(folder);

    if (!title.empty()) {
        details += "\n\n";
        if (const auto error = ResultDirectoryManager::validateResultDirectoryPattern(name_template))
            details = rdmgr2::toString(error) + "\n\n";
        details +=
            translate_message("pref.result_saving.wrong_input_advice",
                              {{"product_name", cfgmgr2::IProductLocations::get()->get_product_name()}}) +
            "\n" + replaced;
        const wxWeakRef<wxWindow> alive(this); // the host may go while the warning is shown
        show_warning_message(title, details);
        if (!alive)
            return true;
    }
    m_data.set_vs_accessibility(m_accessibility->GetValue());
    m_data.set_proj_storing(m_to_folder->GetValue()
                                ? result_saving_data_t::project_storing_t::to_folder
                                : result_saving_data_t::project_storing_t::to_project_directory);
    m_unchanged = {m_data.get_name_template(), m_data.get_folder(), m_data.get_vs_accessibility(),
                   m_to_folder->GetValue()};
    return true;
}

void result_saving_pp_t::show_warning_message(const std::string& title, const std::string& details)
{
    show_msg_box(title, details, message_window_t::icon_types_t::warning, nullptr);
}

void result_saving_pp_t::on_radio_disk(wxCommandEvent& event)
{
    event.Skip();
    process_enable_controls(true);
    examine_folder(false);
}

void result_saving_pp_t::on_radio_proj(wxCommandEvent& event)
{
    event.Skip();
    process_enable_controls(false);
    examine_folder(false);
}

void result_saving_pp_t::on_text_edit(wxCommandEvent& event)
{
    event.Skip();
    check_template();
}

void result_saving_pp_t::on_folder_text_edit(wxCommandEvent& event)
{
    event.Skip();
    examine_folder(true);
}

void result_saving_pp_t::on_button_browse(wxCommandEvent&)
{
    process_browse_folder(this, m_folder);
    m_folder->SetFocus();
}

void result_saving_pp_t::on_resize(wxSizeEvent&)
{
    rewrap();
}

void result_saving_pp_t::on_update_ui_settings()
{
    pref_base_t::on_update_ui_settings();
    if (!has_controls())
        return;
    check_template();
}

void result_saving_pp_t::process_enable_controls(bool to_folder)
{
    wx_helpers1::set_enabled({{m_folder, to_folder}, {m_browse, to_folder}}, m_to_project);
}

void result_saving_pp_t::update_shown_controls()
{
    if (!has_controls())
        return;
    const bool project = m_flags & show_project;
    for (wxWindow* window : {static_cast<wxWindow*>(m_to_folder), static_cast<wxWindow*>(m_to_project),
                             static_cast<wxWindow*>(m_project_folder)})
        window->Show(project);
    m_accessibility->Show(m_flags & show_accessibility);
    rewrap();
}

bool result_saving_pp_t::has_checked_folder() const
{
    return (m_flags & check_folder) && m_folder->IsEnabled();
}

// What the user typed stays until OK; here it is only coloured and explained.
void result_saving_pp_t::check_template()
{
    std::string text = text_in(m_template);
    std::vector<std::string> findings;
    if (replace_disabled_chars(text, disabled_file_chars))
        findings.push_back(get_restricted_chars_text(disabled_file_chars));
    if (replace_wrong_ats(text))
        findings.push_back(m_messages.restricted_ats);
    if (const auto error = ResultDirectoryManager::validateResultDirectoryPattern(text)) {
        const std::string reason = rdmgr2::toString(error);
        findings.push_back(reason.empty() ? m_messages.undefined : reason);
    }
    std::string tooltip;
    for (const std::string& finding : findings)
        tooltip += (tooltip.empty() ? "" : "\n\n") + finding;
    const auto* settings = wx_helpers1::ui_settings_t::get();
    if (settings)
        set_color_and_tooltip(m_template, tooltip,
                              settings->get_colour(findings.empty() ? wx_helpers1::ui_colour::text
                                                                    : wx_helpers1::ui_colour::error));
    std::string first = findings.empty() ? std::string() : findings.front();
    if (const std::size_t gap = first.find("\n\n"); gap != std::string::npos)
        first.replace(gap, 2, " ");
    if (m_template_trouble->say(severity_t::error, first))
        rewrap();
    examine_folder(false);
}

// Only what is being typed is cleaned: to look at a page is not to change it.
void result_saving_pp_t::examine_folder(bool typed)
{
    folder_question_t question;
    question.is_checked = has_checked_folder();
    if (question.is_checked && typed && !clean_path_field(m_folder, disabled_folder_chars))
        question.wrong = path_message_t::empty_relative;
    const std::string folder = text_in(m_folder);
    if (question.is_checked && !typed && !check_string_for_disabled_symbols(folder, disabled_folder_chars))
        question.trouble = get_restricted_chars_text(disabled_folder_chars);
    question.folder = goes_to_project() ? m_data.get_proj_default_folder() : without_blanks_at_end(folder);
    question.name_template = text_in(m_template);
    filter_result_template(question.name_template);
    if (!m_watch)
        m_watch = std::make_unique<folder_watch_t>(folder_watch_t::listener_t{
            [this](const folder_answer_t& answer) { show_answer(answer); }, [this] { show_waiting(); },
            [this](const std::string& place) { show_silence(place); }});
    m_watch->ask(std::move(question));
}

bool result_saving_pp_t::goes_to_project() const
{
    return (m_flags & show_project) && m_to_project->GetValue();
}

// The verdict of the path check comes first; beyond it the user is told what would go wrong later.
void result_saving_pp_t::show_answer(const folder_answer_t& answer)
{
    const auto& question = answer.question;
    std::string note = question.trouble;
    if (!question.is_checked)
        mark_path_field(m_folder, std::nullopt, true);
    else if (note.empty()) {
        tell_path_verdict(m_folder, question.wrong, !m_folder->IsEmpty());
        note = question.wrong ? get_path_trouble(*question.wrong) : sentence_about(answer.state);
    }
    if (!note.empty() && !question.wrong)
        set_color_and_tooltip(m_folder, note, get_path_error_colour());
    severity_t severity = severity_t::error;
    if (note.empty() && question.is_checked && (m_flags & show_preview)) {
        note = sentence_about_little_space(answer);
        severity = severity_t::warning;
    }
    if (m_folder_trouble->say(severity, note))
        rewrap();
    show_preview_text(get_example(answer.next_name), get_outlook(answer));
}

// What was said of the text before may be wrong for this one; the name of before does no harm.
void result_saving_pp_t::show_waiting()
{
    if (has_checked_folder())
        tell_path_verdict(m_folder, std::nullopt, !m_folder->IsEmpty());
    else
        mark_path_field(m_folder, std::nullopt, true);
    if (m_folder_trouble->say(severity_t::error, std::string()))
        rewrap();
    show_preview_text(m_shown_example, translate_message("pref.result_saving.checking"));
}

void result_saving_pp_t::show_silence(const std::string& place)
{
    const std::string note = translate_message("pref.result_saving.no_answer", {{"dir", as_shown(place)}});
    const bool of_field = has_checked_folder();
    if (of_field)
        tell_path_verdict(m_folder, std::nullopt, !m_folder->IsEmpty());
    if (m_folder_trouble->say(severity_t::warning, of_field ? note : std::string()))
        rewrap();
    show_preview_text(std::string(),
                      of_field ? translate_message("pref.result_saving.next_not_known") : note);
}

// One label: what it says belongs together, and a page opens faster with one.
void result_saving_pp_t::show_preview_text(const std::string& example, const std::string& outlook)
{
    const bool with_outlook = m_flags & show_preview;
    if (!with_outlook && example.empty())
        return; // there is always some example
    m_shown_example = example;
    std::string text = example;
    if (with_outlook && !outlook.empty())
        text += (text.empty() ? "" : "\n") + outlook;
    if (from_wx(m_example->GetLabelText()) == text)
        return;
    wx_helpers1::set_label_text(m_example, text);
    if (with_outlook)
        wx_helpers1::set_accessible_description(m_browse, outlook);
    rewrap();
}

// Labels wrap to the width that the page has; only then is their height known.
void result_saving_pp_t::rewrap()
{
    if (has_controls())
        rewrap_page(*this, {m_explanation, m_example, m_template_trouble->get_label(),
                            m_folder_trouble->get_label(), m_project_folder});
}

} // namespace commondlg3
