#include "commondlg3/editor_data.h"

#include <gen_helpers2/assertion.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace commondlg3 {
namespace {

using gen_helpers2::variant_bag_t;
using gen_helpers2::variant_t;

constexpr char editor_data_storage_unit[] = "editor_data";

bool read_text(const variant_bag_t& bag, const char* name, std::string& text)
{
    const auto found = bag.find_text(name);
    if (found)
        text = *found;
    return found.has_value();
}

bool read_flag(const variant_bag_t& bag, const char* name, bool& flag)
{
    const variant_t& value = bag.get<variant_t>(name);
    if (value.can_get<bool>())
        flag = value.get<bool>();
    else if (value.can_get<double>())
        flag = value.get<double>() != 0;
    else if (value.can_get<long long>())
        flag = value.get<long long>() != 0;
    else
        return false;
    return true;
}

bool read_editor(const variant_bag_t& bag, editor_data_t::editor_t& editor)
{
    const bool named = read_text(bag, "name", editor.name) && !editor.name.empty() &&
                       read_text(bag, "display_name", editor.display_name);
    if (!named || !read_flag(bag, "is_system", editor.is_system))
        return false;
    if (editor.name == editor_data_t::env_var_editor_name) {
        editor_data_t::fill_env_var_editor(editor);
        return true;
    }
    return read_text(bag, "executable", editor.executable) &&
           read_text(bag, "command_line", editor.command_line);
}

void write_editor(variant_bag_t& bag, const editor_data_t::editor_t& editor)
{
    bag.add_value("name", editor.name);
    bag.add_value("display_name", editor.display_name);
    bag.add_value("executable", editor.executable);
    bag.add_value("command_line", editor.command_line);
    bag.add_value("is_system", editor.is_system);
}

void write_name(variant_bag_t& bag, const char* key, const std::string& name)
{
    if (!name.empty())
        bag.add_value(key, name);
}

} // namespace

bool editor_data_t::load(names_t& names, language_t language, const variant_t& value)
{
    if (!value.can_get<std::string>() || value.text().empty())
        return false;
    return names.emplace(language, value.get<std::string>()).second;
}

void editor_data_t::load(const variant_bag_t& bag)
{
    bag.for_each_child("language", [this](const variant_bag_t& language) { load_language(language); });
    std::string selected;
    if (read_text(bag, "selected_language", selected))
        set_selected_language(language_info::get_language_by_name(selected));
}

void editor_data_t::load_language(const variant_bag_t& bag)
{
    std::string language_name;
    if (!GH2_ASSERT_TEXT(read_text(bag, "language_name", language_name), "false", editor_data_storage_unit))
        return;
    const language_t language = language_info::get_language_by_name(language_name);
    if (!is_supported_language(language))
        return;
    bag.for_each_child("editor", [&](const variant_bag_t& stored) {
        editor_t editor;
        if (read_editor(stored, editor) && !find(language, editor.name))
            add_editor_ex(language, editor);
    });
    load(m_selected_names, language, bag.get<variant_t>("selected_editor"));
    load(m_default_names, language, bag.get<variant_t>("default_editor"));
    load(m_system_default_names, language, bag.get<variant_t>("system_default_editor"));
}

void editor_data_t::save(variant_bag_t& bag) const
{
    for (const auto& [language, names] : m_langs_to_edt_names) {
        variant_bag_t& stored = bag.add_child("language");
        stored.add_value("language_name", language_info::get_localized_name(language));
        for (const std::string& name : names) {
            const editor_t* editor = find(language, name);
            if (GH2_ASSERT_TEXT(editor, "false", editor_data_storage_unit))
                write_editor(stored.add_child("editor"), *editor);
        }
        write_name(stored, "selected_editor", get_selected_editor_name(language));
        write_name(stored, "default_editor", get_default_editor_name(language));
        write_name(stored, "system_default_editor", get_system_default_editor_name(language));
    }
    bag.put("selected_language", language_info::get_localized_name(m_selected_language));
}

editor_data_t::storage_t editor_data_t::get_storage(const storage_t& storage)
{
    return storage ? storage->get_child("external_editor") : storage_t();
}

bool editor_data_t::load_storage_info(const storage_t& storage)
{
    const storage_t stored = get_storage(storage);
    if (!stored)
        return false;
    m_stored = stored->to_bag();
    load(m_stored);
    return true;
}

bool editor_data_t::save_storage_info(const storage_t& storage) const
{
    const storage_t stored = get_storage(storage);
    if (!stored)
        return false;
    variant_bag_t bag;
    save(bag);
    stored->change(m_stored, bag, {"language_name", "name"});
    m_stored = std::move(bag);
    return true;
}

std::string editor_data_t::dump(const editor_t& editor)
{
    return "{name \"" + editor.name + "\", display name \"" + editor.display_name + "\", executable \"" +
           editor.executable + "\", command line \"" + editor.command_line + "\", " +
           (editor.is_system ? "system" : "not system") + "}";
}

std::string editor_data_t::dump(language_t language) const
{
    std::string text = "\"" + language_info::get_localized_name(language) + "\":";
    const auto list = m_langs_to_edt_names.find(language);
    if (list != m_langs_to_edt_names.end())
        for (const std::string& name : list->second)
            if (const editor_t* editor = find(language, name))
                text += "\n  " + dump(*editor);
    return text;
}

std::string editor_data_t::dump(const std::map<language_t, std::vector<std::string>>& names)
{
    std::string text;
    for (const auto& [language, list] : names) {
        text += "\n  \"" + language_info::get_localized_name(language) + "\":";
        for (const std::string& name : list)
            text += " \"" + name + "\"";
    }
    return text;
}

std::string editor_data_t::dump(const records_t& records)
{
    std::string text;
    for (const auto& [key, editor] : records)
        text += "\n  \"" + language_info::get_localized_name(key.first) + "\" " + dump(editor);
    return text;
}

} // namespace commondlg3
