#include "experimental_page.h"

#include "experimental_features.h"
#include "json_report.h"
#include "missing_resource.h"
#include "window_run.h"

#include <set>
#include <string>
#include <utility>

namespace gallery {
namespace {

using commondlg3::experimental_options_panel_t;
using nlohmann::json;

constexpr unsigned all_flags = experimental_options_panel_t::search_features |
                               experimental_options_panel_t::show_changes |
                               experimental_options_panel_t::offer_reset;

/// Features that a script named.
class given_features_t : public commondlg3::feature_list_config_t
{
public:
    explicit given_features_t(const json& data) : m_data(data) {}
    void load() override {}
    int get_count() const override { return static_cast<int>(m_data.size()); }
    feature_info_t get_feature(int index) const override
    {
        const json& each = m_data.at(index);
        return {get_string(each, "name", ""), get_string(each, "description", ""),
                get_string(each, "env_variable", "")};
    }

private:
    json m_data;
};

/// A choice that is never written.
class choice_in_memory_t : public commondlg3::active_features_config_t
{
public:
    void clear() override { m_on.clear(); }
    void load() override {}
    bool save() override { return true; }
    void turn_on(const feature_info_t& feature) override { m_on.insert(feature.env_variable); }
    bool is_turned_on(const feature_info_t& feature) override
    {
        return m_on.count(feature.env_variable) != 0;
    }

private:
    std::set<std::string> m_on;
};

json json_of(const experimental_options_panel_t& page)
{
    json features = json::array();
    for (const auto& feature : page.get_features())
        features.push_back({{"name", feature.name},
                            {"description", feature.description},
                            {"env_variable", feature.env_variable},
                            {"enabled", feature.enabled}});
    return {{"features", features}};
}

} // namespace

std::string experimental_page_t::get_title() const
{
    return text("preferences.page.experimental");
}

std::string experimental_page_t::get_search_words() const
{
    return text("preferences.page.experimental.words");
}

// A file that cannot be read is explained by the log: there is nothing that the user could lose.
gen_helpers2::error_code_t experimental_page_t::load()
{
    m_list = load_feature_list();
    m_active = load_active_features();
    return {};
}

commondlg3::pref_base_t* experimental_page_t::create(wxWindow* parent)
{
    m_page = new experimental_options_panel_t(m_list, m_active, all_flags);
    m_page->set_on_at_start(features_on_at_start());
    m_page->create(parent);
    return m_page.get();
}

void experimental_page_t::show_kept()
{
    m_page->load_settings();
}

bool experimental_page_t::is_changed() const
{
    return m_page && m_page->is_changed();
}

void experimental_page_t::store()
{
    m_page->take_choice();
}

gen_helpers2::error_code_t experimental_page_t::save()
{
    if (m_active->save())
        return {};
    return gen_helpers2::error_code_t::io_error(m_active->get_config_filename());
}

void experimental_page_t::stored()
{
    m_page->set_unchanged();
    m_restart_due = m_restart_due || m_page->is_restart_requested();
}

std::vector<gen_helpers2::path_t> experimental_page_t::get_files() const
{
    const commondlg3::active_features_config_impl_t kept{gen_helpers2::path_t()};
    return {gen_helpers2::path_t(kept.get_config_filename())};
}

gen_helpers2::variant_bag_t experimental_page_t::get_settings() const
{
    gen_helpers2::variant_bag_t settings;
    for (int i = 0; !m_page && i < m_list->get_count(); ++i)
        settings.put(m_list->get_feature(i).env_variable, m_active->is_turned_on(m_list->get_feature(i)));
    if (m_page)
        for (const auto& feature : m_page->get_features())
            settings.put(feature.env_variable, feature.enabled);
    return settings;
}

void experimental_page_t::set_settings(const gen_helpers2::variant_bag_t& settings)
{
    for (const auto& item : settings)
        if (item.value().can_get<bool>())
            m_page->set_enabled(std::string(item.name()), item.value().get<bool>());
}

gen_helpers2::variant_bag_t experimental_page_t::get_defaults() const
{
    gen_helpers2::variant_bag_t off;
    for (int i = 0; i < m_list->get_count(); ++i)
        off.put(m_list->get_feature(i).env_variable, false);
    return off;
}

std::vector<experimental_page_t::setting_t> experimental_page_t::get_setting_controls() const
{
    std::vector<setting_t> settings;
    for (int i = 0; i < m_list->get_count(); ++i)
        settings.push_back({m_list->get_feature(i).env_variable, nullptr, m_list->get_feature(i).name});
    return settings;
}

bool experimental_page_t::prompt_restart()
{
    return std::exchange(m_restart_due, false) && m_page && m_page->prompt_restart_now();
}

json experimental_page_t::get_data() const
{
    if (m_page)
        return json_of(*m_page);
    experimental_options_panel_t unseen(m_list, m_active);
    unseen.load_settings();
    return json_of(unseen);
}

int open_experimental_page(const json& data, wxWindow* parent)
{
    constexpr auto object = experimental_page_t::object_name;
    return window_run_t::run(
        object, parent, {library_layout(object), own_layout("dlg.page_frame")}, [&](window_run_t& run) {
            const boost::shared_ptr<choice_in_memory_t> active(new choice_in_memory_t);
            boost::shared_ptr<commondlg3::feature_list_config_t> list = load_feature_list();
            if (data.is_object() && data.contains("features") && data["features"].is_array()) {
                list.reset(new given_features_t(data["features"]));
                for (int i = 0; i < list->get_count(); ++i)
                    if (get_bool(data["features"][i], "enabled", false))
                        active->turn_on(list->get_feature(i));
            }
            auto* page = new experimental_options_panel_t(
                list, active, static_cast<unsigned>(get_int(data, "flags", all_flags)));
            run.show_page(page, text("preferences.page.experimental"), [page] {
                json ended = json_of(*page);
                ended["restart_requested"] = page->is_restart_requested();
                return ended;
            });
        });
}

} // namespace gallery
