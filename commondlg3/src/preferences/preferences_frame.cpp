#include "commondlg3/preferences_frame.h"

#include "frame_impl.h"

#include <cfgmgr2/product_locations.h>

#include <utility>

namespace commondlg3 {

preferences_frame_t::preferences_frame_t()
{
    set_resource_object("dlg.preferences_frame");
    m_impl = std::make_unique<impl_t>(*this);
}

preferences_frame_t::~preferences_frame_t() = default;

void preferences_frame_t::add_page(preferences_page_ptr_t page)
{
    if (!page->get_help_topic().empty())
        set_help_id(0);
    m_impl->stack.add(std::move(page));
}

void preferences_frame_t::set_first_page(const std::string& name)
{
    m_impl->first_page = name;
}

void preferences_frame_t::set_memory(settings_file_ptr_t memory)
{
    m_impl->memory = std::move(memory);
}

void preferences_frame_t::set_settings_folder(const gen_helpers2::path_t& folder)
{
    m_impl->folder = folder;
}

std::vector<preferences_page_ptr_t> preferences_frame_t::get_pages() const
{
    std::vector<preferences_page_ptr_t> pages;
    for (const auto& each : m_impl->stack.all())
        pages.push_back(each.page);
    return pages;
}

bool preferences_frame_t::wants_restart() const
{
    return m_impl->wants_restart;
}

gen_helpers2::signal_t<const std::string&>& preferences_frame_t::get_page_signal()
{
    return m_impl->page_signal;
}

void preferences_frame_t::take_as_ours(const gen_helpers2::path_t& file)
{
    if (!m_impl->m_work)
        return;
    const auto known = m_impl->m_work->stamps.find(file.as_string());
    if (known != m_impl->m_work->stamps.end())
        known->second = gen_helpers2::file_stamp_t(file);
}

gen_helpers2::signal_t<bool>& preferences_frame_t::get_applied_signal()
{
    return m_impl->applied_signal;
}

bool preferences_frame_t::Show(bool show)
{
    if (show && is_initialized() && !IsShown())
        m_impl->begin_again();
    return dialog_base_t::Show(show);
}

void preferences_frame_t::on_init_dialog()
{
    m_impl->on_init_dialog();
}

void preferences_frame_t::handle_ok(wxCommandEvent&)
{
    m_impl->apply([this] { m_impl->end_with_ok(); });
}

void preferences_frame_t::on_help()
{
    set_help_topic(m_impl->get_help_topic());
    dialog_base_t::on_help();
}

void preferences_frame_t::end_dialog(int code)
{
    if (code != wxID_CANCEL || m_impl->may_leave())
        dialog_base_t::end_dialog(code);
}

void preferences_frame_t::fit_again()
{
    m_impl->fit_again();
}

} // namespace commondlg3
