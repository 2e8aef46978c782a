#include "message_entry.h"

#include "commondlg3/text_utils.h"

#include <gen_helpers2/assertion.h>

#include <chrono>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace commondlg3 {
namespace {

constexpr char message_entry_unit[] = "inplace_ctrl";
} // namespace

message_entry_t::message_entry_t(event_log_t& log, tag_t tag, const message_t::ptr_t& msg)
    : message_entry_t(log, tag, msg, false)
{
}

message_entry_t::message_entry_t(event_log_t& log, tag_t tag, const progress_message_t::ptr_t& msg)
    : message_entry_t(log, tag, message_t::ptr_t(msg), true)
{
}

message_entry_t::message_entry_t(event_log_t& log, tag_t tag, const message_t::ptr_t& msg, bool is_progress)
    : event_entry_t(log, tag), m_msg(msg), m_is_progress(is_progress), m_progress(gauge_steps)
{
    m_element->SetMoreText([this] { return more_text(); });
    m_element->GetGauge().SetRange(gauge_steps);
    update_header(m_element);
    update_text();
    if (m_is_progress) {
        m_element->GetGauge().Show(true);
        add_cancel_button(true);
    } else
        update_buttons();
    m_say_signal.connect(this, &message_entry_t::say_signal_handler);
}

void message_entry_t::update_header(vdxcfrw7::CMessageElement* header)
{
    if (!GH2_ASSERT_TEXT(header != nullptr, "header", message_entry_unit))
        return;
    vdxcfrw7::CCaption caption = header->GetHeader();
    caption.SetText(m_msg->caption);
    caption.SetImage(m_msg->picture);
}

void message_entry_t::update_text()
{
    vdxcfrw7::CCaption body = m_element->GetBody();
    body.UseHTML(true);
    body.SetText("<i>" + m_msg->message + " </i> ");
}

void message_entry_t::update_buttons()
{
    // Work that is under way can be cancelled, whatever is said about it meanwhile.
    const bool cancelable = m_is_progress && !m_progress.is_finished();
    if (cancelable && m_msg->buttons.empty() && m_element->GetButtons().size() == 1)
        return; // the focus may be there
    m_element->ClearButtons();
    for (const message_button_t& button : m_msg->buttons) {
        vdxcfrw7::CButton& made = m_element->AddButton(button.id, button.text, button.flag);
        made.pressed().connect(this,
                               [this](vdxcfrw7::CButton* pressed) { on_button_pressed(pressed->GetId()); });
    }
    if (cancelable)
        add_cancel_button(!m_progress.isCanceled());
}

void message_entry_t::add_cancel_button(bool enabled)
{
    vdxcfrw7::CButton& button =
        m_element->AddButton(standard_message_t::button_cancel, translate_message("btn.cancel"), false);
    button.Enable(enabled);
    m_cancel_button = &button;
    button.pressed().connect(this, [this](vdxcfrw7::CButton* pressed) { cancel_button_pressed(pressed); });
}

void message_entry_t::on_button_pressed(int id)
{
    const ptr_t keep(this); // the callback may erase this entry
    hide_buttons();
    const auto signal = m_button_signal;
    signal.emit(id);
}

void message_entry_t::cancel_button_pressed(vdxcfrw7::CButton* button)
{
    button->Enable(false);
    m_progress.cancel();
    wake();
    look_at_progress();
}

void message_entry_t::hide_buttons()
{
    if (m_element)
        m_element->ShowButtons(false);
}

void message_entry_t::connect(const callback_t& callback)
{
    m_button_signal = gen_helpers2::signal_t<int>();
    m_button_signal.connect(callback);
}

std::vector<std::unique_ptr<line_batch_t>> message_entry_t::close()
{
    std::vector<std::unique_ptr<line_batch_t>> unshown(std::make_move_iterator(m_showing.begin()),
                                                       std::make_move_iterator(m_showing.end()));
    m_showing.clear();
    {
        boost::lock_guard<boost::mutex> lock(m_mutex);
        m_closed = true;
        if (m_pending)
            unshown.push_back(std::move(m_pending));
    }
    wake();
    // Posted emissions find nobody from here on, wherever this entry's last reference goes.
    m_look_again.reset();
    m_watched = false;
    m_say_signal.disconnect_all();
    m_ended_signal.disconnect_all();
    m_progress.start_signal().disconnect_all();
    m_progress.progressed_signal().disconnect_all();
    m_progress.message_signal().disconnect_all();
    m_progress.cancel_signal().disconnect_all();
    m_log->CancelWork(this);
    // What the host gave goes here, on its own thread, and not where a worker lets go of this entry.
    m_button_signal = gen_helpers2::signal_t<int>();
    m_msg = message_t::ptr_t(new message_t);
    return unshown;
}

void message_entry_t::hide()
{
    if (m_element)
        m_element->ClearButtons();
    free_lines({}, close());
    event_entry_t::hide();
}

void message_entry_t::copy_head(entry_contents_t& copy) const
{
    copy.tag = m_tag;
    copy.message = m_msg->message;
    copy.caption = m_msg->caption;
}

const vdxcfrw7::line_store_t& message_entry_t::get_lines() const
{
    static const vdxcfrw7::line_store_t none;
    return m_element ? m_element->GetLines() : none;
}

entry_contents_t message_entry_t::take()
{
    entry_contents_t contents;
    copy_head(contents);
    contents.unshown = close();
    if (m_element)
        m_element->ClearButtons();
    contents.lines = remove_element();
    return contents;
}

gen_helpers2::error_code_t message_entry_t::save(gen_helpers2::variant_bag_t& bag)
{
    if (!m_msg->save(bag).succeeded())
        return gen_helpers2::error_code_t::invalid_value("m_msg->save(bag).succeeded()");
    return event_entry_t::save(bag);
}

gen_helpers2::error_code_t message_entry_t::update_message(const message_t::ptr_t& new_msg,
                                                           const callback_t* callback)
{
    if (!new_msg)
        return gen_helpers2::error_code_t::invalid_parameter("new_msg");
    m_msg = new_msg;
    update_header(m_element);
    update_text();
    update_buttons();
    m_watch.answered();
    look_at_progress();
    // Only the newest entry offers buttons.
    m_element->ShowButtons(m_element->GetIndex() + 1 == m_log->GetElements().size());
    if (callback)
        connect(*callback);
    return {};
}

} // namespace commondlg3
