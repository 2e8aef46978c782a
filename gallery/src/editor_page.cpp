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

constexpr unsigned all_flags =
    editor_pp_t::choose_language | editor_pp_t::show_default | editor_pp_t::show_info;

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
    settings_store_t store(preferences_file);
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

bool editor_page_t::is_changed() const
{
    return m_unwritten || (m_page && m_page->is_changed());
}

gen_helpers2::error_code_t editor_page_t::apply()
{
    if (!m_page)
        return {};
    m_page->on_ok();
    m_page->get_data().save_storage_info(m_store->get());
    m_page->set_unchanged();
    const auto result = m_store->get()->save();
    m_unwritten = result.failed();
    return result;
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
