#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <memory>

class wxTimer;

namespace vdxcfrw7 {

/// Long work on the GUI thread in pieces so short that typing and painting never wait for it.
///
///     slices.add(this, [this] { do_a_piece(); return more_is_left(); });
///
/// A piece runs until `enough()`. Work may add and cancel work, run nested event loops, and destroy the
/// slices.
class work_slices_t
{
public:
    /// `turn` is called at the end of each slice and says in how many milliseconds it wants to be called
    /// again; 0: only after the next work.
    explicit work_slices_t(std::function<int()> turn);
    ~work_slices_t();
    work_slices_t(const work_slices_t&) = delete;
    work_slices_t& operator=(const work_slices_t&) = delete;

    /// Work of an owner that is queued already is not queued again.
    void add(const void* owner, std::function<bool()> work);
    void cancel(const void* owner);
    void stop();
    /// Has a slice come at the latest in so many milliseconds.
    void later(int milliseconds);

    bool is_empty() const { return m_work.empty(); }
    bool is_running() const { return m_running; }
    bool enough() const { return std::chrono::steady_clock::now() >= m_end; }

private:
    struct work_t
    {
        const void* owner;
        std::function<bool()> work;
    };

    void run();

    std::deque<work_t> m_work;
    std::function<int()> m_turn;
    std::unique_ptr<wxTimer> m_timer;
    std::chrono::steady_clock::time_point m_end;
    bool m_running = false;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
};

} // namespace vdxcfrw7
