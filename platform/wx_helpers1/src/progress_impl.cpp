#include "wx_helpers1/progress_impl.h"

#include "wx_helpers1/tasks.h"

#include <algorithm>

namespace wx_helpers1 {

ProgressImpl::ProgressImpl(int steps) : m_steps(std::max(1, steps)) {}

ProgressImpl::~ProgressImpl() = default;

void ProgressImpl::start(const char* text, double total)
{
    m_total = total;
    m_current = 0;
    m_reported = 0;
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
    if (!(total > 0))
        return;
    const int step = static_cast<int>(std::max(0.0, m_steps * (current / total) + 0.5));
    const int reported = m_reported;
    if (step > reported) {
        m_reported = step;
        tasks::PostSignal(m_progressed, step - reported);
    }
}

void ProgressImpl::message(const char* text)
{
    tasks::PostSignal(m_message, text ? text : "");
}

void ProgressImpl::finish()
{
    internalProgressed(m_total);
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
