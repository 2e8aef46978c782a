// What a gauge tells of its work, by a clock that the tests turn.
#include "log_tools.h"

#include <gtk/gtk.h>

#include <chrono>
#include <cstdlib>
#include <string>

using namespace commondlg3;
using namespace msngr2;

namespace {

class work_t
{
public:
    explicit work_t(double total)
    {
        tag = window->add_progress(test::make_progress("work"), {});
        progress = window->get_progress(tag);
        set_clock();
        progress->start("work", total);
        test::settle();
    }
    const vdxcfrw7::CGauge& gauge() { return window.element(0).GetGauge(); }
    std::string note() { return gauge().IsNoteShown() ? gauge().GetNote() : "none"; }
    /// The work goes on for so many seconds, by so much in each.
    std::string after(int seconds, double steps = 0)
    {
        for (int i = 0; i < seconds; ++i) {
            if (steps > 0)
                progress->internalProgressed(steps);
            test::settle();
            now += std::chrono::seconds(1);
            set_clock();
        }
        return note();
    }
    void set_clock()
    {
        window->set_clock([this] { return now; });
    }

    test::log_window_t window;
    inplace_ctrl_t::tag_t tag = 0;
    IProgress* progress = nullptr;
    std::chrono::steady_clock::time_point now{std::chrono::hours(1)};
};

#define NBSP "\u00a0"

int seconds_told(const std::string& note)
{
    EXPECT_EQ(note.compare(0, 6, "About "), 0) << note;
    return std::atoi(note.c_str() + 6);
}

// In how many milliseconds the event loop wakes up by itself.
int next_wake_up()
{
    gint priority = 0, timeout = 0;
    GMainContext* context = g_main_context_default();
    EXPECT_TRUE(g_main_context_acquire(context));
    g_main_context_prepare(context, &priority);
    g_main_context_query(context, G_MAXINT, &timeout, nullptr, 0);
    g_main_context_release(context);
    return timeout < 0 ? G_MAXINT : timeout;
}

bool has_state(test::log_window_t& window, AtkStateType state)
{
    bool found = false;
    AtkObject* log = gtk_widget_get_accessible(window.log().GetWindow()->m_wxwindow);
    for (int i = 0; i < atk_object_get_n_accessible_children(log); ++i) {
        AtkObject* child = atk_object_ref_accessible_child(log, i);
        AtkStateSet* states = atk_object_ref_state_set(child);
        found = found || (atk_object_get_role(child) == ATK_ROLE_PROGRESS_BAR &&
                          atk_state_set_contains_state(states, state));
        g_object_unref(states);
        g_object_unref(child);
    }
    return found;
}

} // namespace

TEST(InplaceProgress, an_estimate_comes_once_it_can_be_trusted_and_is_calm)
{
    work_t work(1000);
    EXPECT_EQ(work.after(1, 60), "none") << "one second says nothing";
    work_t steady(1000);
    EXPECT_EQ(steady.after(2, 20), "none") << "4 percent say nothing";
    EXPECT_EQ(steady.after(1, 20), "About 50" NBSP "s left · 20 per second");
    // A worker that is now faster, now slower.
    int told = 50;
    for (int i = 0; i < 20; ++i) {
        const int next = seconds_told(steady.after(1, i % 2 ? 14 : 26));
        EXPECT_LE(next, told) << "it never goes up";
        told = next;
    }
    EXPECT_LE(std::abs(told - 27), 7) << "and is about right";
    EXPECT_EQ(steady.after(30, 2).find("About 3" NBSP "min"), 0u)
        << "work that has become slow is told to be";

    work_t few(10);
    EXPECT_EQ(few.after(4, 1), "About 10" NBSP "s left") << "so few are no number of things";
    few.progress->start("again", 10);
    test::settle();
    EXPECT_EQ(few.note(), "") << "its row stays: what is below would jump";
}

TEST(InplaceProgress, work_of_unknown_length_is_busy_until_its_end)
{
    work_t work(0);
    EXPECT_LE(next_wake_up(), 1000);
    EXPECT_TRUE(work.gauge().IsBusy());
    EXPECT_TRUE(has_state(work.window, ATK_STATE_BUSY));
    EXPECT_EQ(work.after(20, 1), "none");
    work.progress->finish();
    test::settle();
    EXPECT_FALSE(work.gauge().IsBusy());
    EXPECT_FALSE(has_state(work.window, ATK_STATE_BUSY));
    EXPECT_TRUE(test::wait_for([&] { return next_wake_up() > 2000; })) << "nothing is left to look at";
}

TEST(InplaceProgress, a_worker_that_says_nothing)
{
    work_t work(1000000);
    EXPECT_EQ(work.after(9), "none");
    EXPECT_EQ(work.after(1), "No news for 10" NBSP "s");
    EXPECT_EQ(work.after(35), "No news for 40" NBSP "s");
    EXPECT_EQ(work.after(80), "No news for 2" NBSP "min");
    work.window->get_messenger(work.tag)->say(sev_none, "line");
    test::settle();
    EXPECT_EQ(work.note(), "") << "a line ends it at once; its row stays";
    EXPECT_EQ(work.after(10), "No news for 10" NBSP "s");
    EXPECT_EQ(work.after(1, 1), "") << "and so does what is too little for the bar";
    EXPECT_EQ(work.after(10), "No news for 10" NBSP "s");
    work.progress->finish();
    test::settle();
    EXPECT_EQ(work.note(), "none");
}

TEST(InplaceProgress, cancelled_work_stops_where_it_was)
{
    work_t work(100);
    work.after(3, 10);
    test::offered_button(work.window.control(), 0, 5)->Press();
    EXPECT_EQ(work.note(), "Stopping…");
    EXPECT_EQ(work.after(20), "Stopping…");
    work.progress->finish();
    test::settle();
    EXPECT_EQ(work.note(), "none");
    EXPECT_EQ(work.gauge().GetValue(), 240);

    work_t other(0);
    other.progress->cancel(); // by the host
    EXPECT_EQ(other.after(1), "Stopping…");
    EXPECT_FALSE(test::offered_button(other.window.control(), 0, 5)->IsEnabled());
    EXPECT_TRUE(other.window->update_message(other.tag, test::make_message("stopped"), {}).succeeded());
    EXPECT_EQ(other.note(), "");
}
