#include "line_announcer.h"

#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/guarded.h>

#include <algorithm>
#include <utility>

namespace vdxcfrw7 {
namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// A voice takes a second or two for a line.
constexpr milliseconds soon(300);
constexpr milliseconds between_bursts(3000);

} // namespace

line_announcer_t::line_announcer_t(wxWindow& window, std::function<std::string(std::size_t)> describe)
    : m_window(window), m_describe(std::move(describe))
{
    m_timer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { wx_helpers1::guarded([this] { announce(); }); });
}

void line_announcer_t::line_came()
{
    if (m_lines++ > 0)
        return; // the timer runs
    const auto quiet = std::chrono::duration_cast<milliseconds>(steady_clock::now() - m_last);
    m_timer.StartOnce(static_cast<int>(std::max(soon, between_bursts - quiet).count()));
}

void line_announcer_t::announce()
{
    const std::string text = m_describe(std::exchange(m_lines, 0));
    if (!text.empty())
        say(text);
}

void line_announcer_t::say(const std::string& text)
{
    m_last = steady_clock::now();
    wx_helpers1::announce(&m_window, text);
}

} // namespace vdxcfrw7
