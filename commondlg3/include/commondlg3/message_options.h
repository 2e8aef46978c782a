#pragma once

#include "commondlg3/export.h"
#include "commondlg3/message_window.h"

#include <functional>
#include <string>

class wxWindow;

namespace commondlg3 {

/// One of the two answers of a message window, in the host's words.
/// @since 3.1
struct message_answer_t
{
    /// Already translated; "&" marks the letter that is reached with Alt. Empty for the label that goes with
    /// the type of the buttons.
    std::string label;
    /// Whether this answer takes something away that cannot be brought back. It is never the default, and its
    /// button looks as the theme has such buttons look.
    bool destructive = false;
};

/// What a host may ask of a message window beyond message_window_t: names of its buttons, the default, and
/// what helps when the message is reported.
///
///     message_options_t options;
///     options.first.label = _("&Restart");
///     options.second.label = _("&Later");
///     options.default_answer = message_options_t::default_answer_t::second;
///     options.offers_report = true;
///     if (show_modal(window, options, this) == message_window_t::result_ok) // the buttons are OK and Cancel
///         restart();
///
/// A button whose label is a verb says what it does without the text above it. The type of the buttons still
/// decides how many there are and what they answer. Escape and the close box answer as the second button
/// does, so that what destroys belongs on the first; where the second one destroys all the same, they answer
/// result_none.
/// @since 3.1
struct message_options_t
{
    /// Which of the two buttons is the default.
    enum class default_answer_t
    {
        automatic, ///< the first that is not destructive
        first,     ///< the first button
        second     ///< the second button
    };

    message_answer_t first;
    message_answer_t second;
    /// What Return answers. A destructive answer gives way to the other one; where both are, Return answers
    /// nothing.
    default_answer_t default_answer = default_answer_t::automatic;

    /// A button that copies title, texts and details.
    bool offers_copy = false;
    /// A button that saves them as a text file which the user chooses, for those who help. It is written whole
    /// or not at all, and not on the GUI thread; an error is told.
    bool offers_report = false;
    /// What else the report is to say, as versions; asked when the user saves it.
    std::function<std::string()> get_report;
    /// A button that leads to the entry of the log which the message belongs to. A message with a single
    /// Close button ends first, as the log is beneath it; a question stays.
    std::function<void()> show_in_log;
};

/// Shows the window with these options and waits for the answer; as show_modal() does in everything else.
COMMONDLG3_EXPORT int show_modal(const message_window_t& window, const message_options_t& options,
                                 wxWindow* parent);

} // namespace commondlg3
