#include "work_slices.h"

#include <wx_helpers1/guarded.h>

#include <wx/timer.h>

#include <algorithm>
#include <utility>

namespace vdxcfrw7 {
namespace {

// Long enough to be worth a turn, short enough that typing and painting never wait for it.
constexpr std::chrono::milliseconds slice_length(3);

class work_timer_t : public wxTimer
{
public:
    explicit work_timer_t(std::function<void()> work) : m_work(std::move(work)) {}
    void Notify() override { wx_helpers1::guarded(m_work); }

private:
    std::function<void()> m_work;
};

} // namespace

work_slices_t::work_slices_t(std::function<int()> turn)
    : m_turn(std::move(turn)), m_timer(std::make_unique<work_timer_t>([this] { run(); }))
{
}

work_slices_t::~work_slices_t() = default;

void work_slices_t::add(const void* owner, std::function<bool()> work)
{
    for (const work_t& queued : m_work)
        if (queued.owner == owner)
            return;
    m_work.push_back({owner, std::move(work)});
    // The first piece is done at once, unless others wait already or a slice has only just ended.
    if (m_work.size() == 1 && !m_running && (!m_timer->IsRunning() || m_timer->GetInterval() > 1))
        run();
    else
        later(1);
}

void work_slices_t::cancel(const void* owner)
{
    m_work.erase(std::remove_if(m_work.begin(), m_work.end(),
                                [owner](const work_t& queued) { return queued.owner == owner; }),
                 m_work.end());
}

void work_slices_t::stop()
{
    m_work.clear();
    m_timer->Stop();
}

void work_slices_t::later(int milliseconds)
{
    if (!m_timer->IsRunning() || m_timer->GetInterval() > milliseconds)
        m_timer->StartOnce(milliseconds);
}

void work_slices_t::run()
{
    // Called again while it works, a nested loop runs, which must not hold back the work that waits.
    const bool nested = m_running;
    m_running = true;
    m_end = std::chrono::steady_clock::now() + slice_length;
    const std::weak_ptr<bool> alive = m_alive;
    do {
        if (m_work.empty())
            break;
        // Work may cancel itself or queue more: it is taken out while it runs.
        work_t next = std::move(m_work.front());
        m_work.pop_front();
        bool more = false;
        wx_helpers1::guarded([&] { more = next.work(); });
        if (alive.expired())
            return;
        if (more)
            m_work.push_back(std::move(next));
    } while (!enough());
    int wait = 0;
    wx_helpers1::guarded([&] { wait = m_turn(); });
    if (alive.expired())
        return;
    m_running = nested;
    if (!m_work.empty())
        later(1);
    else if (wait)
        later(wait);
}

} // namespace vdxcfrw7
