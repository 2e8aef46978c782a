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
// The text of batches from this size on is taken over, that of smaller ones copied: an arena has room to
// spare.
constexpr std::size_t worth_adopting = std::size_t(128) * 1024;
constexpr std::size_t lines_between_looks_at_the_clock = 32;

std::int64_t milliseconds_now()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

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

void message_entry_t::say(msngr2::ESeverity severity, const char* text)
{
    if (text)
        say_text(severity, text, milliseconds_now());
}

void message_entry_t::say_text(msngr2::ESeverity severity, std::string_view text, std::int64_t time)
{
    note_sign();
    boost::lock_guard<boost::mutex> lock(m_mutex);
    if (m_closed)
        return;
    if (!m_pending)
        m_pending = std::make_unique<line_batch_t>();
    m_pending->add(severity, text, time, m_log->GetCollapse());
    if (m_task.must_be_posted())
        wx_helpers1::tasks::PostSignal(m_say_signal);
}

void message_entry_t::say_signal_handler()
{
    std::unique_ptr<line_batch_t> taken;
    {
        boost::lock_guard<boost::mutex> lock(m_mutex);
        taken = std::move(m_pending);
        m_task.begins();
    }
    if (taken)
        show_batch(std::move(taken));
    if (m_watch.get_kind() == progress_watch_t::kind_t::silent)
        look_at_progress();
}

void message_entry_t::show_batch(std::unique_ptr<line_batch_t> batch)
{
    if (!m_element)
        return;
    m_showing.push_back(std::move(batch));
    m_log->AddWork(this, [this] { return show_some(); });
}

bool message_entry_t::show_some()
{
    while (!m_showing.empty()) {
        line_batch_t& batch = *m_showing.front();
        const bool adopt = batch.bytes >= worth_adopting && batch.passing_bytes * 4 < batch.bytes;
        if (adopt && batch.shown == 0)
            m_element->Adopt(std::move(batch.texts));
        m_copy_texts = !adopt;
        while (batch.shown < batch.lines.size()) {
            const line_batch_t::line_t& line = batch.lines[batch.shown++];
            m_time = batch.time_of(line);
            m_said = line.count;
            say_impl(m_element, &m_status, line.severity, line.text());
            if (batch.shown % lines_between_looks_at_the_clock == 0 && m_log->enough())
                break;
        }
        m_copy_texts = true;
        m_said = 1;
        if (batch.shown < batch.lines.size())
            return true;
        m_showing.pop_front();
        if (m_log->enough())
            return !m_showing.empty();
    }
    return false;
}

} // namespace commondlg3
