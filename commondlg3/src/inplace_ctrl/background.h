#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>

namespace commondlg3 {

/// Does long work one piece after the other on a thread of its own, which is there only while there is work.
/// The process waits at its end for what has begun and for what must be done.
class background_t
{
public:
    enum class kind_t
    {
        may_be_dropped, ///< at the process's end
        must_be_done
    };

    static background_t& get();

    void add(kind_t kind, std::function<void()> work);
    /// Waits until nothing is left that must be done.
    void wait();

private:
    struct job_t
    {
        kind_t kind;
        std::function<void()> work;
    };

    background_t() = default;
    ~background_t();
    void run();

    std::mutex m_mutex; // guards all of it
    std::condition_variable m_done;
    std::deque<job_t> m_jobs;
    std::thread m_thread;
    bool m_running = false;
    bool m_ending = false;
    int m_unfinished = 0; // jobs that must be done
};

} // namespace commondlg3
