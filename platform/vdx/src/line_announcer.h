#pragma once

#include <atk/atk.h>

#include <wx/timer.h>

#include <chrono>
#include <cstddef>
#include <functional>
#include <string>

namespace vdxcfrw7 {

/// Has a screen reader say in passing what came, politely: the first soon, of a burst only how much it
/// was and its last.
class line_announcer_t
{
public:
    /// `describe` makes the text for so many lines; an empty one is not said.
    explicit line_announcer_t(std::function<std::string(std::size_t)> describe);
    ~line_announcer_t();
    line_announcer_t(const line_announcer_t&) = delete;
    line_announcer_t& operator=(const line_announcer_t&) = delete;

    /// Beside whom it is said.
    void set_parent(AtkObject* parent) { m_parent = parent; }
    void line_came();
    /// At once.
    void say(const std::string& text);

private:
    void announce();

    std::function<std::string(std::size_t)> m_describe;
    AtkObject* m_parent = nullptr;
    AtkObject* m_notification = nullptr;
    std::size_t m_lines = 0;
    std::chrono::steady_clock::time_point m_last{};
    wxTimer m_timer;
};

} // namespace vdxcfrw7
