#include "window_walk.h"

#include "entries.h"

#include <wx_helpers1/input_guard.h>
#include <wx_helpers1/painted.h>

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/timer.h>
#include <wx/toplevel.h>

#include <memory>
#include <utility>

namespace gallery {
namespace {

// What a window does right after its first painting: focus rings, default buttons, the window manager's
// frame.
constexpr int settle_milliseconds = 250;
constexpr int most_waits = 20;

class walker_t : public wxEvtHandler
{
public:
    using visit_t = std::function<void(const std::string&, wxTopLevelWindow&)>;
    using wait_t = std::function<void(const std::string&, std::function<void()>)>;

    walker_t(std::vector<walk_step_t> steps, wait_t until, visit_t visit, std::function<void()> done)
        : m_steps(std::move(steps)),
          m_until(std::move(until)),
          m_visit(std::move(visit)),
          m_done(std::move(done)),
          m_timer(this)
    {
        Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
            if (!m_window)
                walk();
            else if (!m_window->IsActive() && m_waits++ < most_waits)
                wait();
            else if (wx_helpers1::is_input_held_back(m_window))
                start(); // it does not look yet as it will
            else if (m_until && !std::exchange(m_waited, true))
                m_until(m_name, [this] { start(); });
            else
                CallAfter([this] { leave(); }); // once what was begun is laid out and painted
        });
    }

    void start() { m_timer.StartOnce(settle_milliseconds); }

private:
    // The window manager has more to do, or thinks better of it.
    void wait()
    {
        m_window->Raise();
        start();
    }

    void walk()
    {
        for (const walk_step_t& step : m_steps) {
            m_name = step.name;
            if (!step.open) {
                wxGUIEventLoop until_left;
                m_loop = &until_left;
                come_to(wxDynamicCast(wxTheApp->GetTopWindow(), wxTopLevelWindow));
                until_left.Run();
                m_loop = nullptr;
                continue;
            }
            wx_helpers1::when_next_window_is_painted([this](wxTopLevelWindow* window) { come_to(window); });
            step.open(); // comes back once leave() has closed the window
        }
        m_done();
    }

    void come_to(wxTopLevelWindow* window)
    {
        m_window = window;
        m_waits = 0;
        m_waited = false;
        start();
    }

    void leave()
    {
        m_visit(m_name, *m_window);
        if (m_loop)
            m_loop->Exit();
        else
            m_window->Close();
    }

    std::vector<walk_step_t> m_steps;
    wait_t m_until;
    visit_t m_visit;
    std::function<void()> m_done;
    wxTimer m_timer;
    std::string m_name;
    wxTopLevelWindow* m_window = nullptr;
    wxEventLoopBase* m_loop = nullptr; // of the main window, which stays open
    int m_waits = 0;
    bool m_waited = false;
};

} // namespace

std::vector<walk_step_t> walk_of_entries()
{
    std::vector<walk_step_t> steps = {{"gallery", nullptr}};
    for (const entry_t& entry : entries())
        steps.push_back({entry.id, [&entry] { return entry.open(entry.data, wxTheApp->GetTopWindow()); }});
    return steps;
}

void walk_windows(std::vector<walk_step_t> steps,
                  std::function<void(const std::string& name, wxTopLevelWindow& window)> visit,
                  std::function<void()> done, walk_wait_t until)
{
    auto walker = std::make_shared<std::unique_ptr<walker_t>>();
    *walker = std::make_unique<walker_t>(std::move(steps), std::move(until), std::move(visit),
                                         [walker, done = std::move(done)] {
                                             done();
                                             wxTheApp->CallAfter([walker] { walker->reset(); });
                                         });
    (*walker)->start();
}

} // namespace gallery
