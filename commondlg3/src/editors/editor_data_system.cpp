#include "commondlg3/editor_data.h"
#include "commondlg3/text_utils.h"
#include "editor_command.h"
#include "paths/disk_question.h"
#include "probe_file.h"

#include <gen_helpers2/assertion.h>
#include <gen_helpers2/environment.h>
#include <gen_helpers2/log.h>
#include <gen_helpers2/stdpaths.h>

#include <memory>
#include <mutex>
#include <string>

namespace commondlg3 {
namespace {

constexpr char editor_data_system_unit[] = "editor_data";
constexpr char operation[] = "load_system_info";

// The system looks for the program of each editor in all folders of PATH, of which one may hang.
struct found_t
{
    void look(const std::string& file_name)
    {
        touch_folders_of_path([this](const std::string& folder) {
            const std::lock_guard<std::mutex> lock(mutex);
            place = folder;
        });
        gen_helpers2::get_system_editors(file_name, all, gen_helpers2::all_system_editors);
        status =
            gen_helpers2::get_system_editors(file_name, first_choice, gen_helpers2::default_system_editor);
    }

    editor_data_t::editors_t all;
    editor_data_t::editors_t first_choice;
    unsigned status = 0;
    std::mutex mutex;
    std::string place; // that is asked; guarded
};

void log(const std::string& text)
{
    gen_helpers2::log_trace(editor_data_system_unit, std::string(operation) + ": " + text);
}

} // namespace

bool editor_data_t::load_system_info()
{
    bool result = true;
    for (const language_t language : m_supported_languages) {
        result = load_system_info(language);
        if (!result)
            break;
    }
    return result;
}

bool editor_data_t::load_system_info(language_t language)
{
    const auto extensions = language_info::get_extensions(language);
    if (extensions.empty())
        return true;
    const auto file = gen_helpers2::stdpaths::get_temp_dir() / ("vorbex_test." + extensions.front());
    const probe_file_t probe(file);
    return load_system_info(file.as_string());
}

bool editor_data_t::load_system_info(const std::string& file_name)
{
    gen_helpers2::log_trace(editor_data_system_unit, std::string("ENTER: ") + operation);
    const language_t language = language_info::get_language(file_name);
    log("Language = \"" + language_info::get_localized_name(language) + "\".");
    if (!is_supported_language(language))
        return false;

    const auto found = std::make_shared<found_t>();
    if (!ask_disk([found, file_name] { found->look(file_name); }, patience_with_path)) {
        const std::lock_guard<std::mutex> lock(found->mutex);
        gen_helpers2::log_warning(editor_data_system_unit, "a folder does not answer: " + found->place);
        m_system_states[language] = system_state_t::no_answer;
        m_silent_folder = found->place;
        refresh_env_var_editor(language);
        return false;
    }
    m_system_states[language] = found->all.is_valid() ? system_state_t::found : system_state_t::none;
    m_silent_folder.clear();
    bool result = remove_editors_ex(language, true);
    for (const system_editor_t& editor : found->all)
        add_system_editor(language, editor);

    if (found->status > gen_helpers2::system_editors_none)
        result = false;
    else if (found->first_choice.is_valid())
        m_system_default_names[language] = found->first_choice->name;
    else
        m_system_default_names.erase(language);
    refresh_env_var_editor(language);

    if (gen_helpers2::is_trace_enabled(editor_data_system_unit)) {
        log("m_langs_to_edt_names = " + dump(m_langs_to_edt_names));
        log("m_editors = " + dump(m_editors));
    }
    gen_helpers2::log_trace(editor_data_system_unit, std::string("EXIT: ") + operation);
    return result;
}

editor_data_t::system_state_t editor_data_t::get_system_state(language_t language) const
{
    const auto state = m_system_states.find(language);
    return state == m_system_states.end() ? system_state_t::not_asked : state->second;
}

void editor_data_t::add_system_editor(language_t language, const system_editor_t& found)
{
    editor_t editor(found);
    editor.is_system = true;
    const editor_t* taken = find(language, editor.name);
    if (taken && !taken->is_system) {
        log("Skipping editor \"" + editor.name + "\": a custom editor has that name.");
        return;
    }
    log("Adding editor \"" + editor.name + "\".");
    GH2_ASSERT_TEXT(add_editor_ex(language, editor), "false", editor_data_system_unit);
}

void editor_data_t::refresh_env_var_editor(language_t language)
{
    editor_t env_var_editor;
    fill_env_var_editor(env_var_editor);
    if (find(language, env_var_editor.name)) // of an earlier probe, or kept
        erase(language, env_var_editor.name);
    log("Adding editor \"" + env_var_editor.name + "\".");
    GH2_ASSERT(m_editors.find(editor_key_t(language, env_var_editor.name)) == m_editors.end(),
               editor_data_system_unit);
    add_editor_ex(language, env_var_editor);
}

void editor_data_t::fill_env_var_editor(editor_t& editor)
{
    std::string command = gen_helpers2::get_environ_value("VISUAL");
    if (command.empty())
        command = gen_helpers2::get_environ_value("EDITOR");
    editor.name = env_var_editor_name;
    editor.display_name = translate_message("pref.editor.env_var_editor", {});
    editor.executable = command;
    editor.command_line = command;
}

} // namespace commondlg3
