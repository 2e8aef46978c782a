#pragma once

#include <functional>

class wxWindow;

namespace wx_helpers1 {

/// While it lives, calls when its window goes, before that destroys its children. For what runs a loop of
/// events inside one of the window's own: nothing is taken off the window's list of handlers at the end, which
/// an event that is on its way through that list would stumble over.
class parent_watch_t
{
public:
    /// Does nothing for null.
    parent_watch_t(wxWindow* window, std::function<void()> on_going);
    ~parent_watch_t();
    parent_watch_t(const parent_watch_t&) = delete;
    parent_watch_t& operator=(const parent_watch_t&) = delete;

private:
    wxWindow* m_window;
};

} // namespace wx_helpers1
