#include "support.h"

#include <commondlg3/help_flavor.h>
#include <commondlg3/text_utils.h>
#include <wx_helpers1/tasks.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/timer.h>

#include <gtk/gtk.h>

#include <atomic>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace {

using wx_helpers1::tasks::PostSignal;
using wx_helpers1::tasks::Scheduler;

TEST(Threads, PostedSignalsArriveInEachThreadsOrderOnTheGuiThread)
{
    constexpr int threads = 8;
    constexpr int each = 2000;
    gen_helpers2::signal_t<int, int> signal;
    std::vector<int> next(threads, 0);
    int received = 0;
    bool in_order = true;
    const auto gui = std::this_thread::get_id();
    auto connection = signal.connect([&](int thread, int number) {
        in_order = in_order && std::this_thread::get_id() == gui && next[thread] == number;
        next[thread] = number + 1;
        ++received;
    });
    std::vector<std::thread> workers;
    for (int t = 0; t < threads; ++t)
        workers.emplace_back([signal, t] {
            for (int i = 0; i < each; ++i)
                PostSignal(signal, t, i);
        });
    EXPECT_TRUE(test::wait_for([&] { return received == threads * each; }, 20000));
    for (std::thread& worker : workers)
        worker.join();
    EXPECT_TRUE(in_order);
    connection.disconnect();
}

// A task that always posts the next one must not keep timers, keys and painting out.
TEST(Threads, TasksThatPostTasksLetTheEventLoopTurn)
{
    gen_helpers2::signal_t<> signal;
    std::atomic<bool> stop{false};
    auto connection = signal.connect([&] {
        if (!stop)
            PostSignal(signal);
    });
    PostSignal(signal);
    wxTimer timer;
    int ticks = 0;
    timer.Bind(wxEVT_TIMER, [&](wxTimerEvent&) { ++ticks; });
    timer.Start(5);
    EXPECT_TRUE(test::wait_for([&] { return ticks >= 3; }, 3000));
    stop = true;
    timer.Stop();
    test::settle();
    connection.disconnect();
}

// A task may open a dialog: what was posted behind it, and what is posted meanwhile, runs in the dialog's
// loop.
TEST(Threads, ATaskThatWaitsInALoopHoldsNobodyBack)
{
    std::vector<int> ran;
    Scheduler::Post([&] {
        ran.push_back(0);
        EXPECT_TRUE(test::wait_for([&] { return ran.size() == 4; })) << "only " << ran.size() << " ran";
        ran.push_back(4);
    });
    for (int i = 1; i < 3; ++i)
        Scheduler::Post([&ran, i] { ran.push_back(i); });
    std::thread worker([&] { Scheduler::Post([&] { ran.push_back(3); }); });
    EXPECT_TRUE(test::wait_for([&] { return ran.size() == 5; }, 10000));
    worker.join();
    EXPECT_EQ((std::vector<int>{0, 1, 2, 3, 4}), ran);
}

// Tasks come before painting: an endless chain of them must make room for it.
TEST(Threads, TasksThatPostTasksLetThePaintingIn)
{
    bool stop = false;
    std::function<void()> again = [&] {
        if (!stop)
            Scheduler::Post(again);
    };
    bool painted = false;
    Scheduler::Post(again);
    g_idle_add_full(
        GDK_PRIORITY_REDRAW, [](gpointer flag) { return gboolean(!(*static_cast<bool*>(flag) = true)); },
        &painted, nullptr);
    EXPECT_TRUE(test::wait_for([&] { return painted; }));
    stop = true;
    test::settle();
}

// What they throw would go through the toolkit's C code.
TEST(Threads, WhatTasksAndHandlersThrowReachesTheApplicationAndStopsNobody)
{
    int ran = 0;
    const auto fail = [] { throw std::runtime_error("failed"); };
    Scheduler::Post(fail);
    Scheduler::Post([&] { ++ran; });
    EXPECT_TRUE(test::wait_for([&] { return ran == 1; }));
    EXPECT_EQ(std::vector<std::string>{"failed"}, test::take_exceptions());

    auto* settings = wx_helpers1::ui_settings_t::get();
    gen_helpers2::connection connections[] = {settings->changed().connect(fail),
                                              settings->changed().connect([&] { ++ran; })};
    for (const auto theme : {wx_helpers1::theme_t::dark, wx_helpers1::theme_t::system}) {
        const int before = ran;
        settings->set_theme(theme);
        EXPECT_TRUE(test::wait_for([&] { return ran > before; })) << "the handler behind the one that throws";
    }
    for (auto& connection : connections)
        connection.disconnect();
    EXPECT_FALSE(test::take_exceptions().empty());
}

TEST(Threads, WithoutASchedulerTheTaskIsLostAndSaid)
{
    gen_helpers2::signal_t<> signal;
    int received = 0;
    auto connection = signal.connect([&] { ++received; });
    PostSignal(signal);
    Scheduler::Shutdown(); // what was queued is dropped
    std::thread([&] { PostSignal(signal); }).join();
    EXPECT_EQ(
        std::vector<std::string>{
            "Attempt to schedule a task in uninitialized Scheduler. Task will not complete."},
        test::take_assertions());
    Scheduler::Initialize();
    test::settle();
    EXPECT_EQ(0, received);
    PostSignal(signal);
    EXPECT_TRUE(test::wait_for([&] { return received == 1; }));
    connection.disconnect();
}

class help_t : public commondlg3::global_show_help_flavor
{
public:
    explicit help_t(std::atomic<int>& alive) : m_alive(alive) { ++m_alive; }
    ~help_t() override { --m_alive; }

private:
    std::atomic<int>& m_alive;
};

TEST(Threads, HelpHookIsTakenAndReplacedWithoutLoss)
{
    using commondlg3::global_show_help_flavor;
    EXPECT_FALSE(global_show_help_flavor::get());
    std::atomic<int> alive{0};
    std::atomic<bool> stop{false};
    std::vector<std::thread> users;
    for (int t = 0; t < 4; ++t)
        users.emplace_back([&] {
            while (!stop) {
                const auto help = global_show_help_flavor::get();
                EXPECT_EQ(help != nullptr, dynamic_cast<help_t*>(help.get()) != nullptr);
            }
        });
    for (int i = 0; i < 2000; ++i) {
        gen_helpers2::intrusive_pointer_t<global_show_help_flavor> owner(new help_t(alive));
        global_show_help_flavor::initialize(owner.get());
    }
    stop = true;
    for (std::thread& user : users)
        user.join();
    EXPECT_EQ(0, alive.load());
    EXPECT_FALSE(global_show_help_flavor::get()) << "a destroyed instance is found no more";
}

TEST(Threads, TextsAreReadFromAnyThread)
{
    std::atomic<int> wrong{0};
    std::vector<std::thread> readers;
    for (int t = 0; t < 4; ++t)
        readers.emplace_back([&] {
            for (int i = 0; i < 2000; ++i)
                wrong += commondlg3::translate_message("max_len", {{"field_name", "A"}}) != "A is too long";
        });
    for (std::thread& reader : readers)
        reader.join();
    EXPECT_EQ(0, wrong.load());
}

} // namespace
