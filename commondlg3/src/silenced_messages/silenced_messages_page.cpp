#include "commondlg3/silenced_messages_page.h"

#include "commondlg3/text_utils.h"

#include <utility>

namespace commondlg3 {

silenced_messages_page_t::silenced_messages_page_t(settings_file_ptr_t file) : m_file(std::move(file)) {}

silenced_messages_page_t::~silenced_messages_page_t() = default;

std::string silenced_messages_page_t::get_name() const
{
    return "pref.silenced_messages";
}

std::string silenced_messages_page_t::get_title() const
{
    return translate_message("silenced_messages.list");
}

gen_helpers2::error_code_t silenced_messages_page_t::load()
{
    return m_file->load();
}

gen_helpers2::error_code_t silenced_messages_page_t::save()
{
    return m_file->save();
}

std::vector<gen_helpers2::path_t> silenced_messages_page_t::get_files() const
{
    if (m_file->get_path().is_empty())
        return {};
    return {m_file->get_path()};
}

pref_base_t* silenced_messages_page_t::create(wxWindow* parent)
{
    m_page = new silenced_messages_pp_t(silenced_messages_t(m_file->get()));
    m_page->create(parent);
    m_page->get_changed_signal().connect(m_page.get(), [signal = get_changed_signal()] { signal.emit(); });
    return m_page.get();
}

// What another program has written is in another storage.
void silenced_messages_page_t::show_kept()
{
    m_page->load_settings(silenced_messages_t(m_file->get()));
}

bool silenced_messages_page_t::is_changed() const
{
    return m_page && m_page->is_changed();
}

void silenced_messages_page_t::store()
{
    silenced_messages_t(m_file->get()).restore(m_page->get_restored());
    show_kept();
}

gen_helpers2::variant_bag_t silenced_messages_page_t::get_settings() const
{
    gen_helpers2::variant_bag_t settings;
    for (const silenced_message_t& message :
         m_page ? m_page->get_messages() : silenced_messages_t(m_file->get()).get_all())
        settings.put(message.name, true);
    return settings;
}

// Here they only come back, or stay.
void silenced_messages_page_t::set_settings(const gen_helpers2::variant_bag_t& settings)
{
    if (settings != get_settings())
        show_kept();
}

} // namespace commondlg3
