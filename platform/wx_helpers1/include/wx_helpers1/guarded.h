#pragma once

#include <wx/event.h>

#include <utility>

namespace wx_helpers1 {

/// Calls `action` where no exception may pass: from a timer, an event source or a signal handler of C code.
/// What it throws goes the way of exceptions in the toolkit's own events: to
/// wxApp::OnExceptionInMainLoop(), which decides whether the program goes on. GUI thread.
/// @since 3.1
template <class Action>
void guarded(Action&& action)
{
    try {
        std::forward<Action>(action)();
    } catch (...) {
        wxEvtHandler::WXConsumeException();
    }
}

} // namespace wx_helpers1
