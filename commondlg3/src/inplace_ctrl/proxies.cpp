#include "proxies.h"

#include <memory>
#include <utility>
#include <vector>

namespace commondlg3 {

void messenger_proxy_t::set_target(const event_entry_t::ptr_t& target)
{
    event_entry_t::ptr_t before(target);
    std::lock_guard<std::mutex> lock(m_mutex);
    m_target.swap(before);
}

void messenger_proxy_t::drop(const event_entry_t* target)
{
    event_entry_t::ptr_t before;
    std::lock_guard<std::mutex> lock(m_mutex);
    if (m_target.get() == target)
        m_target.swap(before);
}

bool messenger_proxy_t::points_at(const event_entry_t* target)
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return m_target.get() == target;
}

void messenger_proxy_t::say(msngr2::ESeverity severity, const char* text)
{
    event_entry_t::ptr_t target;
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        target = m_target;
    }
    if (target)
        target->say(severity, text);
}

void progress_proxy_t::set_target(const event_entry_t::ptr_t& entry, msngr2::IProgress* target)
{
    event_entry_t::ptr_t before(entry);
    std::lock_guard<std::mutex> lock(m_mutex);
    m_entry.swap(before);
    m_target = target;
}

void progress_proxy_t::drop(const event_entry_t* entry)
{
    event_entry_t::ptr_t before;
    std::lock_guard<std::mutex> lock(m_mutex);
    if (m_entry.get() == entry) {
        m_entry.swap(before);
        m_target = nullptr;
    }
}

progress_proxy_t::target_t progress_proxy_t::get_target()
{
    std::lock_guard<std::mutex> lock(m_mutex);
    return {m_entry, m_target};
}

void progress_proxy_t::start(const char* text, double total)
{
    const target_t target = get_target();
    if (target.progress) {
        target.progress->start(text, total);
        target.entry->note_sign();
    }
}

void progress_proxy_t::progressed(int steps)
{
    const target_t target = get_target();
    if (target.progress) {
        target.progress->progressed(steps);
        target.entry->note_sign();
    }
}

void progress_proxy_t::internalProgressed(double amount)
{
    const target_t target = get_target();
    if (target.progress) {
        target.progress->internalProgressed(amount);
        target.entry->note_sign();
    }
}

void progress_proxy_t::message(const char* text)
{
    const target_t target = get_target();
    if (target.progress) {
        target.progress->message(text);
        target.entry->note_sign();
    }
}

void progress_proxy_t::finish()
{
    const target_t target = get_target();
    if (target.progress) {
        target.progress->finish();
        target.entry->note_end();
    }
}

void progress_proxy_t::cancel()
{
    const target_t target = get_target();
    if (target.progress) {
        target.progress->cancel();
        target.entry->wake();
    }
}

double progress_proxy_t::getTotalSteps()
{
    const target_t target = get_target();
    return target.progress ? target.progress->getTotalSteps() : 1.0;
}

bool progress_proxy_t::isCanceled()
{
    const target_t target = get_target();
    return target.progress && target.progress->isCanceled();
}

void retire(std::unique_ptr<proxies_t> proxies)
{
    // Never destroyed, on purpose: a worker that outlives its window still calls into them.
    static auto* retired = new std::vector<std::unique_ptr<proxies_t>>;
    retired->push_back(std::move(proxies));
}

} // namespace commondlg3
