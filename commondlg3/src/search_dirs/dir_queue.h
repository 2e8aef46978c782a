#pragma once

#include "commondlg3/dir_checker.h"

#include <wx_helpers1/tasks.h>

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace commondlg3 {

/// Paths that wait to be looked at, and what was found. Shared by a checker and its workers, of which it
/// outlives each: one that hangs in a network folder finds it closed when it comes back.
class dir_queue_t : public std::enable_shared_from_this<dir_queue_t>
{
public:
    struct item_t
    {
        vdxpropgrid2::row_key_t key;
        std::string path;
        dir_state_t state;
        unsigned number = 0; ///< given by the queue
    };

    explicit dir_queue_t(dir_checker_t::examiner_t examiner) : m_examiner(std::move(examiner)) {}

    void add(std::vector<item_t> items);
    /// Forgets what nobody has begun to look at.
    void clear();
    /// Nothing is told from now on.
    void close();
    /// What was found since the last time, in the order in which it was added.
    std::vector<item_t> take();
    /// False when something is still waiting after that time.
    bool wait(int milliseconds);
    bool is_waiting();

    /// Raised on the GUI thread when there is something to take.
    gen_helpers2::signal_t<> ready;

private:
    static void work(const std::shared_ptr<dir_queue_t>& self);

    const dir_checker_t::examiner_t m_examiner;
    std::mutex m_mutex;
    std::condition_variable m_all_done;
    std::deque<item_t> m_items;
    std::vector<item_t> m_found;
    unsigned m_last_number = 0;
    int m_workers = 0;
    int m_busy = 0;
    wx_helpers1::tasks::posted_task_t m_task;
    bool m_closed = false;
};

} // namespace commondlg3
