#include "background.h"

#include <gen_helpers2/log.h>

#include <exception>
#include <string>
#include <system_error>
#include <utility>

namespace commondlg3 {

background_t& background_t::get()
{
    static background_t all;
    return all;
}

background_t::~background_t()
{
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_ending = true;
    }
    wait();
    if (m_thread.joinable())
        m_thread.join();
}

void background_t::add(kind_t kind, std::function<void()> work)
{
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        m_jobs.push_back({kind, std::move(work)});
        m_unfinished += kind == kind_t::must_be_done ? 1 : 0;
        if (m_running)
            return;
        if (m_thread.joinable()) // it has ended its work
            m_thread.join();
        m_running = true;
        try {
            m_thread = std::thread([this] { run(); });
            return;
        } catch (const std::system_error& error) {
            gen_helpers2::log_warning("inplace_ctrl", std::string("no thread: ") + error.what());
        }
    }
    run(); // late is better than never
}

void background_t::wait()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_done.wait(lock, [this] { return m_unfinished == 0; });
}

void background_t::run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_jobs.empty()) {
        job_t job = std::move(m_jobs.front());
        m_jobs.pop_front();
        const bool wanted = !m_ending || job.kind == kind_t::must_be_done;
        lock.unlock();
        try {
            if (wanted)
                job.work();
        } catch (const std::exception& exception) {
            gen_helpers2::log_error("inplace_ctrl",
                                    std::string("background work ended: ") + exception.what());
        } catch (...) {
            gen_helpers2::log_error("inplace_ctrl", "background work ended");
        }
        job.work = nullptr; // what it holds may take long to free
        lock.lock();
        if (job.kind == kind_t::must_be_done && --m_unfinished == 0)
            m_done.notify_all();
    }
    m_running = false;
}

} // namespace commondlg3
