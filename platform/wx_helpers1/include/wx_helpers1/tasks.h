/// @file
/// Work for the GUI thread, posted from any thread.
///
///     wx_helpers1::tasks::Scheduler::Initialize();                 // the host, once, on the GUI thread
///     wx_helpers1::tasks::PostSignal(m_progressed, 5); // a worker: emitted later on the GUI thread
///
/// Tasks run in the order in which they were posted, at the event loop's ordinary priority, so that they do
/// not wait for idle time. A turn runs what was queued when it began, and tasks that take long together make
/// pauses, so that input and painting get in. A task may open a nested loop (a dialog): the tasks behind it
/// run in there. A task holds a copy of the signal: its slots may be gone by then, which is normal and does
/// nothing. What a task throws goes to wxApp::OnExceptionInMainLoop(), and the others run all the same.
#pragma once

#include "wx_helpers1/export.h"

#include <gen_helpers2/signal.h>

#include <functional>
#include <tuple>
#include <utility>

namespace wx_helpers1::tasks {

/// Runs tasks on the GUI thread, in the order in which they were posted, from any thread.
///
///     tasks::Scheduler::Post([window_signal] { window_signal.emit(); });
///
/// A task carries copies of what it needs, as of signals: its window may be gone when it runs.
class WX_HELPERS1_EXPORT Scheduler
{
public:
    /// Starts taking tasks. GUI thread; calling it again changes nothing.
    static void Initialize();
    /// Stops taking tasks and drops those that have not run. GUI thread.
    static void Shutdown();
    /// Whether tasks are taken. Any thread.
    static bool IsInitialized();
    /// Queues a task. Without an initialised scheduler it is an assertion and the task is lost.
    static void Post(std::function<void()> task);
    /// How often the scheduler was started: tasks that were posted before a later start are lost. Any thread.
    /// @since 3.1
    static int GetStarts();
};

/// Makes many occasions cost one task: whether one is on its way. A task that was lost with its scheduler is
/// not waited for once there is a scheduler again.
///
///     if (m_task.must_be_posted())   // under the owner's lock, as everything here
///         PostSignal(m_something_came);
///     ...
///     m_task.begins();               // first of all in the task
/// @since 3.1
class posted_task_t
{
public:
    /// Whether no task is on its way; from then on one counts as being.
    bool must_be_posted()
    {
        const int starts = Scheduler::GetStarts();
        return std::exchange(m_posted_in, starts) != starts;
    }
    /// The task has come: the next occasion needs another one.
    void begins() { m_posted_in = none; }

private:
    static constexpr int none = -1;
    int m_posted_in = none; // which start of the scheduler
};

/// Emits the signal with these arguments on the GUI thread, later. Any thread.
template <class... Args, class... Given>
void PostSignal(const gen_helpers2::signal_t<Args...>& signal, Given&&... given)
{
    Scheduler::Post([signal, arguments = std::tuple<std::decay_t<Args>...>(std::forward<Given>(given)...)]() {
        std::apply([&signal](const auto&... each) { signal.emit(each...); }, arguments);
    });
}

} // namespace wx_helpers1::tasks
