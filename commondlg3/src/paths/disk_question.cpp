#include "disk_question.h"

#include <wx_helpers1/tasks.h>

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace commondlg3 {
namespace {

constexpr int most_threads = 8;
std::atomic<int> threads{0};

struct question_t
{
    std::function<void()> look;
    std::function<void()> later;
    std::mutex mutex;
    std::condition_variable ended;
    bool has_ended = false;
    bool is_waited_for = true;
};

void work(const std::shared_ptr<question_t>& question)
{
    question->look();
    threads.fetch_sub(1);
    std::unique_lock<std::mutex> lock(question->mutex);
    question->has_ended = true;
    question->ended.notify_all();
    if (question->is_waited_for || !question->later || !wx_helpers1::tasks::Scheduler::IsInitialized())
        return;
    lock.unlock();
    wx_helpers1::tasks::Scheduler::Post(std::move(question->later));
}

} // namespace

bool ask_disk(std::function<void()> look, std::chrono::milliseconds patience, std::function<void()> later)
{
    return put_to_disk(std::move(look), patience, std::move(later)) == asked_t::answered;
}

asked_t put_to_disk(std::function<void()> look, std::chrono::milliseconds patience,
                    std::function<void()> later)
{
    if (threads.fetch_add(1) >= most_threads) {
        threads.fetch_sub(1);
        return asked_t::never;
    }
    const auto question = std::make_shared<question_t>();
    question->look = std::move(look);
    question->later = std::move(later);
    try {
        std::thread(work, question).detach();
    } catch (const std::system_error&) {
        threads.fetch_sub(1);
        return asked_t::never;
    }
    std::unique_lock<std::mutex> lock(question->mutex);
    if (question->ended.wait_for(lock, patience, [&] { return question->has_ended; })) {
        const auto unused = std::move(question->later); // it ends here: the thread may live on a little
        return asked_t::answered;
    }
    question->is_waited_for = false;
    return asked_t::later;
}

} // namespace commondlg3
