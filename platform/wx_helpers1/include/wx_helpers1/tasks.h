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

class WX_HELPERS1_EXPORT Scheduler
{
public:
    /// Starts taking tasks. GUI thread; calling it again changes nothing.
    static void Initialize();
    /// Stops taking tasks and drops those that have not run. GUI thread.
    static void Shutdown();
    static bool IsInitialized();
    /// Queues a task. Without an initialised scheduler it is an assertion and the task is lost.
    static void Post(std::function<void()> task);
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
