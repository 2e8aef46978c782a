#pragma once

#include <wx/timer.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

class wxWindow;

namespace vdxcfrw7 {

/// Has a screen reader say in passing what came, politely: the first soon, of a burst only how much it
/// was and its last.
class line_announcer_t
{
public:
    /// `describe` makes the text for so many lines; an empty one is not said.
    line_announcer_t(wxWindow& window, std::function<std::string(std::size_t)> describe);
    line_announcer_t(const line_announcer_t&) = delete;
    line_announcer_t& operator=(const line_announcer_t&) = delete;

    void line_came();
    /// At once.
    void say(const std::string& text);

private:
    void announce();

    wxWindow& m_window;
    std::function<std::string(std::size_t)> m_describe;
    std::size_t m_lines = 0;
    std::chrono::steady_clock::time_point m_last{};
    wxTimer m_timer;
};

} // namespace vdxcfrw7
