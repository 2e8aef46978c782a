#include "commondlg3/inplace_ctrl.h"

#include "inplace_ctrl_impl.h"

#include <utility>

// What a host sees; what it does is in inplace_ctrl_impl.cpp.
namespace commondlg3 {

inplace_ctrl_t::inplace_ctrl_t(wxWindow* parent, bool show_debug)
    : wxPanel(parent), m_impl(std::make_unique<inplace_ctrl_impl_t>(this, show_debug))
{
}

inplace_ctrl_t::~inplace_ctrl_t() = default;

inplace_ctrl_t::tag_t inplace_ctrl_t::add_message(const message_t::ptr_t& msg, const callback_t& callback)
{
    return m_impl->add(msg, callback);
}

inplace_ctrl_t::tag_t inplace_ctrl_t::add_progress(const progress_message_t::ptr_t& msg,
                                                   const callback_t& callback)
{
    return m_impl->add(msg, callback);
}

inplace_ctrl_t::tag_t inplace_ctrl_t::add_custom(const custom_message_t::ptr_t& msg)
{
    return m_impl->add_custom(msg);
}

gen_helpers2::error_code_t inplace_ctrl_t::update_message(tag_t tag, const message_t::ptr_t& new_msg,
                                                          const callback_t& callback)
{
    return m_impl->update_message(tag, new_msg, callback);
}

gen_helpers2::error_code_t inplace_ctrl_t::erase(tag_t tag)
{
    return m_impl->erase(tag);
}

gen_helpers2::error_code_t inplace_ctrl_t::clear()
{
    return m_impl->clear();
}

void inplace_ctrl_t::set_limits(const limits_t& limits)
{
    m_impl->set_limits(limits);
}

void inplace_ctrl_t::set_queue_limit(const queue_limit_t& limit)
{
    m_impl->set_queue_limit(limit);
}

msngr2::IMessenger* inplace_ctrl_t::get_messenger(tag_t tag)
{
    return m_impl->get_messenger(tag);
}

msngr2::IProgress* inplace_ctrl_t::get_progress(tag_t tag)
{
    return m_impl->get_progress(tag);
}

bool inplace_ctrl_t::has_severity(tag_t tag, msngr2::ESeverity severity)
{
    return m_impl->has_severity(tag, severity);
}

bool inplace_ctrl_t::has_changes()
{
    return m_impl->has_changes();
}

gen_helpers2::error_code_t inplace_ctrl_t::save(gen_helpers2::variant_bag_t& bag)
{
    return m_impl->save(bag);
}

gen_helpers2::error_code_t inplace_ctrl_t::load(const gen_helpers2::variant_bag_t& bag)
{
    return m_impl->load(bag);
}

void inplace_ctrl_t::load_file(const gen_helpers2::path_t& file)
{
    m_impl->load_file(file);
}

inplace_contents_t inplace_ctrl_t::take_contents()
{
    return m_impl->take_contents();
}

void inplace_ctrl_t::offer(int offers)
{
    m_impl->offer(offers);
}

void inplace_ctrl_t::set_view(const view_t& view)
{
    m_impl->set_view(view);
}

inplace_ctrl_t::view_t inplace_ctrl_t::get_view() const
{
    return m_impl->get_view();
}

gen_helpers2::signal_t<>& inplace_ctrl_t::view_changed()
{
    return m_impl->get_log().options_changed();
}

void inplace_ctrl_t::keep_times(bool keep)
{
    m_impl->get_log().keep_times(keep);
}

void inplace_ctrl_t::save_as(const gen_helpers2::path_t& file, text_format_t format,
                             const text_options_t& options,
                             std::function<void(const gen_helpers2::error_code_t&)> done)
{
    m_impl->save_as(file, format, options, std::move(done));
}

void inplace_ctrl_t::ask_save_as()
{
    m_impl->ask_save_as();
}

void inplace_ctrl_t::handle_copy(wxCommandEvent&)
{
    m_impl->copy();
}

void inplace_ctrl_t::pupup_menu(wxPoint point)
{
    m_impl->popup_menu(point);
}

void inplace_ctrl_t::set_clock(std::function<std::chrono::steady_clock::time_point()> clock)
{
    m_impl->set_clock(std::move(clock));
}

gen_helpers2::signal_t<vdxcfrw7::log_link_t>& inplace_ctrl_t::link_activated()
{
    return m_impl->get_log().link_activated();
}

vdxcfrw7::CEventLog& inplace_ctrl_t::get_log()
{
    return m_impl->get_log();
}

} // namespace commondlg3
