/// @file
/// Keeps a window that nobody asked for from being answered by keys and clicks that were meant for another.
/// GUI thread.
#pragma once

#include "wx_helpers1/export.h"

#include <cstdint>
#include <functional>

class wxTopLevelWindow;

namespace wx_helpers1 {

/// From now on, whenever the window is shown:
///
/// - unasked, its buttons take neither keys nor clicks for its first 0.4 seconds on the screen, and look
///   as pale as if they were disabled meanwhile. The close box of the window manager always works, as nobody
///   aims at it by mistake; Escape waits with the other keys, as it may be meant for what is beneath;
/// - asked for or not, a key that was held before does nothing in it until it was released.
///
///     guard_input(this); // in on_init_dialog()
///
/// It is asked for when the user released or pressed a button of the mouse, or pressed a key, in this program
/// within the last second: long enough for what is looked up first, as by another thread, and short enough to
/// be remembered. What is typed into a text field asks for nothing, nor does a key that repeats itself; each
/// input asks for one window.
///
/// For windows that may come by themselves and that a single key answers: messages, questions. Not for those
/// that only the user opens. What a screen reader activates is never held back.
/// @since 3.1
WX_HELPERS1_EXPORT void guard_input(wxTopLevelWindow* window);

/// For a guarded window that shows another question in place of the last: keys that are held now do nothing
/// in it until they were released, and no button that is pressed now acts.
/// @since 3.1
WX_HELPERS1_EXPORT void ignore_held_keys(wxTopLevelWindow* window);

/// Whether the window is holding keys and clicks back.
/// @since 3.1
WX_HELPERS1_EXPORT bool is_input_held_back(wxTopLevelWindow* window);

/// Calls back once, when the window takes keys; at once when it does already. Not when it goes first.
/// @since 3.1
WX_HELPERS1_EXPORT void when_input_is_taken(wxTopLevelWindow* window, std::function<void()> callback);

/// For programs with other ideas of time, as tests.
/// @since 3.1
struct input_guard_times_t
{
    std::int64_t wait = 400;           ///< of an unasked window, in milliseconds; 0 waits never
    std::int64_t asked_within = 1000;  ///< an input asks for what opens within this time, in milliseconds
    std::function<std::int64_t()> now; ///< in milliseconds; empty for the clock
};

/// For windows that are shown from now on.
/// @since 3.1
WX_HELPERS1_EXPORT void set_input_guard_times(const input_guard_times_t& times);

} // namespace wx_helpers1
