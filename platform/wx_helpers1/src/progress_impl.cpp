#include "wx_helpers1/progress_impl.h"

#include "wx_helpers1/tasks.h"

#include <algorithm>
#include <cmath>
#include <mutex>

namespace wx_helpers1 {

// Of all messages between two turns of the GUI thread only the last can be seen.
struct ProgressImpl::last_message_t
{
    std::mutex mutex;
    std::string text;
    tasks::posted_task_t task;
};

namespace {

bool is_known(double total)
{
    return total > 0 && std::isfinite(total);
}

void advance_to(int step, std::atomic<int>& reported, const gen_helpers2::signal_t<int>& progressed)
{
    const int before = reported;
    if (step > before) {
        reported = step;
        tasks::PostSignal(progressed, step - before);
    }
}

} // namespace

ProgressImpl::ProgressImpl(int steps)
    : m_steps(std::max(1, steps)), m_last_message(std::make_shared<last_message_t>())
{
}

ProgressImpl::~ProgressImpl() = default;

void ProgressImpl::start(const char* text, double total)
{
    m_total = total;
    m_current = 0;
    m_reported = 0;
    m_finished = false;
    tasks::PostSignal(m_start, text ? text : "");
}

void ProgressImpl::progressed(int steps)
{
    internalProgressed(steps);
}

void ProgressImpl::internalProgressed(double amount)
{
    const double total = m_total;
    const double current = std::min(m_current + amount, total);
    if (!(current == current)) // an amount that is no number leaves the count as it is
        return;
    m_current = current;
    if (!is_known(total))
        return;
    // Multiplied before it is divided, so that whole numbers stay exact and a half is rounded up.
    const long double exact = static_cast<long double>(m_steps) * current / total;
    advance_to(static_cast<int>(std::max(0.0L, exact + 0.5L)), m_reported, m_progressed);
}

void ProgressImpl::message(const char* text)
{
    {
        std::lock_guard<std::mutex> lock(m_last_message->mutex);
        m_last_message->text = text ? text : "";
        if (!m_last_message->task.must_be_posted())
            return;
    }
    tasks::Scheduler::Post([last = m_last_message, signal = m_message] {
        std::string taken;
        {
            std::lock_guard<std::mutex> lock(last->mutex);
            taken.swap(last->text);
            last->task.begins();
        }
        signal.emit(taken);
    });
}

void ProgressImpl::finish()
{
    m_finished = true;
    internalProgressed(m_total);
    if (!is_known(m_total)) // all is done as well
        advance_to(m_steps, m_reported, m_progressed);
    if (m_canceled && !m_acknowledged) {
        m_acknowledged = true;
        tasks::PostSignal(m_cancel);
    }
}

void ProgressImpl::cancel()
{
    m_canceled = true;
}

double ProgressImpl::getTotalSteps()
{
    return m_total;
}

bool ProgressImpl::isCanceled()
{
    return m_canceled;
}

} // namespace wx_helpers1
