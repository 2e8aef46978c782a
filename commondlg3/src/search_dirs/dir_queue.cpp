#include "dir_queue.h"

#include <algorithm>
#include <chrono>
#include <iterator>
#include <system_error>
#include <thread>
#include <utility>

namespace commondlg3 {
namespace {

// As many folders as these may hang before the others have to wait for them.
constexpr int most_workers = 4;

} // namespace

void dir_queue_t::add(std::vector<item_t> items)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (item_t& item : items) {
        item.number = ++m_last_number;
        m_items.push_back(std::move(item));
    }
    // One that is busy may be so for minutes.
    const auto busy = static_cast<std::size_t>(m_busy);
    const int wanted = static_cast<int>(std::min<std::size_t>(busy + m_items.size(), most_workers));
    for (; m_workers < wanted; ++m_workers) {
        try {
            std::thread(work, shared_from_this()).detach();
        } catch (const std::system_error&) {
            break; // the rows stay marked as waiting, and the next change tries again
        }
    }
}

void dir_queue_t::work(const std::shared_ptr<dir_queue_t>& self)
{
    std::unique_lock<std::mutex> lock(self->m_mutex);
    while (!self->m_items.empty() && !self->m_closed) {
        item_t item = std::move(self->m_items.front());
        self->m_items.pop_front();
        ++self->m_busy;
        lock.unlock();
        item.state = self->m_examiner(item.path);
        lock.lock();
        --self->m_busy;
        self->m_found.push_back(std::move(item));
        if (!self->m_closed && self->m_task.must_be_posted())
            wx_helpers1::tasks::PostSignal(self->ready);
        if (self->m_items.empty() && self->m_busy == 0)
            self->m_all_done.notify_all();
    }
    --self->m_workers;
}

void dir_queue_t::clear()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_items.clear();
    m_found.clear();
}

void dir_queue_t::close()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_closed = true;
    m_items.clear();
}

std::vector<dir_queue_t::item_t> dir_queue_t::take()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_task.begins();
    std::sort(m_found.begin(), m_found.end(),
              [](const item_t& a, const item_t& b) { return a.number < b.number; });
    return std::exchange(m_found, {});
}

bool dir_queue_t::wait(int milliseconds)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_all_done.wait_for(lock, std::chrono::milliseconds(milliseconds),
                               [this] { return m_items.empty() && m_busy == 0; });
}

bool dir_queue_t::is_waiting()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return !m_items.empty() || m_busy > 0 || !m_found.empty();
}

} // namespace commondlg3
