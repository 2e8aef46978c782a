// What a log keeps when it may not keep all, and workers that say more than can be shown.
#include "log_tools.h"

#include <algorithm>
#include <atomic>
#include <string>
#include <thread>
#include <vector>

using namespace commondlg3;
using namespace msngr2;

namespace {

constexpr std::size_t block = vdxcfrw7::line_store_t::block_size;

} // namespace

TEST(InplaceLimits, the_oldest_lines_go_and_the_reader_stays)
{
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("entry"), {});
    window->get_messenger(tag)->say(sev_status, "busy");
    window->get_messenger(tag)->say(sev_error, "first");
    test::settle();
    test::say_lines(window, tag, 8 * block);
    const auto& lines = window.element(0).GetLines();
    const std::string read(lines.at(6 * block).get_text());
    const auto line_with = [&](const std::string& text) {
        for (std::size_t line = 0; line < lines.size(); ++line)
            if (lines.at(line).get_text() == text)
                return line;
        return lines.size();
    };
    window.log().ScrollTo(window.log().GetLineRect(window.element(0), 6 * block).y +
                          window.log().GetState().top);
    ASSERT_TRUE(window.log().Find(read, true));
    const wxRect before = window.log().GetLineRect(window.element(0), 6 * block);
    const std::size_t bytes = lines.get_bytes();
    const auto errors = window.log().GetCounts().errors;
    ASSERT_EQ(errors, 1u);

    window->set_limits({4 * block, 0});
    test::settle();
    EXPECT_LE(lines.size(), 4 * block);
    EXPECT_GE(lines.size(), 3 * block - 1);
    EXPECT_LT(lines.get_bytes(), bytes * 3 / 4) << "texts and all";
    const std::size_t gone = 8 * block + 1 - (lines.size() - 2);
    EXPECT_EQ(lines.at(0).get_text(), std::to_string(gone).insert(1, ",") + " earlier lines were dropped");
    EXPECT_EQ(lines.at(1).get_text(), "busy") << "what is being done now stays";
    EXPECT_EQ(test::lines_of(window.control(), 0).back(), test::flood_line(8 * block - 1));
    EXPECT_EQ(window.log().GetCounts().errors, errors - 1);
    ASSERT_LT(line_with(read), lines.size());
    EXPECT_EQ(window.log().GetLineRect(window.element(0), line_with(read)).y, before.y);
    EXPECT_EQ(window.log().GetSelectedText(), read);
    window->get_messenger(tag)->say(sev_status, "busy again");
    test::settle();
    EXPECT_EQ(lines.at(1).get_text(), "busy again");

    // And again, where the reader sees what goes.
    window.log().ScrollTo(0);
    test::say_lines(window, window->add_message(test::make_message("next"), {}), 2 * block);
    test::settle();
    EXPECT_EQ(window.log().GetState().top, 0);
    EXPECT_EQ(test::captions_of(window.control()).back(), "next");
}

TEST(InplaceLimits, whole_entries_go_first_but_not_work_that_goes_on)
{
    test::log_window_t window;
    for (const char* caption : {"old", "older work", "new"})
        if (caption == std::string("older work"))
            window->get_progress(window->add_progress(test::make_progress(caption), {}))->start("work", 10);
        else
            window->add_message(test::make_message(caption), {});
    for (inplace_ctrl_t::tag_t tag = 0; tag < 3; ++tag)
        test::say_lines(window, tag, 500);
    window->set_limits({1200, 0});
    test::settle();
    EXPECT_EQ(test::captions_of(window.control()), (std::vector<std::string>{"older work", "new"}));
    window->set_limits({200, 0});
    test::settle();
    EXPECT_EQ(test::captions_of(window.control()), (std::vector<std::string>{"older work", "new"}));
    EXPECT_EQ(window.element(1).GetLines().size(), 500u) << "what is about the last is kept";
}

TEST(InplaceLimits, memory_is_bounded_however_much_comes)
{
    test::log_window_t window;
    constexpr std::size_t most = std::size_t(4) << 20;
    window->set_limits({0, most});
    const auto tag = window->add_message(test::make_message("flood"), {});
    IMessenger* messenger = window->get_messenger(tag);
    std::size_t peak = 0;
    std::atomic<bool> ended{false};
    std::thread worker([&] {
        for (int i = 0; i < test::flood; ++i)
            messenger->say(sev_none, test::flood_line(i).c_str());
        ended = true;
    });
    const auto& lines = window.element(0).GetLines();
    const std::string last = test::flood_line(test::flood - 1);
    EXPECT_TRUE(test::wait_for(
        [&] {
            peak = std::max(peak, lines.get_bytes());
            return ended && !lines.empty() && lines.at(lines.size() - 1).get_text() == last &&
                   !window.log().HasWork();
        },
        60000));
    worker.join();
    EXPECT_LT(peak, 3 * most) << "a slice may add some before the oldest go";
    EXPECT_LE(lines.get_bytes(), most);
    int next = -1;
    for (const std::string& line : test::lines_of(window.control(), 0)) { // each text is still what it was
        if (next < 0)
            next = std::atoi(line.c_str());
        ASSERT_EQ(line, test::flood_line(next++));
    }
    EXPECT_EQ(next, test::flood);
}

TEST(InplaceThreads, a_worker_waits_for_room_and_never_for_ever)
{
    test::log_window_t window;
    window->set_queue_limit({10000, inplace_ctrl_t::when_full_t::wait});
    const auto tag = window->add_progress(test::make_progress("entry"), {});
    IMessenger* messenger = window->get_messenger(tag);
    IProgress* progress = window->get_progress(tag);
    std::atomic<int> said{0};
    const auto start = [&](int count) {
        said = 0;
        return std::thread([&, count] {
            for (int i = 0; i < count; ++i, ++said)
                messenger->say(sev_none, test::flood_line(i).c_str());
        });
    };
    std::thread worker = start(2000);
    EXPECT_TRUE(test::wait_for([&] { return window.element(0).GetLines().size() == 2000; }, 60000));
    worker.join();
    for (int i = 0; i < 2000; ++i) // here nobody would show them
        messenger->say(sev_none, test::flood_line(i).c_str());
    worker = start(2000);
    worker.join(); // the GUI thread waits for the worker, which waits for it no longer than it must
    EXPECT_TRUE(test::wait_for([&] { return window.element(0).GetLines().size() == 6000; }, 60000));

    worker = start(2000);
    while (said < 20) // it waits by then, or soon
        std::this_thread::yield();
    progress->cancel();
    worker.join();
    EXPECT_TRUE(test::wait_for([&] { return window.element(0).GetLines().size() == 8000; }, 60000));
    const auto other = window->add_message(test::make_message("other"), {});
    messenger = window->get_messenger(other);
    worker = start(100000);
    while (said < 20)
        std::this_thread::yield();
    window.destroy();
    worker.join();
    EXPECT_EQ(said, 100000);
}

TEST(InplaceThreads, what_there_is_no_room_for_is_told)
{
    test::log_window_t window;
    window->set_queue_limit({10000, inplace_ctrl_t::when_full_t::drop});
    const auto tag = window->add_message(test::make_message("entry"), {});
    IMessenger* messenger = window->get_messenger(tag);
    std::thread([&] {
        for (int i = 0; i < 1000; ++i)
            messenger->say(sev_none, test::flood_line(i).c_str());
    }).join();
    const auto& lines = window.element(0).GetLines();
    EXPECT_TRUE(
        test::wait_for([&] { return !lines.empty() && lines.at(lines.size() - 1).severity == sev_warning; }));
    const std::size_t kept = lines.size() - 1;
    EXPECT_GT(kept, 50u);
    EXPECT_EQ(lines.at(kept - 1).get_text(), test::flood_line(static_cast<int>(kept) - 1));
    EXPECT_EQ(lines.at(kept).get_text(),
              std::to_string(1000 - kept) + " lines were lost: they came too fast");
    messenger->say(sev_none, "next");
    test::settle();
    EXPECT_EQ(test::lines_of(window.control(), 0).back(), "next");
}
