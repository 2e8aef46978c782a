#include "wx_helpers1/tasks.h"

#include <gen_helpers2/assertion.h>

#include <glib.h>

#include <mutex>
#include <vector>

namespace wx_helpers1::tasks {
namespace {

struct queue_t
{
    std::mutex mutex;
    std::vector<std::function<void()>> tasks;
    bool initialized = false;
    guint source = 0; // the event source that will run the tasks, 0 when none is queued
};

queue_t& queue()
{
    // Never destroyed: workers may still post while the process ends.
    static auto* the_queue = new queue_t;
    return *the_queue;
}

gboolean run_tasks(gpointer)
{
    std::vector<std::function<void()>> tasks;
    {
        std::lock_guard<std::mutex> lock(queue().mutex);
        tasks.swap(queue().tasks);
        queue().source = 0;
    }
    for (auto& task : tasks) {
        if (!Scheduler::IsInitialized())
            break;
        task();
        task = nullptr; // what a task holds ends with it, not with the batch
    }
    return G_SOURCE_REMOVE;
}

} // namespace

void Scheduler::Initialize()
{
    std::lock_guard<std::mutex> lock(queue().mutex);
    queue().initialized = true;
}

void Scheduler::Shutdown()
{
    // Declared before the lock, so destroyed after it: what a dropped task holds may post in its destructor.
    std::vector<std::function<void()>> dropped;
    std::lock_guard<std::mutex> lock(queue().mutex);
    queue().initialized = false;
    dropped.swap(queue().tasks);
    if (queue().source) {
        g_source_remove(queue().source);
        queue().source = 0;
    }
}

bool Scheduler::IsInitialized()
{
    std::lock_guard<std::mutex> lock(queue().mutex);
    return queue().initialized;
}

void Scheduler::Post(std::function<void()> task)
{
    {
        std::lock_guard<std::mutex> lock(queue().mutex);
        if (queue().initialized) {
            queue().tasks.push_back(std::move(task));
            if (!queue().source)
                queue().source = g_idle_add_full(G_PRIORITY_DEFAULT, run_tasks, nullptr, nullptr);
            return;
        }
    }
    GH2_ASSERT_TEXT(Scheduler::IsInitialized(),
                    "Attempt to schedule a task in uninitialized Scheduler. Task will not complete.",
                    "tasks");
}

} // namespace wx_helpers1::tasks
