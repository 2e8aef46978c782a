#pragma once

#include "commondlg3/inplace_ctrl.h"

#include "contents.h"
#include "event_log.h"

#include <gen_helpers2/intrusive_pointer.h>
#include <wx_helpers1/progress_impl.h>

#include <boost/thread/lock_guard.hpp>
#include <boost/thread/mutex.hpp>

#include <atomic>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace commondlg3 {

/// One remembered line; the text is the one that its caption shows.
struct messenger_entry_t
{
    msngr2::ESeverity severity;
    std::string_view text;
    std::int64_t time; ///< in milliseconds since 1970; line_store_t::no_time when nobody knows it
};

/// A line as it is saved.
struct saved_line_t
{
    msngr2::ESeverity severity;
    std::string_view text; ///< in the bag that it was read from
    std::int64_t time;     ///< when it was said, where that was kept; in milliseconds since 1970
};

gen_helpers2::error_code_t read_saved_line(const gen_helpers2::variant_bag_t& entry, saved_line_t& line);

/// An entry of the log: takes lines, and remembers them with its element in the log. GUI thread, except
/// say().
class event_entry_t : public msngr2::IMessenger, public gen_helpers2::subscriber_base_t
{
public:
    using ptr_t = gen_helpers2::intrusive_pointer_t<event_entry_t>;
    using tag_t = inplace_ctrl_t::tag_t;
    using callback_t = inplace_ctrl_t::callback_t;

    event_entry_t(event_log_t& log, tag_t tag);
    ~event_entry_t() override;

    /// Takes its element out of the log; what is said to it afterwards goes nowhere.
    virtual void hide();
    /// The same for what it holds, which the caller gets.
    virtual entry_contents_t take() = 0;
    /// What say() does with a text that may hold any bytes.
    /// @param time when it was said, in milliseconds since 1970
    virtual void say_text(msngr2::ESeverity severity, std::string_view text, std::int64_t time) = 0;
    [[nodiscard]] virtual gen_helpers2::error_code_t save(gen_helpers2::variant_bag_t& bag);
    [[nodiscard]] virtual gen_helpers2::error_code_t update_message(const message_t::ptr_t& new_msg,
                                                                    const callback_t* callback) = 0;
    virtual std::string get_type() const = 0;
    virtual msngr2::IProgress* get_progress() = 0;
    virtual void hide_buttons() = 0;
    /// Any thread: its worker has said something about its progress, or that it has ended.
    virtual void note_sign() = 0;
    virtual void note_end() = 0;
    /// Any thread: has a worker that waits look again whether it must.
    virtual void wake() = 0;
    /// Looks what is to be told of its progress.
    virtual void look_at_progress() = 0;
    /// Shows one line at the end of `parent`. @param status the status line's caption, made when there is
    /// none
    virtual void say_impl(vdxcfrw7::CVisualElement* parent, vdxcfrw7::CCaption** status,
                          msngr2::ESeverity severity, std::string_view text);

    /// Says the lines of a saved entry again.
    [[nodiscard]] static gen_helpers2::error_code_t load(const gen_helpers2::variant_bag_t& bag,
                                                         msngr2::IMessenger* msngr);

    bool has_severity(int severity) const { return (m_severities & severity) != 0; }

    /// Calls fn(const messenger_entry_t&) for each remembered line in the order said.
    template <class F>
    void for_each_line(F&& fn) const
    {
        if (!m_element)
            return;
        m_element->GetLines().for_each([&fn](const vdxcfrw7::line_t& line, std::uint64_t count,
                                             std::int64_t time) {
            for (std::uint64_t said = line.has(vdxcfrw7::line_t::status) ? count : 0; said < count; ++said)
                fn(messenger_entry_t{static_cast<msngr2::ESeverity>(line.severity), line.get_text(), time});
        });
    }

    void add_ref() const noexcept { m_count.fetch_add(1, std::memory_order_relaxed); }
    void release() const noexcept
    {
        if (m_count.fetch_sub(1, std::memory_order_acq_rel) == 1)
            delete this;
    }

protected:
    /// Takes its element out of the log and gives its lines to the caller.
    vdxcfrw7::line_store_t remove_element();

    event_log_t* m_log;
    vdxcfrw7::CMessageElement* m_element = nullptr; // the log's; null after hide()
    vdxcfrw7::CCaption* m_status = nullptr;         // points to m_status_caption once there is one
    // Of the line that is being shown, beside what was said.
    std::int64_t m_time = vdxcfrw7::line_store_t::no_time;
    std::uint32_t m_said = 1; // so often in a row
    const tag_t m_tag;
    bool m_copy_texts = true; // false while the arena that a line's text lives in is to be the element's

    gen_helpers2::signal_t<int> m_button_signal;

private:
    std::unique_ptr<vdxcfrw7::CCaption> m_status_caption;
    bool m_show_debug;
    int m_severities = 0;
    mutable std::atomic<long> m_count{0};
};

inline void intrusive_ptr_add_ref(const event_entry_t* entry) noexcept
{
    entry->add_ref();
}
inline void intrusive_ptr_release(const event_entry_t* entry) noexcept
{
    entry->release();
}

} // namespace commondlg3
