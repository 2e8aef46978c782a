#include "log_tools.h"

#include <wx_helpers1/tasks.h>

#include <wx/timer.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

using namespace commondlg3;
using namespace msngr2;

namespace {

constexpr int number_of_threads = 8;
constexpr int lines_of_each = test::flood / number_of_threads;

} // namespace

TEST(InplaceThreads, a_flood_keeps_each_threads_order_and_loses_nothing)
{
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("flood"), {});
    IMessenger* messenger = window->get_messenger(tag);
    std::vector<std::thread> workers;
    for (int thread = 0; thread < number_of_threads; ++thread)
        workers.emplace_back([=] {
            for (int i = 0; i < lines_of_each; ++i)
                messenger->say(sev_none, (std::to_string(thread) + " " + std::to_string(i)).c_str());
        });
    const auto& lines = window.element(0).GetLines();
    EXPECT_TRUE(test::wait_for([&] { return lines.size() == number_of_threads * lines_of_each; }, 120000));
    for (std::thread& worker : workers)
        worker.join();
    std::map<int, int> next;
    for (const std::string& line : test::lines_of(window.control(), 0)) {
        const int thread = std::atoi(line.c_str());
        ASSERT_EQ(std::atoi(line.c_str() + line.find(' ')), next[thread]++);
    }
    EXPECT_EQ(next.size(), static_cast<std::size_t>(number_of_threads));
}

TEST(InplaceThreads, lines_said_between_two_turns_cost_one_task)
{
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("entry"), {});
    IMessenger* messenger = window->get_messenger(tag);
    const auto say = [messenger](int from) {
        std::thread([=] {
            for (int i = from; i < from + 1000; ++i)
                messenger->say(sev_none, std::to_string(i).c_str());
        }).join();
    };
    say(0);
    EXPECT_TRUE(window.element(0).GetLines().empty()) << "nothing is shown on the worker's thread";
    ASSERT_TRUE(test::wait_for([&] { return test::lines_of(window.control(), 0).size() == 1000; }));
    // A scheduler that takes no tasks says so once for each task that it is given.
    wx_helpers1::tasks::Scheduler::Shutdown();
    say(1000);
    // The same holds for what is being done now.
    const auto progress_tag = window->add_progress(test::make_progress("work"), {});
    for (int i = 0; i < 1000; ++i)
        window->get_progress(progress_tag)->message(std::to_string(i).c_str());
    wx_helpers1::tasks::Scheduler::Initialize();
    EXPECT_EQ(test::take_assertions().size(), 2u);
}

// The callback of a task shows a dialog: lines appear in the log behind it, and those of before stand first.
TEST(InplaceThreads, lines_show_while_a_callback_waits_in_a_loop)
{
    test::log_window_t window;
    IMessenger* messenger = nullptr;
    std::vector<std::string> shown;
    inplace_ctrl_t::callback_t callback;
    callback.connect([&](int) {
        std::thread([&] { messenger->say(sev_none, "second"); }).join();
        EXPECT_TRUE(test::wait_for([&] { return test::lines_of(window.control(), 0).size() == 2; }));
        shown = test::lines_of(window.control(), 0);
    });
    const auto tag = window->add_progress(test::make_progress("work"), callback);
    messenger = window->get_messenger(tag);
    IProgress* progress = window->get_progress(tag);
    progress->start("work", 1);
    progress->cancel();
    progress->finish(); // its task calls back
    messenger->say(sev_none, "first");
    EXPECT_TRUE(test::wait_for([&] { return !shown.empty(); }));
    EXPECT_EQ(shown, (std::vector<std::string>{"first", "second"}));
}

// What the host gave with an entry must not end on a worker that happens to hold the entry last.
TEST(InplaceThreads, what_the_host_gave_ends_on_its_own_thread)
{
    test::log_window_t window;
    std::thread::id ended_on;
    auto given = std::shared_ptr<int>(new int, [&ended_on](int* number) {
        ended_on = std::this_thread::get_id();
        delete number;
    });
    std::weak_ptr<int> alive = given;
    inplace_ctrl_t::callback_t callback;
    callback.connect([kept = std::move(given)](int) {});
    const auto tag = window->add_message(test::make_message("entry"), callback);
    callback = {};
    IMessenger* messenger = window->get_messenger(tag);
    std::atomic<bool> stop{false};
    std::thread worker([&] {
        while (!stop)
            messenger->say(sev_status, "busy");
    });
    EXPECT_TRUE(test::wait_for([&] { return !window.element(0).GetLines().empty(); }));
    window->erase(tag);
    EXPECT_TRUE(alive.expired());
    EXPECT_EQ(ended_on, std::this_thread::get_id());
    stop = true;
    worker.join();
}

TEST(InplaceThreads, the_entry_the_log_and_the_window_go_in_mid_flood)
{
    for (int what = 0; what < 3; ++what) {
        test::log_window_t window;
        const auto tag = window->add_progress(test::make_progress("flood"), {});
        IMessenger* messenger = window->get_messenger(tag);
        IProgress* progress = window->get_progress(tag);
        std::atomic<bool> stop{false};
        std::atomic<int> said{0};
        std::vector<std::thread> workers;
        for (int thread = 0; thread < 4; ++thread)
            workers.emplace_back([&, thread] {
                if (thread == 0)
                    progress->start("flood", 1e6);
                while (!stop) {
                    messenger->say(thread % 2 ? sev_none : sev_status, "a line of the flood");
                    if (thread == 0) {
                        progress->internalProgressed(1);
                        progress->message("still flooding");
                        progress->isCanceled();
                    }
                    ++said;
                }
            });
        const auto& elements = window.log().GetElements();
        EXPECT_TRUE(test::wait_for([&] { return elements[0]->GetLines().size() > 2000; }, 60000));
        if (what == 0)
            window->erase(tag);
        else if (what == 1)
            window->clear();
        else
            window.destroy();
        const int before = said;
        EXPECT_TRUE(test::wait_for([&] { return said > before + 2000; }, 60000))
            << "the workers go on unharmed";
        stop = true;
        for (std::thread& worker : workers)
            worker.join();
        test::settle();
        if (what < 2) {
            EXPECT_TRUE(window.log().GetElements().empty());
        }
    }
}

// All at once: far more than one turn may show. Whoever types meanwhile must not notice.
TEST(InplaceThreads, the_loop_stays_free_in_a_flood)
{
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("flood"), {});
    for (int i = 0; i < test::flood; ++i)
        window->get_messenger(tag)->say(sev_none, test::flood_line(i).c_str());
    const auto& lines = window.element(0).GetLines();
    using clock = std::chrono::steady_clock;
    clock::duration longest{};
    auto last = clock::now();
    int ticks = 0;
    wxTimer timer;
    timer.Bind(wxEVT_TIMER, [&](wxTimerEvent&) {
        longest = std::max(longest, clock::now() - last);
        last = clock::now();
        ++ticks;
    });
    timer.Start(5);
    ASSERT_TRUE(test::wait_for([&] { return lines.size() == test::flood; }, 120000));
    longest = std::max(longest, clock::now() - last);
    EXPECT_GT(ticks, 0) << "others had their turn while the lines were shown";
    EXPECT_LT(longest, std::chrono::milliseconds(250));
}
