#include "wx_helpers1/tasks.h"

#include "wx_helpers1/guarded.h"

#include <gen_helpers2/assertion.h>

#include <glib.h>

#include <atomic>
#include <cstdint>
#include <deque>
#include <mutex>
#include <utility>

namespace wx_helpers1::tasks {
namespace {

// Painting has a lower priority than tasks: after so long without a pause they make one, in which everything
// else that waits gets its turn. In microseconds.
constexpr gint64 longest_run = 8000;
constexpr gint64 pause_length = 1000;

struct queue_t
{
    std::mutex mutex;
    std::deque<std::function<void()>>
        tasks;                // the only place where tasks wait, so that a nested loop finds them
    std::uint64_t posted = 0; // since the beginning
    std::atomic<int> starts{0};
    bool initialized = false;

    // The GUI thread's alone.
    GSource* source = nullptr;
    gint64 run_begin = 0;
    gint64 run_end = 0;
    gint64 pause_end = 0;
};

queue_t& queue()
{
    // Never destroyed: workers may still post while the process ends.
    static auto* the_queue = new queue_t;
    return *the_queue;
}

// Takes the oldest task, unless it was posted after the turn began.
bool take_task(std::uint64_t turn_end, std::function<void()>& task)
{
    queue_t& all = queue();
    std::lock_guard<std::mutex> lock(all.mutex);
    if (all.tasks.empty() || all.posted - all.tasks.size() >= turn_end)
        return false;
    task = std::move(all.tasks.front());
    all.tasks.pop_front();
    return true;
}

gboolean prepare(GSource*, gint* timeout)
{
    queue_t& all = queue();
    *timeout = -1;
    {
        std::lock_guard<std::mutex> lock(all.mutex);
        if (all.tasks.empty())
            return FALSE;
    }
    const gint64 left = all.pause_end - g_get_monotonic_time();
    if (left <= 0)
        return TRUE;
    *timeout = static_cast<gint>((left + 999) / 1000);
    return FALSE;
}

gboolean check(GSource* source)
{
    gint timeout;
    return prepare(source, &timeout);
}

gboolean run_turn(GSource*, GSourceFunc, gpointer)
{
    queue_t& all = queue();
    const gint64 begin = g_get_monotonic_time();
    if (begin - all.run_end >= pause_length)
        all.run_begin = begin;
    std::uint64_t turn_end;
    {
        std::lock_guard<std::mutex> lock(all.mutex);
        turn_end = all.posted;
    }
    std::function<void()> task;
    while (take_task(turn_end, task)) {
        guarded(task);
        task = nullptr; // what a task holds ends with it, not with the turn
        if (g_get_monotonic_time() - all.run_begin >= longest_run)
            break;
    }
    all.run_end = g_get_monotonic_time();
    if (all.run_end - all.run_begin >= longest_run)
        all.pause_end = all.run_end + pause_length;
    return G_SOURCE_CONTINUE;
}

GSourceFuncs source_functions = {prepare, check, run_turn, nullptr, nullptr, nullptr};

} // namespace

void Scheduler::Initialize()
{
    queue_t& all = queue();
    std::lock_guard<std::mutex> lock(all.mutex);
    if (!std::exchange(all.initialized, true))
        ++all.starts;
    if (all.source)
        return;
    all.source = g_source_new(&source_functions, sizeof(GSource));
    // A task may open a nested loop, which runs those that wait behind it.
    g_source_set_can_recurse(all.source, TRUE);
    g_source_set_priority(all.source, G_PRIORITY_DEFAULT);
    g_source_attach(all.source, nullptr);
}

void Scheduler::Shutdown()
{
    queue_t& all = queue();
    // Declared before the lock, so destroyed after it: what a dropped task holds may post in its destructor.
    std::deque<std::function<void()>> dropped;
    std::lock_guard<std::mutex> lock(all.mutex);
    all.initialized = false;
    dropped.swap(all.tasks);
    if (all.source) {
        g_source_destroy(all.source);
        g_source_unref(all.source);
        all.source = nullptr;
    }
}

int Scheduler::GetStarts()
{
    return queue().starts.load(std::memory_order_relaxed);
}

bool Scheduler::IsInitialized()
{
    std::lock_guard<std::mutex> lock(queue().mutex);
    return queue().initialized;
}

void Scheduler::Post(std::function<void()> task)
{
    {
        queue_t& all = queue();
        std::lock_guard<std::mutex> lock(all.mutex);
        if (all.initialized) {
            all.tasks.push_back(std::move(task));
            ++all.posted;
            if (all.tasks.size() == 1)
                g_main_context_wakeup(nullptr);
            return;
        }
    }
    GH2_ASSERT_TEXT(Scheduler::IsInitialized(),
                    "Attempt to schedule a task in uninitialized Scheduler. Task will not complete.",
                    "tasks");
}

} // namespace wx_helpers1::tasks
