#include "log_tools.h"

#include <wx_helpers1/tasks.h>

#include <glib.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <functional>
#include <iterator>
#include <map>
#include <memory>
#include <random>
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

namespace {

/// Two workers, the turns of the loop, the end and the start of its scheduler, one step at a time: what each
/// does under the lock cannot be divided, so that the orders of the steps are all there is.
class order_t
{
public:
    explicit order_t(test::log_window_t& window) : m_window(window)
    {
        m_tag = window->add_message(test::make_message("entry"), {});
        m_messenger = window->get_messenger(m_tag);
    }
    void make(char step)
    {
        using wx_helpers1::tasks::Scheduler;
        if (step == 'a' || step == 'b') {
            m_said[step] += step;
            m_messenger->say(sev_none, (m_said[step] + "!").c_str());
        } else if (step == 't')
            while (g_main_context_iteration(nullptr, FALSE))
                continue;
        else if (Scheduler::IsInitialized())
            Scheduler::Shutdown();
        else
            Scheduler::Initialize();
    }
    void end()
    {
        if (!wx_helpers1::tasks::Scheduler::IsInitialized())
            make('s');
        make('a'); // with it comes what was lost on the way
        const std::size_t all = m_said['a'].size() + m_said['b'].size();
        EXPECT_TRUE(test::wait_for([&] { return test::lines_of(m_window.control(), 0).size() >= all; }));
        std::map<char, std::string> shown;
        for (const std::string& line : test::lines_of(m_window.control(), 0)) {
            shown[line[0]] += line[0];
            EXPECT_EQ(line, shown[line[0]] + "!") << "in the order of its worker";
        }
        EXPECT_EQ(shown, m_said) << "each once";
        m_window->clear();
        test::take_assertions(); // one for each task that nobody took
    }

private:
    test::log_window_t& m_window;
    inplace_ctrl_t::tag_t m_tag;
    IMessenger* m_messenger;
    std::map<char, std::string> m_said;
};

} // namespace

TEST(InplaceThreads, every_order_of_steps_shows_every_line)
{
    test::log_window_t window;
    std::string steps = "aabbsstt";
    int orders = 0;
    do {
        SCOPED_TRACE(steps);
        order_t order(window);
        for (const char step : steps)
            order.make(step);
        order.end();
        ++orders;
    } while (std::next_permutation(steps.begin(), steps.end()) && !HasFailure());
    EXPECT_EQ(orders, 2520);
}

// Everything that can happen to a log, at random, while workers report into it.
TEST(InplaceThreads, workers_and_hands_at_random)
{
    const auto asked_for = [](const char* variable, int usual) {
        const char* given = std::getenv(variable);
        return given ? std::atoi(given) : usual;
    };
    const int rounds = asked_for("STRESS_ROUNDS", 300);
    std::mt19937 random(static_cast<unsigned>(asked_for("STRESS_SEED", 7)));
    const auto any = [&random](int count) {
        return static_cast<int>(random() % static_cast<unsigned>(count));
    };
    const test::temp_dir_t folder;
    const gen_helpers2::path_t file(folder.path() + "/log.xml"), path_of_text(folder.path() + "/log.txt");
    auto window = std::make_unique<test::log_window_t>(true);
    // As a host does: asked for once, and then used for whatever entry they point at.
    std::atomic<IMessenger*> messenger{
        (*window)->get_messenger((*window)->add_message(test::make_message("first"), {}))};
    std::atomic<IProgress*> progress{
        (*window)->get_progress((*window)->add_progress(test::make_progress("work"), {}))};
    std::atomic<bool> stop{false};
    std::atomic<int> said{0};
    std::vector<std::thread> workers;
    for (int worker = 0; worker < 4; ++worker)
        workers.emplace_back([&, worker] {
            for (int i = 0; !stop; ++i, ++said) {
                messenger.load()->say(static_cast<ESeverity>(1 << (i % 8)), test::flood_line(i).c_str());
                if (worker != 0) // one at a time reports progress
                    continue;
                IProgress* work = progress;
                if (i % 1000 == 0)
                    work->start("work", 1000);
                work->progressed(1);
                work->message("still at it");
                if (work->isCanceled() && i % 100 == 0)
                    work->finish();
            }
        });
    for (int round = 0; round < rounds; ++round) {
        inplace_ctrl_t& log = window->control();
        const auto& elements = window->log().GetElements();
        const auto tag = static_cast<inplace_ctrl_t::tag_t>(any(static_cast<int>(elements.size()) + 2));
        const std::function<void()> acts[] = {
            [&] {
                log.add_message(test::with_buttons("message", {1, 2}), {});
            },
            [&] { progress = log.get_progress(log.add_progress(test::make_progress("work"), {})); },
            [&] { log.get_messenger(tag); },
            [&] { log.erase(tag); },
            [&] { log.update_message(tag, test::make_message("updated", "<b>body</b>"), {}); },
            [&] { window->log().SetFilter(any(8), any(2) ? "sample" : ""); },
            [&] { window->log().Find("reading", any(2) != 0); },
            [&] { window->frame()->SetClientSize(60 + any(900), 40 + any(700)); },
            [&] { window->log().ScrollTo(any(1000) * 100); },
            [&] { window->log().SelectAll(); },
            [&] { log.take_contents().save_later(file); },
            [&] { log.load_file(file); },
            [&] { log.save_as(path_of_text, static_cast<text_format_t>(any(3))); },
            [&] {
                log.set_limits(
                    {static_cast<std::size_t>(any(3)) * 3000, static_cast<std::size_t>(any(2)) * 2000000});
            },
            [&] {
                log.set_queue_limit({20000, static_cast<inplace_ctrl_t::when_full_t>(any(3))});
            },
            [&] { window->log().SetCollapse(any(2) != 0); },
            [&] { any(2) ? progress.load()->cancel() : (void)log.clear(); },
            [&] {
                if (any(3) == 0)
                    window->destroy(), window = std::make_unique<test::log_window_t>(true);
                messenger = (*window)->get_messenger((*window)->add_message(test::make_message("next"), {}));
            },
        };
        acts[static_cast<std::size_t>(any(static_cast<int>(std::size(acts))))]();
        const int before = said;
        EXPECT_TRUE(test::wait_for([&] { return said > before + 20; }, 60000))
            << "workers are not kept waiting";
        if (window->log().GetElements().size() > 50)
            (*window)->clear(); // memory is not what this is about
    }
    stop = true;
    for (std::thread& worker : workers)
        worker.join();
    inplace_contents_t::wait_until_saved();
    (*window)->clear(); // and what is still being read
    const auto last = (*window)->add_message(test::make_message("last"), {});
    (*window)->get_messenger(last)->say(sev_none, "last");
    EXPECT_TRUE(test::wait_for(
        [&] {
            const auto lines = test::lines_of(window->control(), 0);
            return !lines.empty() && lines.back() == "last";
        },
        60000));
    test::take_assertions(); // tags that are not there
    std::printf("%d rounds, %d lines\n", rounds, said.load());
}
