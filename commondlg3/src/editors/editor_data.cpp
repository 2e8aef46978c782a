#include "commondlg3/editor_data.h"

#include <gen_helpers2/assertion.h>

#include <algorithm>

namespace commondlg3 {
namespace {

constexpr char editor_data_unit[] = "editor_data";
constexpr char is_listed[] =
    "(it_tmp = m_langs_to_edt_names.find(language)) != m_langs_to_edt_names.end() && "
    "std::find(it_tmp->second.begin(), it_tmp->second.end(), editor_name) != it_tmp->second.end()";
constexpr char is_not_listed[] =
    "(it_tmp = m_langs_to_edt_names.find(language)) == m_langs_to_edt_names.end() || "
    "std::find(it_tmp->second.begin(), it_tmp->second.end(), editor.name) == it_tmp->second.end()";

std::string name_in(const editor_data_t::names_t& names, editor_data_t::language_t language)
{
    const auto found = names.find(language);
    return editor_data_t::is_supported_language(language) && found != names.end() ? found->second
                                                                                  : std::string();
}

bool set_name_in(editor_data_t::names_t& names, editor_data_t::language_t language, const std::string& name)
{
    if (!editor_data_t::is_supported_language(language))
        return false;
    if (name.empty())
        names.erase(language);
    else
        names[language] = name;
    return true;
}

} // namespace

editor_data_t::editor_t::editor_t(const std::string& editor_name) : name(editor_name) {}

editor_data_t::editor_t::editor_t(const system_editor_t& editor)
    : name(editor.name),
      display_name(editor.display_name),
      executable(editor.executable),
      command_line(editor.command_line)
{
}

editor_data_t::editor_t::operator system_editor_t() const
{
    return system_editor_t(name, display_name, executable, command_line);
}

editor_data_t::editor_data_t()
    : m_supported_languages{language_info::cpp, language_info::fortran, language_info::other}
{
}

gen_helpers2::generic_iterator_t<editor_data_t::language_t> editor_data_t::get_languages() const
{
    return gen_helpers2::generic_iterator_t<language_t>(m_supported_languages);
}

bool editor_data_t::is_supported_language(language_t language)
{
    return language <= language_info::other && language != language_info::csharp;
}

bool editor_data_t::set_selected_language(language_t language)
{
    if (!is_supported_language(language))
        return false;
    m_selected_language = language;
    return true;
}

// The records answer whether a name is listed: with thousands of editors the lists would be slow.
const editor_data_t::editor_t* editor_data_t::find(language_t language, const std::string& name) const
{
    const auto found = m_editors.find(editor_key_t(language, name));
    return found == m_editors.end() ? nullptr : &found->second;
}

void editor_data_t::erase(language_t language, const std::string& name)
{
    auto& names = m_langs_to_edt_names[language];
    names.erase(std::find(names.begin(), names.end(), name));
    m_editors.erase(editor_key_t(language, name));
}

bool editor_data_t::add_editor(language_t language, const system_editor_t& editor)
{
    return add_editor_ex(language, editor_t(editor));
}

bool editor_data_t::add_editor_ex(language_t language, const editor_t& editor)
{
    if (!is_supported_language(language))
        return false;
    const bool added = m_editors.emplace(editor_key_t(language, editor.name), editor).second;
    if (!GH2_ASSERT_TEXT(added, is_not_listed, editor_data_unit))
        return false;
    m_langs_to_edt_names[language].push_back(editor.name);
    return true;
}

bool editor_data_t::remove_editor(language_t language, const std::string& name)
{
    if (!is_supported_language(language) ||
        !GH2_ASSERT_TEXT(find(language, name), is_listed, editor_data_unit))
        return false;
    erase(language, name);
    return true;
}

bool editor_data_t::remove_editors_ex(language_t language, bool is_system)
{
    if (!is_supported_language(language))
        return false;
    const auto list = m_langs_to_edt_names.find(language);
    if (list == m_langs_to_edt_names.end())
        return true;
    auto& names = list->second;
    names.erase(std::remove_if(names.begin(), names.end(),
                               [&](const std::string& name) {
                                   const auto found = m_editors.find(editor_key_t(language, name));
                                   if (found->second.is_system != is_system)
                                       return false;
                                   m_editors.erase(found);
                                   return true;
                               }),
                names.end());
    return true;
}

bool editor_data_t::set_editors(language_t language, editors_t editors)
{
    if (!is_supported_language(language))
        return false;
    auto& names = m_langs_to_edt_names[language];
    for (const std::string& name : names)
        GH2_ASSERT_TEXT(m_editors.erase(editor_key_t(language, name)) == 1, "false", editor_data_unit);
    names.clear();
    for (const system_editor_t& editor : editors) {
        const bool added = m_editors.emplace(editor_key_t(language, editor.name), editor_t(editor)).second;
        if (GH2_ASSERT_TEXT(added, "false", editor_data_unit))
            names.push_back(editor.name);
    }
    return true;
}

bool editor_data_t::set_editor(language_t language, const std::string& name, const system_editor_t& editor)
{
    if (name.empty() || name != editor.name || !is_supported_language(language))
        return false;
    const auto found = m_editors.find(editor_key_t(language, name));
    if (!GH2_ASSERT_TEXT(found != m_editors.end(), is_listed, editor_data_unit))
        return false;
    const bool is_system = found->second.is_system;
    found->second = editor_t(editor);
    found->second.is_system = is_system;
    return true;
}

editor_data_t::editors_t editor_data_t::get_editors(language_t language) const
{
    std::vector<system_editor_t> editors;
    const auto list = m_langs_to_edt_names.find(language);
    if (list != m_langs_to_edt_names.end()) {
        editors.reserve(list->second.size());
        for (const std::string& name : list->second)
            if (const editor_t* editor = find(language, name))
                editors.push_back(*editor);
    }
    return editors_t(std::move(editors));
}

editor_data_t::system_editor_t editor_data_t::get_editor(language_t language, const std::string& name) const
{
    const editor_t* editor = find(language, name);
    return editor ? system_editor_t(*editor) : system_editor_t();
}

editor_data_t::editor_t editor_data_t::get_editor_ex(language_t language, const std::string& name) const
{
    const editor_t* editor = find(language, name);
    const bool answered =
        !is_supported_language(language) || GH2_ASSERT_TEXT(editor, is_listed, editor_data_unit);
    return answered && editor ? *editor : editor_t();
}

editor_data_t::editor_type_t editor_data_t::get_editor_type(language_t language,
                                                            const std::string& name) const
{
    const editor_t* editor = find(language, name);
    if (!editor || *editor == editor_t())
        return editor_type_none;
    if (editor->name == env_var_editor_name)
        return editor_type_env_var;
    return editor->is_system ? editor_type_system : editor_type_custom;
}

std::string editor_data_t::get_default_editor_name(language_t language) const
{
    return name_in(m_default_names, language);
}

bool editor_data_t::set_default_editor_name(language_t language, const std::string& name)
{
    return set_name_in(m_default_names, language, name);
}

std::string editor_data_t::get_selected_editor_name(language_t language) const
{
    return name_in(m_selected_names, language);
}

bool editor_data_t::set_selected_editor_name(language_t language, const std::string& name)
{
    return set_name_in(m_selected_names, language, name);
}

std::string editor_data_t::get_system_default_editor_name(language_t language) const
{
    return name_in(m_system_default_names, language);
}

bool operator==(const editor_data_t& a, const editor_data_t& b)
{
    return a.m_selected_language == b.m_selected_language && a.m_selected_names == b.m_selected_names &&
           a.m_default_names == b.m_default_names && a.m_system_default_names == b.m_system_default_names &&
           a.m_langs_to_edt_names == b.m_langs_to_edt_names && a.m_editors == b.m_editors;
}

} // namespace commondlg3
