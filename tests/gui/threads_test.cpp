#include "support.h"

#include <commondlg3/help_flavor.h>
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

// A task that always posts the next one must not keep timers, keys and painting out.
TEST(Threads, TasksThatPostTasksLetTimersAndThePaintingIn)
{
    bool stop = false;
    std::function<void()> again = [&] {
        if (!stop)
            Scheduler::Post(again);
    };
    Scheduler::Post(again);
    wxTimer timer;
    int ticks = 0;
    timer.Bind(wxEVT_TIMER, [&](wxTimerEvent&) { ++ticks; });
    timer.Start(5);
    bool painted = false;
    g_idle_add_full(
        GDK_PRIORITY_REDRAW, [](gpointer flag) { return gboolean(!(*static_cast<bool*>(flag) = true)); },
        &painted, nullptr);
    EXPECT_TRUE(test::wait_for([&] { return painted && ticks >= 3; }));
    stop = true;
    timer.Stop();
    test::settle();
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

TEST(Threads, HelpHookIsTakenWhileItIsReplaced)
{
    using commondlg3::global_show_help_flavor;
    EXPECT_FALSE(global_show_help_flavor::get());
    std::atomic<bool> stop{false};
    std::thread user([&stop] {
        while (!stop)
            global_show_help_flavor::get();
    });
    for (int i = 0; i < 2000; ++i) {
        gen_helpers2::intrusive_pointer_t<global_show_help_flavor> owner(new global_show_help_flavor);
        global_show_help_flavor::initialize(owner.get());
        EXPECT_EQ(owner.get(), global_show_help_flavor::get().get());
    }
    stop = true;
    user.join();
    EXPECT_FALSE(global_show_help_flavor::get()) << "a destroyed instance is found no more";
}

} // namespace
