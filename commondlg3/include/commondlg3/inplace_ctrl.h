#pragma once

#include "commondlg3/export.h"
#include "commondlg3/inplace_contents.h"
#include "commondlg3/inplace_message.h"

#include <gen_helpers2/error_code.h>
#include <gen_helpers2/signal.h>
#include <gen_helpers2/variant_bag.h>
#include <msngr2/messenger.h>
#include <msngr2/progress.h>

#include <wx/panel.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

namespace vdxcfrw7 {
class CEventLog;
struct log_link_t;
} // namespace vdxcfrw7

namespace commondlg3 {

class inplace_ctrl_impl_t;

/// A log of messages inside a dialog or page, in place of message boxes that pop up.
///
/// Each entry is a message (icon, caption, text, buttons) or a progress entry (with a gauge and Cancel); both
/// take further lines, from any thread and of any number. Use it where long work reports, or where messages
/// must not stop the user. When the user must answer before going on, use show_modal(const message_window_t&,
/// wxWindow*).
///
///     auto* log = new inplace_ctrl_t(this, false);
///     sizer->Add(log, 1, wxEXPAND);
///     const auto tag = log->add_progress(message, callback);
///     msngr2::IProgress* progress = log->get_progress(tag);
///     msngr2::IMessenger* messenger = log->get_messenger(tag);
///     start_worker([=] {
///         progress->start("Reading", 10);
///         messenger->say(msngr2::sev_warning, "a.txt is empty");
///     });
///
/// Below a gauge stands how long the work is going to take, once that can be trusted, and how fast it is; that
/// nothing was heard of its worker for some time; that it was asked to stop and has not answered yet. A total
/// that is not above zero is one that nobody knows: the bar then shows only that something is going on. Work
/// that was cancelled leaves its bar where it was.
///
/// The view follows the end while it shows the end; otherwise what the reader sees stays where it is. Text
/// can be selected and copied; Ctrl+F opens a bar to find and to filter.
///
/// Ownership: a window, destroyed by its parent. Thread: GUI, except the messenger and the progress that it
/// hands out. Both are one each for the whole control: asking for another entry's points the same object at
/// that one. They may be called from any thread and stay valid until the process ends: after the entry's, or
/// the control's, end they do nothing. Do not ask for another entry's while a worker reports through them.
/// Errors: an unknown tag is an error code, or null, or false.
class COMMONDLG3_EXPORT inplace_ctrl_t : public wxPanel
{
public:
    /// Names an entry; counted from 0 and never used again.
    using tag_t = std::uint32_t;
    /// Carries the id of the button that was pressed.
    using callback_t = gen_helpers2::signal_t<int>;

    /// @param show_debug whether lines with msngr2::sev_debug are shown; otherwise they are dropped
    inplace_ctrl_t(wxWindow* parent, bool show_debug);
    ~inplace_ctrl_t() override;

    /// Adds an entry at the end. Entries before it offer no buttons any more. The record must not be null.
    tag_t add_message(const message_t::ptr_t& msg, const callback_t& callback);
    /// The same with a gauge, and Cancel in place of the message's buttons.
    tag_t add_progress(const progress_message_t::ptr_t& msg, const callback_t& callback);
    /// Not there yet: an assertion, and 0.
    tag_t add_custom(const custom_message_t::ptr_t& msg);

    /// Replaces an entry's head, text, buttons and callback; its lines stay.
    gen_helpers2::error_code_t update_message(tag_t tag, const message_t::ptr_t& new_msg,
                                              const callback_t& callback);
    /// Takes an entry out, with its lines; its worker may go on, and is not heard.
    gen_helpers2::error_code_t erase(tag_t tag);
    /// Takes all entries out. Always succeeds.
    gen_helpers2::error_code_t clear();

    /// How much the log keeps; 0: as much as comes.
    /// @since 3.1
    struct limits_t
    {
        std::size_t lines = 0; ///< entries count as one more each
        std::size_t bytes = 0; ///< of memory
    };
    /// Has the oldest lines go when there are more: entries as a whole, or of one that is too long for that 1024
    /// lines and more at a time, with a line in their place that says how many. A sixteenth more than needed goes,
    /// so that this is not done for each line. The newest entry, work that has not ended, and the entry that
    /// get_messenger() was asked for last stay, with about their last 1024 lines. What the reader sees stays where
    /// it is. Lines that went are not saved, nor counted.
    /// @since 3.1
    void set_limits(const limits_t& limits);

    /// What becomes of lines for which there is no room in the queue.
    /// @since 3.1
    enum class when_full_t
    {
        grow, ///< they wait in memory
        wait, ///< the worker waits
        drop  ///< they are lost, and a line says how many
    };
    /// How much may wait to be shown, of each entry.
    /// @since 3.1
    struct queue_limit_t
    {
        std::size_t bytes = std::size_t(64) << 20;
        when_full_t when_full = when_full_t::grow;
    };
    /// What becomes of lines that are said faster than they can be shown, once so many bytes of an entry's wait
    /// to be. The GUI thread never waits, and no worker waits for ever: not once its work was cancelled or its
    /// entry has gone, nor when the GUI thread shows nothing for two seconds, as it may be waiting for the worker.
    /// @since 3.1
    void set_queue_limit(const queue_limit_t& limit);

    /// By which lines are said to the entry, from any thread; null for an unknown tag.
    msngr2::IMessenger* get_messenger(tag_t tag);
    /// Shows the entry's gauge and takes its buttons away; null for an unknown tag, as of one that was cleared.
    msngr2::IProgress* get_progress(tag_t tag);

    /// Whether a line with one of these bits was said to the entry. Status lines do not count.
    bool has_severity(tag_t tag, msngr2::ESeverity severity);
    /// Whether something was added or removed since the control was made, saved or loaded.
    bool has_changes();

    /// Writes all entries and their lines; buttons and animations are not kept.
    gen_helpers2::error_code_t save(gen_helpers2::variant_bag_t& bag);
    /// Adds the entries of a bag at the end, as messages; an entry that is damaged keeps what could be read
    /// of it.
    gen_helpers2::error_code_t load(const gen_helpers2::variant_bag_t& bag);

    /// Writes what the log shows now into a file, as a text: a worker does, while the log goes on. See
    /// text_format_t. Nobody waits for it, however much it is, and entries may go meanwhile.
    /// @param done called on the GUI thread when it is over, with "gh2::error::Canceled" when
    /// `options.goes_on` gave it up; not once the control has gone, though the file is written all the same.
    /// May be empty
    /// @since 3.1
    void save_as(const gen_helpers2::path_t& file, text_format_t format, const text_options_t& options = {},
                 std::function<void(const gen_helpers2::error_code_t&)> done = {});
    /// Asks the user where, writes it there in the format that the name ends with, and shows a message when that
    /// fails. Times are written where the log shows them.
    /// @since 3.1
    void ask_save_as();

    /// Adds the entries of a file at the end, of any size: it is read by a worker, and what was read is seen
    /// meanwhile. It may be one that is still being written by inplace_contents_t::save_later(). A file that
    /// cannot be read, or not to its end, is logged and kept as `<file>.damaged`; one that does not exist
    /// holds nothing.
    /// @since 3.1
    void load_file(const gen_helpers2::path_t& file);
    /// Takes all entries out, as clear() does, and gives them to the caller, to be saved or freed where
    /// nobody waits for it. Lines that were said and are not shown yet are among them, and so is all of a
    /// file that is still being read. Nothing counts as changed then.
    /// @since 3.1
    [[nodiscard]] inplace_contents_t take_contents();

    /// What the context menu offers beside "Copy to clipboard": nothing at first.
    /// @since 3.1
    enum offer_t
    {
        offer_view = 1,  ///< copying, finding, and how the lines are shown
        offer_clear = 2, ///< taking all entries out
        offer_save = 4   ///< what ask_save_as() does
    };
    /// @param offers of offer_t, added up
    void offer(int offers);
    /// How the log is shown, to be kept from one run to the next.
    /// @since 3.1
    struct view_t
    {
        /// What stands before each line.
        enum times_t
        {
            no_times,    ///< nothing
            clock_times, ///< the time of day
            entry_times  ///< since the entry began
        };
        times_t times = no_times; ///< what stands before each line
        bool wrap = true;         ///< otherwise lines scroll to the side
        bool collapse = false;    ///< a line that is said again and again shows once, with a count
        int zoom = 100;           ///< in percent, from 50 to 300
        bool copy_times = false;  ///< before each line that is selected and copied, with the date
    };
    /// Shows it so; view_changed() is not raised. What is out of bounds is taken to the nearest.
    /// @since 3.1
    void set_view(const view_t& view);
    /// @since 3.1
    view_t get_view() const;
    /// The user changed how it is shown.
    /// @since 3.1
    gen_helpers2::signal_t<>& view_changed();

    /// The user clicked a link, or pressed Enter on one: an address of the web, or a path with a line, in
    /// any text, or a link of a message. The log opens nothing itself; what a relative path belongs to, the
    /// host knows.
    ///
    ///     log->link_activated().connect(this, [](const vdxcfrw7::log_link_t& link) { ... });
    /// @since 3.1
    gen_helpers2::signal_t<vdxcfrw7::log_link_t>& link_activated();
    /// Whether save() keeps the times of lines, too; not at first. They are read back either way.
    /// @since 3.1
    void keep_times(bool keep);

    /// Copies the whole log as text.
    void handle_copy(wxCommandEvent& event);
    /// Shows the context menu; the point is in pixels of this window.
    void pupup_menu(wxPoint point);

    /// What the notes below the gauges are judged by instead of the system's clock, for tests; each call judges
    /// all of them anew. Empty: the system's again.
    /// @since 3.1
    void set_clock(std::function<std::chrono::steady_clock::time_point()> clock);

    /// The log as the framework sees it; for tests and for hosts that add to its window.
    vdxcfrw7::CEventLog& get_log();

private:
    std::unique_ptr<inplace_ctrl_impl_t> m_impl;
};

} // namespace commondlg3
