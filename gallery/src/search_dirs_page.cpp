#include "search_dirs_page.h"

#include "missing_resource.h"
#include "search_dirs_json.h"

#include <string>

namespace gallery {

using commondlg3::search_dirs_tab_t;

gen_helpers2::error_code_t search_dirs_store_t::load()
{
    if (m_container)
        return {}; // it has been told already
    const auto result = m_file.load();
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
    tab->create(parent);
    // The dialog looks at its pages when a control says that it was changed; a list in place of one says it
    // here.
    tab->get_changed_signal().connect(tab, [tab] {
        wxCommandEvent event(wxEVT_TEXT, tab->GetId());
        event.SetEventObject(tab);
        tab->ProcessWindowEvent(event);
    });
    return tab;
}

bool search_dirs_page_t::is_changed() const
{
    return m_unwritten || (m_tab && m_tab->is_changed());
}

gen_helpers2::error_code_t search_dirs_page_t::apply()
{
    if (!m_tab)
        return {};
    m_tab->on_ok();
    const auto result = m_store->get()->save();
    m_unwritten = result.failed();
    return result;
}

nlohmann::json search_dirs_page_t::get_data() const
{
    return dirs_to_json(m_store->get(), m_category);
}

} // namespace gallery
