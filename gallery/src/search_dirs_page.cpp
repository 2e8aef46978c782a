#include "search_dirs_page.h"

#include "missing_resource.h"
#include "search_dirs_json.h"

#include <string>

namespace gallery {

using commondlg3::search_dirs_tab_t;

gen_helpers2::error_code_t search_dirs_store_t::load()
{
    const auto before = m_file.get();
    const auto result = m_file.load();
    if (!m_container || m_file.get() != before)
        m_container = FF_2_13::make_search_dir_container(m_file.get());
    return result;
}

search_dirs_page_t::search_dirs_page_t(std::shared_ptr<search_dirs_store_t> store,
                                       FF_2_13::search_category_t category, std::string name)
    : m_store(std::move(store)), m_category(category), m_name(std::move(name))
{
}

std::string search_dirs_page_t::get_title() const
{
    return text("preferences.page.search_dirs." + m_name);
}

std::string search_dirs_page_t::get_search_words() const
{
    return text("preferences.page.search_dirs.words");
}

commondlg3::pref_base_t* search_dirs_page_t::create(wxWindow* parent)
{
    auto* tab = new search_dirs_tab_t(m_store->get(), m_category);
    m_tab = tab;
    tab->set_extras(search_dirs_tab_t::can_skip | search_dirs_tab_t::tell_sharing);
    tab->create(parent);
    tab->get_changed_signal().connect(tab, [signal = get_changed_signal()] { signal.emit(); });
    return tab;
}

std::string search_dirs_page_t::get_group() const
{
    return text("preferences.page.search_dirs");
}

void search_dirs_page_t::show_kept()
{
    m_tab->set_data(m_store->get(), m_category);
}

bool search_dirs_page_t::is_changed() const
{
    return m_tab && m_tab->is_changed();
}

void search_dirs_page_t::store()
{
    m_tab->on_ok();
}

gen_helpers2::error_code_t search_dirs_page_t::save()
{
    return m_store->get()->save();
}

std::vector<gen_helpers2::path_t> search_dirs_page_t::get_files() const
{
    return {m_store->get_path()};
}

// The list is one setting, as its order counts.
gen_helpers2::variant_bag_t search_dirs_page_t::get_settings() const
{
    gen_helpers2::variant_bag_t settings;
    auto& list = settings.add_child("directories");
    const auto add = [&list](const std::string& path, bool recursive, bool enabled,
                             const std::string& comment) {
        auto& dir = list.add_child("directory");
        dir.put("path", path);
        if (recursive)
            dir.put("recursive", true);
        if (!enabled)
            dir.put("skipped", true);
        if (!comment.empty())
            dir.put("comment", comment);
    };
    if (m_tab)
        for (const auto& dir : m_tab->get_shown_dirs())
            add(dir.path, dir.recursive, dir.enabled, dir.comment);
    else
        for (const auto at = m_store->get()->get_dirs(m_category); !at->at_end(); at->next())
            add(at->get_path(), at->is_recursive(), at->is_enabled(), at->get_comment());
    return settings;
}

void search_dirs_page_t::set_settings(const gen_helpers2::variant_bag_t& settings)
{
    const auto* list = settings.find_child("directories");
    if (!list)
        return;
    std::vector<search_dirs_tab_t::shown_dir_t> dirs;
    list->for_each_child("directory", [&dirs](const gen_helpers2::variant_bag_t& dir) {
        if (const auto path = dir.find_text("path"); path && !path->empty())
            dirs.push_back({*path, dir.get<gen_helpers2::variant_t>("recursive").get<bool>(),
                            !dir.get<gen_helpers2::variant_t>("skipped").get<bool>(),
                            dir.find_text("comment").value_or(std::string())});
    });
    m_tab->set_shown_dirs(dirs);
}

gen_helpers2::variant_bag_t search_dirs_page_t::get_defaults() const
{
    gen_helpers2::variant_bag_t none;
    none.add_child("directories");
    return none;
}

std::vector<search_dirs_page_t::setting_t> search_dirs_page_t::get_setting_controls() const
{
    return {{"directories", m_tab.get(), get_title()}};
}

nlohmann::json search_dirs_page_t::get_data() const
{
    return dirs_to_json(m_store->get(), m_category);
}

} // namespace gallery
