#include "editor_page.h"

#include "json_report.h"
#include "missing_resource.h"
#include "window_run.h"

#include <string>
#include <utility>

namespace gallery {
namespace {

using commondlg3::editor_data_t;
using commondlg3::editor_pp_t;
using commondlg3::language_info;
using gen_helpers2::variant_bag_t;
using nlohmann::json;

constexpr unsigned all_flags = editor_pp_t::choose_language | editor_pp_t::show_default |
                               editor_pp_t::show_info | editor_pp_t::show_details | editor_pp_t::show_actions;

const char* name_of(language_info::language_t language)
{
    return language == language_info::cpp ? "cpp" : language == language_info::fortran ? "fortran" : "other";
}

editor_data_t editors_in(const gen_helpers2::sptr_t<cfgmgr2::IPropertyStorage>& storage)
{
    editor_data_t data;
    data.load_system_info();
    data.load_system_info("vorbex_test.txt"); // other files: what opens any text
    data.load_storage_info(storage);
    return data;
}

json json_of(const editor_data_t& data)
{
    json languages = json::array();
    for (const auto language : data.get_languages()) {
        json editors = json::array();
        for (const auto& editor : data.get_editors(language))
            editors.push_back({{"name", editor.name},
                               {"display_name", editor.display_name},
                               {"executable", editor.executable},
                               {"command_line", editor.command_line},
                               {"is_system", data.get_editor_type(language, editor.name) ==
                                                 editor_data_t::editor_type_system}});
        languages.push_back({{"language", static_cast<int>(language)},
                             {"editors", std::move(editors)},
                             {"selected_editor", data.get_selected_editor_name(language)},
                             {"default_editor", data.get_default_editor_name(language)},
                             {"system_default_editor", data.get_system_default_editor_name(language)}});
    }
    return {{"languages", std::move(languages)},
            {"selected_language", static_cast<int>(data.get_selected_language())}};
}

std::string localized_name(const json& record, const char* member)
{
    const auto language = static_cast<language_info::language_t>(get_int(record, member, language_info::cpp));
    return language_info::get_localized_name(language);
}

// By way of what is kept, so that a script's records are checked as a file's are.
editor_data_t data_from(const json& record)
{
    variant_bag_t bag;
    for (const json& language : record.value("languages", json::array())) {
        variant_bag_t& stored = bag.add_child("language");
        stored.put("language_name", localized_name(language, "language"));
        for (const json& editor : language.value("editors", json::array())) {
            variant_bag_t& kept = stored.add_child("editor");
            for (const char* name : {"name", "display_name", "executable", "command_line"})
                kept.put(name, get_string(editor, name, ""));
            kept.put("is_system", get_bool(editor, "is_system", false));
        }
        for (const char* name : {"selected_editor", "default_editor", "system_default_editor"})
            stored.put(name, get_string(language, name, ""));
    }
    bag.put("selected_language", localized_name(record, "selected_language"));
    editor_data_t data;
    data.load(bag);
    return data;
}

} // namespace

editor_data_t load_editors(gen_helpers2::error_code_t& result)
{
    commondlg3::settings_file_t store(preferences_file);
    result = store.load();
    return editors_in(store.get());
}

std::string editor_page_t::get_title() const
{
    return text("preferences.page.editor");
}

std::string editor_page_t::get_search_words() const
{
    return text("preferences.page.editor.words");
}

commondlg3::pref_base_t* editor_page_t::create(wxWindow* parent)
{
    m_page = new editor_pp_t(editors_in(m_store->get()), all_flags);
    m_page->create(parent);
    return m_page.get();
}

void editor_page_t::show_kept()
{
    m_page->set_data(editors_in(m_store->get()));
    m_page->set_unchanged();
}

bool editor_page_t::is_changed() const
{
    return m_page && m_page->is_changed();
}

void editor_page_t::store()
{
    m_page->on_ok();
    m_page->get_data().save_storage_info(m_store->get());
    m_page->set_unchanged();
}

// A language's editors are one setting: the user's own ones, and which are chosen. What the desktop knows is
// of this machine.
gen_helpers2::variant_bag_t editor_page_t::get_settings() const
{
    editor_data_t data;
    if (is_changed()) // else it has an editor selected where the settings have none
        data = m_page->get_data();
    else
        data.load_storage_info(m_store->get());
    variant_bag_t settings;
    for (const auto language : data.get_languages()) {
        variant_bag_t& kept = settings.add_child(name_of(language));
        for (const auto& editor : data.get_editors(language)) {
            if (data.get_editor_type(language, editor.name) != editor_data_t::editor_type_custom)
                continue;
            variant_bag_t& own = kept.add_child("editor");
            own.put("name", editor.name);
            own.put("display_name", editor.display_name);
            own.put("executable", editor.executable);
            own.put("command_line", editor.command_line);
        }
        kept.put("selected", data.get_selected_editor_name(language));
        kept.put("default", data.get_default_editor_name(language));
    }
    return settings;
}

void editor_page_t::set_settings(const variant_bag_t& settings)
{
    editor_data_t data = m_page->get_data();
    for (const auto language : data.get_languages()) {
        const variant_bag_t* given = settings.find_child(name_of(language));
        if (!given)
            continue;
        std::vector<std::string> own;
        for (const auto& editor : data.get_editors(language))
            if (data.get_editor_type(language, editor.name) == editor_data_t::editor_type_custom)
                own.push_back(editor.name);
        for (const std::string& name : own)
            data.remove_editor(language, name);
        given->for_each_child("editor", [&](const variant_bag_t& each) {
            const auto given_text = [&](const char* name) { return each.find_text(name).value_or(""); };
            if (!given_text("name").empty() &&
                data.get_editor_type(language, given_text("name")) == editor_data_t::editor_type_none)
                data.add_editor(language, {given_text("name"), given_text("display_name"),
                                           given_text("executable"), given_text("command_line")});
        });
        const auto is_there = [&](const std::string& name) {
            return name.empty() || data.get_editor_type(language, name) != editor_data_t::editor_type_none;
        };
        if (const std::string name = given->find_text("selected").value_or(""); is_there(name))
            data.set_selected_editor_name(language, name);
        if (const std::string name = given->find_text("default").value_or(""); is_there(name))
            data.set_default_editor_name(language, name);
    }
    m_page->set_data(data);
}

variant_bag_t editor_page_t::get_defaults() const
{
    variant_bag_t usual;
    for (const auto language : editor_data_t().get_languages()) {
        variant_bag_t& none = usual.add_child(name_of(language));
        none.put("selected", "");
        none.put("default", "");
    }
    return usual;
}

std::vector<editor_page_t::setting_t> editor_page_t::get_setting_controls() const
{
    std::vector<setting_t> settings;
    for (const auto language : editor_data_t().get_languages())
        settings.push_back({name_of(language), nullptr, language_info::get_localized_name(language)});
    return settings;
}

json editor_page_t::get_data() const
{
    return json_of(m_page ? m_page->get_data() : editors_in(m_store->get()));
}

int open_editor_page(const json& data, wxWindow* parent)
{
    constexpr auto object = editor_page_t::object_name;
    return window_run_t::run(
        object, parent, {library_layout(object), own_layout("dlg.page_frame")}, [&](window_run_t& run) {
            gen_helpers2::error_code_t ignored;
            const bool given = data.is_object() && data.contains("languages");
            auto* page = new editor_pp_t(given ? data_from(data) : load_editors(ignored),
                                         static_cast<unsigned>(get_int(data, "flags", all_flags)));
            run.show_page(page, text("preferences.page.editor"),
                          [page] { return json_of(page->get_data()); });
        });
}

} // namespace gallery
