#pragma once

#include "commondlg3/export.h"
#include "commondlg3/message_options.h"
#include "commondlg3/message_window.h"

#include <cstddef>
#include <functional>
#include <memory>

namespace commondlg3 {

/// Shows messages that come by themselves, several at a time, in one window.
///
///     message_center_t center;                             // one for the program
///     center.raise(window);                                // tells, and returns at once
///     center.raise(window, [this](int answer) { ... });    // asks, and returns at once
///     if (center.ask(window) == message_window_t::result_yes) ...   // waits, as show_modal() does
///
/// A message that is raised again while it is shown is counted, and all who raised it get the one answer.
/// Different messages stand in a list, each with its own buttons: windows on top of each other would hide
/// what is below. Who looks at one message is not disturbed by another that comes.
///
/// Escape answers the message that is seen, the close box all of them, as their second buttons would. A
/// message that the user has silenced is answered with result_none, as are all when the window goes with its
/// parent or cannot be loaded.
///
/// For messages of work that goes on in the background. What the user has just asked for is answered by
/// show_modal(); problems of a page belong into its heading, a course of events into a log. Ownership: the
/// center keeps what it was given until it is answered; when it is destroyed, its window goes and nobody is
/// called, but who waits in ask() gets result_none. GUI thread.
/// @since 3.1
class COMMONDLG3_EXPORT message_center_t
{
public:
    using answered_t = std::function<void(int answer)>; ///< a message_window_t::result_t

    message_center_t();
    ~message_center_t();
    message_center_t(const message_center_t&) = delete;
    message_center_t& operator=(const message_center_t&) = delete;

    /// The window comes with one of the next turns of the event loop.
    void raise(const message_window_t& window, answered_t answered = {},
               const message_options_t& options = {});
    /// Raises a message and waits for its answer. Above a modal window that covers the center's, it is shown
    /// in a window of its own.
    int ask(const message_window_t& window, const message_options_t& options = {});

    /// How many different messages are waiting for an answer.
    [[nodiscard]] std::size_t get_count() const;

private:
    class impl_t;
    std::shared_ptr<impl_t> m_impl;
};

} // namespace commondlg3
