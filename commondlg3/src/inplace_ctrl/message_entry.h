#pragma once

#include "event_entry.h"
#include "progress_watch.h"

#include <wx_helpers1/tasks.h>

#include <wx/timer.h>

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace commondlg3 {

/// An entry made from a message or from a progress record.
class message_entry_t : public event_entry_t
{
public:
    using ptr_t = gen_helpers2::intrusive_pointer_t<message_entry_t>;
    static constexpr char type_name[] = "message_entry_t";
    static constexpr int gauge_steps = 800;

    message_entry_t(event_log_t& log, tag_t tag, const message_t::ptr_t& msg);
    message_entry_t(event_log_t& log, tag_t tag, const progress_message_t::ptr_t& msg);

    /// Any thread: queues the line, and has it shown on the GUI thread with one posted task however many
    /// there are.
    void say(msngr2::ESeverity severity, const char* text) override;

    void say_text(msngr2::ESeverity severity, std::string_view text, std::int64_t time) override;
    /// GUI thread: shows these lines behind all that are waiting.
    void show_batch(std::unique_ptr<line_batch_t> batch);

    void hide() override;
    entry_contents_t take() override;
    [[nodiscard]] gen_helpers2::error_code_t save(gen_helpers2::variant_bag_t& bag) override;
    [[nodiscard]] gen_helpers2::error_code_t update_message(const message_t::ptr_t& new_msg,
                                                            const callback_t* callback) override;
    std::string get_type() const override { return type_name; }
    msngr2::IProgress* get_progress() override;
    void hide_buttons() override;
    void note_sign() override { m_signs.fetch_add(1, std::memory_order_relaxed); }
    void note_end() override;
    void wake() override { m_room.notify_all(); }
    void look_at_progress() override;

    void connect(const callback_t& callback);
    /// The picture as it is saved comes from here, so that one that many entries share is converted once.
    const wx_helpers1::picture_t& get_picture() const { return m_msg->picture; }
    /// Without lines and picture.
    void copy_head(entry_contents_t& copy) const;
    const vdxcfrw7::line_store_t& get_lines() const;
    /// Whether a worker may still report to it.
    bool is_at_work() const { return m_is_progress && !m_progress.is_finished(); }
    bool has_old_lines() const { return m_element && m_element->GetOldBlocks() > 0; }
    /// About so many; whether any were there.
    bool drop_old_lines(std::size_t count);
    /// Whether this entry came from a file that is still read.
    void set_loading(bool loading) { m_loading = loading; }
    bool is_loading() const { return m_loading; }

private:
    message_entry_t(event_log_t& log, tag_t tag, const message_t::ptr_t& msg, bool is_progress);
    void update_header(vdxcfrw7::CMessageElement* header);
    void update_text();
    void update_buttons();
    void add_cancel_button(bool enabled);
    std::vector<std::unique_ptr<line_batch_t>> close();
    void on_button_pressed(int id);
    void cancel_button_pressed(vdxcfrw7::CButton* button);

    // In message_lines.cpp.
    void say_signal_handler();
    bool show_some();
    void show(std::unique_ptr<line_batch_t> batch);
    bool is_full() const;
    bool make_room(boost::unique_lock<boost::mutex>& lock, msngr2::ESeverity severity);
    void tell_lost();
    void shown(std::size_t bytes);

    // In message_progress.cpp.
    void start(const std::string& text);
    void ended();
    void increase(int steps);
    void message(const std::string& text);
    void cancel();
    std::string more_text() const;

    message_t::ptr_t m_msg;
    const bool m_is_progress;
    wx_helpers1::ProgressImpl m_progress;
    bool m_progress_connected = false;
    progress_watch_t m_watch;
    std::unique_ptr<wxTimer> m_look_again; // while work is under way
    bool m_cancel_seen = false;
    const vdxcfrw7::CButton* m_cancel_button = nullptr; // to be told from others only
    std::atomic<bool> m_watched{false};                 // whether the end of the work is to be told
    std::atomic<std::uint64_t> m_signs{0};              // how often the worker has said something
    bool m_loading = false;

    mutable boost::mutex m_mutex;       // guards those below, up to m_closed
    std::condition_variable_any m_room; // lines were shown, or nobody needs to wait any more
    std::size_t m_unshown = 0;          // bytes of lines that were taken to be shown
    std::uint64_t m_shown_pieces = 0;
    std::uint64_t m_lost = 0;  // lines that there was no room for, and nobody was told
    bool m_no_waiting = false; // the GUI thread does nothing
    std::unique_ptr<line_batch_t> m_pending;
    wx_helpers1::tasks::posted_task_t m_task;
    bool m_closed = false;

    gen_helpers2::signal_t<> m_say_signal;
    gen_helpers2::signal_t<> m_ended_signal;
    std::deque<std::unique_ptr<line_batch_t>> m_showing;
};

} // namespace commondlg3
