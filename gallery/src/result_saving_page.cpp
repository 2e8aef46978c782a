#include "result_saving_page.h"

#include "json_report.h"
#include "missing_resource.h"
#include "window_run.h"

#include <cctrl2/collection_controller.h>
#include <commondlg3/resources.h>
#include <gen_helpers2/log.h>
#include <gen_helpers2/stdpaths.h>

#include <wx/checkbox.h>
#include <wx/radiobut.h>
#include <wx/textctrl.h>

#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <utility>

namespace gallery {
namespace {

using commondlg3::result_saving_data_t;
using commondlg3::result_saving_pp_t;
using gen_helpers2::variant_bag_t;
using nlohmann::json;

constexpr unsigned all_flags = result_saving_pp_t::show_project | result_saving_pp_t::check_folder |
                               result_saving_pp_t::show_accessibility | result_saving_pp_t::show_preview;

// The project that the gallery plays with is the folder that it was started in.
std::string project_folder()
{
    std::error_code error;
    return std::filesystem::current_path(error).native();
}

result_saving_data_t initial_data()
{
    result_saving_data_t data(result_saving_data_t::temp_storing_t::to_temp_directory,
                              result_saving_data_t::project_storing_t::to_folder, true,
                              cctrl2::ICollectionController::get()->getDefaultResultDirectoryName(true),
                              (gen_helpers2::stdpaths::get_home_dir() / "vorbex" / "results").as_string());
    data.set_proj_default_folder(project_folder());
    return data;
}

json json_of(const result_saving_data_t& data)
{
    return {{"temp_storing", static_cast<int>(data.get_temp_storing())},
            {"project_storing", static_cast<int>(data.get_proj_storing())},
            {"vs_accessibility", data.get_vs_accessibility()},
            {"name_template", data.get_name_template()},
            {"folder", data.get_folder()},
            {"project_default_folder", data.get_proj_default_folder()}};
}

result_saving_data_t data_from(const json& data, result_saving_data_t record)
{
    using temp = result_saving_data_t::temp_storing_t;
    using project = result_saving_data_t::project_storing_t;
    record.set_temp_storing(
        static_cast<temp>(get_int(data, "temp_storing", static_cast<int>(record.get_temp_storing()))));
    record.set_proj_storing(
        static_cast<project>(get_int(data, "project_storing", static_cast<int>(record.get_proj_storing()))));
    record.set_vs_accessibility(get_bool(data, "vs_accessibility", record.get_vs_accessibility()));
    record.set_name_template(get_string(data, "name_template", record.get_name_template()));
    record.set_folder(get_string(data, "folder", record.get_folder()));
    record.set_proj_default_folder(
        get_string(data, "project_default_folder", record.get_proj_default_folder()));
    return record;
}

variant_bag_t bag_of(const result_saving_data_t& data)
{
    variant_bag_t bag;
    bag.put("name_template", data.get_name_template());
    bag.put("folder", data.get_folder());
    bag.put("to_project", static_cast<int>(data.get_proj_storing()) == 1);
    bag.put("accessibility", data.get_vs_accessibility());
    return bag;
}

} // namespace

result_saving_page_t::result_saving_page_t(commondlg3::settings_file_ptr_t store)
    : file_page_t(std::move(store)), m_data(initial_data())
{
}

std::string result_saving_page_t::get_title() const
{
    return text("preferences.page.result_saving");
}

std::string result_saving_page_t::get_search_words() const
{
    return text("preferences.page.result_saving.words");
}

gen_helpers2::error_code_t result_saving_page_t::load()
{
    const auto result = m_store->load();
    if (!m_store->get()->has_child("result_saving"))
        return result;
    const auto stored = m_store->get()->get_child("result_saving");
    const auto number = [&](const char* name) {
        const auto value = stored->get_value(name);
        return value.can_get<int>() && value.get<int>() == 1 ? 1 : 0;
    };
    const auto string = [&](const char* name, const std::string& otherwise) {
        const auto value = stored->get_value(name);
        return value.can_get<std::string>() ? value.get<std::string>() : otherwise;
    };
    m_data.set_temp_storing(static_cast<result_saving_data_t::temp_storing_t>(number("temp_storing")));
    m_data.set_proj_storing(static_cast<result_saving_data_t::project_storing_t>(number("project_storing")));
    const auto accessible = stored->get_value("vs_accessibility");
    if (accessible.can_get<bool>())
        m_data.set_vs_accessibility(accessible.get<bool>());
    m_data.set_name_template(string("name_template", m_data.get_name_template()));
    m_data.set_folder(string("folder", m_data.get_folder()));
    return result;
}

commondlg3::pref_base_t* result_saving_page_t::create(wxWindow* parent)
{
    m_page = new result_saving_pp_t(m_data, all_flags);
    m_page->create(parent);
    return m_page.get();
}

void result_saving_page_t::show_kept()
{
    m_page->set_data(m_data);
}

bool result_saving_page_t::is_changed() const
{
    return m_page && m_page->is_changed();
}

void result_saving_page_t::store()
{
    m_page->on_ok();
    m_data = m_page->get_data();
    m_page->load_settings(); // what was replaced by a safe value is shown as such
    const auto stored = m_store->get()->get_child("result_saving");
    stored->set_value("temp_storing", static_cast<int>(m_data.get_temp_storing()));
    stored->set_value("project_storing", static_cast<int>(m_data.get_proj_storing()));
    stored->set_value("vs_accessibility", m_data.get_vs_accessibility());
    stored->set_value("name_template", m_data.get_name_template());
    stored->set_value("folder", m_data.get_folder());
}

variant_bag_t result_saving_page_t::get_settings() const
{
    return bag_of(m_page ? m_page->get_entered() : m_data);
}

void result_saving_page_t::set_settings(const variant_bag_t& settings)
{
    result_saving_data_t data = m_page->get_entered();
    if (const auto* to_project = settings.find_value("to_project"); to_project && to_project->can_get<bool>())
        data.set_proj_storing(
            static_cast<result_saving_data_t::project_storing_t>(to_project->get<bool>() ? 1 : 0));
    if (const auto* access = settings.find_value("accessibility"); access && access->can_get<bool>())
        data.set_vs_accessibility(access->get<bool>());
    data.set_name_template(settings.find_text("name_template").value_or(data.get_name_template()));
    data.set_folder(settings.find_text("folder").value_or(data.get_folder()));
    m_page->set_entered(data);
}

variant_bag_t result_saving_page_t::get_defaults() const
{
    return bag_of(initial_data());
}

std::vector<result_saving_page_t::setting_t> result_saving_page_t::get_setting_controls() const
{
    using commondlg3::from_xrc;
    return {{"name_template", from_xrc<wxTextCtrl>(m_page, "m_textCtrl14"), {}},
            {"folder", from_xrc<wxTextCtrl>(m_page, "m_textCtrl16"), {}},
            {"to_project", from_xrc<wxRadioButton>(m_page, "m_radioBtn14"), {}},
            {"accessibility", from_xrc<wxCheckBox>(m_page, "m_checkBox7"), {}}};
}

json result_saving_page_t::get_data() const
{
    return json_of(m_page ? m_page->get_data() : m_data);
}

int open_result_saving_page(const json& data, wxWindow* parent)
{
    constexpr auto object = result_saving_page_t::object_name;
    return window_run_t::run(
        object, parent, {library_layout(object), own_layout("dlg.page_frame")}, [&](window_run_t& run) {
            result_saving_page_t stored(std::make_shared<commondlg3::settings_file_t>(preferences_file));
            if (const auto read = stored.load(); read.failed())
                gen_helpers2::log_warning("gallery", read.as_string());
            const auto record = data_from(stored.get_data(), initial_data());
            const unsigned flags = static_cast<unsigned>(get_int(data, "flags", all_flags));
            auto* page = new result_saving_pp_t(data_from(data, record), flags);
            run.show_page(page, stored.get_title(), [page] { return json_of(page->get_data()); });
        });
}

} // namespace gallery
