#include "silenced_preferences.h"

#include "missing_resource.h"
#include "silenced_page.h"

namespace gallery {

using commondlg3::silenced_messages_pp_t;
using commondlg3::silenced_messages_t;

std::string silenced_preferences_t::get_name() const
{
    return silenced_object;
}

std::string silenced_preferences_t::get_title() const
{
    return text("preferences.page.silenced");
}

std::string silenced_preferences_t::get_search_words() const
{
    return text("preferences.page.silenced.words");
}

commondlg3::pref_base_t* silenced_preferences_t::create(wxWindow* parent)
{
    auto* page = new silenced_messages_pp_t(silenced_messages_t(m_store->get()));
    m_page = page;
    page->create(parent);
    page->get_changed_signal().connect(page, [signal = get_changed_signal()] { signal.emit(); });
    return page;
}

std::vector<std::string> silenced_preferences_t::get_names() const
{
    std::vector<std::string> names;
    for (const auto& message :
         m_page ? m_page->get_messages() : silenced_messages_t(m_store->get()).get_all())
        names.push_back(message.name);
    return names;
}

gen_helpers2::variant_bag_t silenced_preferences_t::get_settings() const
{
    gen_helpers2::variant_bag_t settings;
    for (const std::string& name : get_names())
        settings.put(name, true);
    return settings;
}

// Messages are silenced where they are shown; here they only come back, or stay.
void silenced_preferences_t::set_settings(const gen_helpers2::variant_bag_t& settings)
{
    if (settings != get_settings())
        m_page->load_settings();
}

nlohmann::json silenced_preferences_t::get_data() const
{
    return {{"silenced", get_names()}};
}

} // namespace gallery
