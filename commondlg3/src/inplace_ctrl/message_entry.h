#pragma once

#include "event_entry.h"

namespace commondlg3 {

/// An entry made from a message or from a progress record.
class message_entry_t : public event_entry_t
{
public:
    using ptr_t = gen_helpers2::intrusive_pointer_t<message_entry_t>;
    static constexpr char type_name[] = "message_entry_t";

    message_entry_t(event_log_t& log, tag_t tag, const message_t::ptr_t& msg);
    message_entry_t(event_log_t& log, tag_t tag, const progress_message_t::ptr_t& msg);

    /// Any thread: queues the line, and has it shown on the GUI thread with one posted task however many
    /// there are.
    void say(msngr2::ESeverity severity, const char* text) override;

    void hide() override;
    gen_helpers2::error_code_t save(gen_helpers2::variant_bag_t& bag) override;
    gen_helpers2::error_code_t update_message(const message_t::ptr_t& new_msg,
                                              const callback_t* callback) override;
    std::string get_type() const override { return type_name; }
    msngr2::IProgress* get_progress() override;
    void hide_buttons() override;

    void connect(const callback_t& callback);

private:
    struct pending_line_t
    {
        const char* text; // in the batch's arena
        msngr2::ESeverity severity;
    };
    /// Lines that were said and are not shown yet.
    struct batch_t
    {
        vdxcfrw7::text_arena_t texts;
        std::vector<pending_line_t> lines;
        std::size_t bytes = 0;
        std::size_t passing_bytes = 0; // of lines that are not kept: status and debug
        std::size_t shown = 0;
    };

    message_entry_t(event_log_t& log, tag_t tag, const message_t::ptr_t& msg, bool is_progress);
    void update_header(vdxcfrw7::CMessageElement* header);
    void update_text();
    void update_buttons();
    void add_cancel_button();
    void on_button_pressed(int id);
    void cancel_button_pressed(vdxcfrw7::CButton* button);

    void say_signal_handler();
    bool show_some();

    void start(const std::string& text);
    void increase(int steps);
    void message(const std::string& text);
    void cancel();
    std::string more_text() const;

    message_t::ptr_t m_msg;
    const bool m_is_progress;
    wx_helpers1::ProgressImpl m_progress;
    bool m_progress_connected = false;

    boost::mutex m_mutex; // guards the three below
    std::unique_ptr<batch_t> m_pending;
    bool m_posted = false;
    bool m_closed = false;

    gen_helpers2::signal_t<> m_say_signal;
    std::deque<std::unique_ptr<batch_t>> m_showing;
};

} // namespace commondlg3
