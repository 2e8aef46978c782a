#include "log_tools.h"

#include <wx/button.h>

#include <functional>
#include <string>
#include <vector>

using namespace commondlg3;
using namespace msngr2;
using gen_helpers2::variant_bag_t;
using test::with_buttons;

TEST(InplaceControl, tags_are_never_used_again)
{
    test::log_window_t window;
    EXPECT_FALSE(window->has_changes());
    EXPECT_TRUE(window->clear().succeeded());
    EXPECT_FALSE(window->has_changes()) << "there was nothing to clear";
    EXPECT_EQ(window->add_message(test::make_message("a"), {}), 0u);
    EXPECT_EQ(window->add_progress(test::make_progress("b"), {}), 1u);
    EXPECT_TRUE(window->has_changes());
    EXPECT_TRUE(window->erase(1).succeeded());
    EXPECT_EQ(window->add_message(test::make_message("c"), {}), 2u);
    EXPECT_TRUE(window->clear().succeeded());
    EXPECT_EQ(window->add_message(test::make_message("d"), {}), 3u);
    EXPECT_EQ(test::captions_of(window.control()), std::vector<std::string>{"d"});

    EXPECT_EQ(window->add_custom(custom_message_t::ptr_t(new custom_message_t)), 0u);
    EXPECT_EQ(test::take_assertions(), std::vector<std::string>{"add_custom not impl"});
    EXPECT_EQ(test::captions_of(window.control()).size(), 1u);
}

TEST(InplaceControl, what_is_unknown_is_told_by_its_condition)
{
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("known"), {});
    variant_bag_t bag;
    window->save(bag); // nothing has changed now
    const struct
    {
        gen_helpers2::error_code_t result;
        const char* condition;
    } rows[] = {
        {window->erase(5), "m_entries.find(tag) != m_entries.end()"},
        {window->update_message(5, test::make_message("x"), {}), "m_entries.find(tag) != m_entries.end()"},
        {window->update_message(tag, nullptr, {}),
         "m_entries[tag]->update_message(new_msg, &callback).succeeded()"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ("gh2::error::IsNot.Valid.Parameter", row.result.identifier());
        EXPECT_EQ(row.condition, row.result.message());
    }
    EXPECT_EQ(window->get_messenger(5), nullptr);
    EXPECT_EQ(window->get_progress(5), nullptr);
    EXPECT_FALSE(window->has_severity(5, sev_error));
    EXPECT_FALSE(window->has_changes());
    EXPECT_EQ(test::captions_of(window.control()), std::vector<std::string>{"known"});
}

TEST(InplaceControl, only_the_newest_entry_offers_buttons)
{
    test::log_window_t window;
    const auto offered = [&](std::size_t entry, int id) {
        return test::offered_button(window.control(), entry, id);
    };
    std::vector<int> pressed;
    inplace_ctrl_t::callback_t callback;
    callback.connect([&pressed](int id) { pressed.push_back(id); });
    window->add_message(with_buttons("first", {1, 7}), callback);
    ASSERT_TRUE(offered(0, 7));
    EXPECT_TRUE(offered(0, 1)->IsDefault());
    window->add_message(with_buttons("second", {1, 7}), callback);
    EXPECT_FALSE(offered(0, 7));
    offered(1, 7)->Press();
    EXPECT_EQ(pressed, std::vector<int>{7});
    EXPECT_FALSE(offered(1, 7)) << "an answered message asks no more";

    // A new record brings new buttons, for the newest entry only, and a new callback in place of the old.
    variant_bag_t bag;
    window->save(bag);
    std::vector<int> others;
    inplace_ctrl_t::callback_t other;
    other.connect([&others](int id) { others.push_back(id); });
    EXPECT_TRUE(window->update_message(0, with_buttons("first again", {3}), other).succeeded());
    EXPECT_TRUE(window->update_message(1, with_buttons("second again", {4}), other).succeeded());
    EXPECT_FALSE(window->has_changes()) << "no update counts as a change";
    EXPECT_FALSE(offered(0, 3));
    ASSERT_TRUE(offered(1, 4));
    offered(1, 4)->Press();
    EXPECT_EQ(others, std::vector<int>{4});
    EXPECT_EQ(pressed.size(), 1u);
    EXPECT_EQ(test::captions_of(window.control()), (std::vector<std::string>{"first again", "second again"}));

    // An entry that becomes the newest again when a later one goes must hide its buttons like any other.
    EXPECT_TRUE(window->erase(1).succeeded());
    EXPECT_TRUE(window->update_message(0, with_buttons("first", {3}), {}).succeeded());
    EXPECT_TRUE(offered(0, 3));
    const auto tag = window->add_progress(test::make_progress("work"), {});
    EXPECT_FALSE(offered(0, 3));

    // Work that runs can be cancelled, whatever is said about it; work that has ended cannot.
    IProgress* progress = window->get_progress(tag);
    progress->start("work", 2);
    EXPECT_TRUE(window->update_message(tag, with_buttons("half done", {8}), {}).succeeded());
    EXPECT_TRUE(offered(1, 5) && offered(1, 8));
    progress->finish();
    EXPECT_TRUE(window->update_message(tag, test::make_message("done"), {}).succeeded());
    EXPECT_FALSE(offered(1, 5));
}

TEST(InplaceControl, a_callback_may_take_its_own_entry_away)
{
    test::log_window_t window;
    inplace_ctrl_t::callback_t callback;
    callback.connect([&window](int) { window->clear(); });
    window->add_message(with_buttons("gone", {1}), callback);
    test::settle();
    // Through the real button, whose own handler is still running when its entry goes.
    wxWindow* view = window.log().GetWindow();
    ASSERT_EQ(view->GetChildren().size(), 1u);
    auto* button = wxDynamicCast(view->GetChildren().front(), wxButton);
    test::send(wxEVT_BUTTON, button);
    test::settle();
    EXPECT_TRUE(window.log().GetElements().empty());
    EXPECT_TRUE(view->GetChildren().empty());
}

TEST(InplaceControl, lines_by_severity)
{
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("entry"), {});
    variant_bag_t bag;
    window->save(bag); // nothing has changed now
    IMessenger* messenger = window->get_messenger(tag);
    messenger->say(sev_debug, "dropped");
    messenger->say(sev_debug | sev_status | sev_error, "dropped as well");
    test::settle();
    EXPECT_FALSE(window->has_changes());
    EXPECT_TRUE(window.element(0).GetLines().empty());

    messenger->say(sev_status, "reading a");
    messenger->say(sev_critical, "broken");
    messenger->say(sev_warning | sev_info, "odd");
    messenger->say(sev_none, "plain");
    messenger->say(sev_status | sev_error, "reading b");
    messenger->say(sev_none, nullptr);
    test::settle();
    EXPECT_TRUE(window->has_changes());
    ASSERT_EQ(window.element(0).GetLines().size(), 4u) << "one status line, however often it is said";
    EXPECT_EQ(window.element(0).GetLines().at(0).get_text(), "reading b");
    EXPECT_EQ(test::lines_of(window.control(), 0), (std::vector<std::string>{"broken", "odd", "plain"}));
    // Pictures: error, warning, info, empty, in the order of the list.
    const int images[] = {0, 0, 1, 3};
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(window.element(0).GetLines().at(i).image, images[i]) << i;

    EXPECT_TRUE(window->has_severity(tag, sev_error | sev_critical));
    EXPECT_FALSE(window->has_severity(tag, sev_error)) << "a status line does not count";
    EXPECT_FALSE(window->has_severity(tag, sev_status));

    test::log_window_t with_debug(true);
    with_debug->get_messenger(with_debug->add_message(test::make_message("entry"), {}))
        ->say(sev_debug, "shown");
    test::settle();
    EXPECT_EQ(test::lines_of(with_debug.control(), 0), std::vector<std::string>{"shown"});
}

TEST(InplaceControl, a_bad_line_ends_its_entry)
{
    const std::function<void(variant_bag_t&)> damages[] = {
        [](variant_bag_t& line) { line.remove("msg"); },
        [](variant_bag_t& line) { line.put("msg", 5); },
        [](variant_bag_t& line) { line.remove("severity"); },
        [](variant_bag_t& line) { line.put("severity", "2"); },
        [](variant_bag_t&) {},
    };
    variant_bag_t bag;
    for (const auto& damage : damages) {
        variant_bag_t& line = bag.add_child("message_entry_t").add_child("message");
        line.put("msg", "line");
        line.put("severity", 2);
        damage(line);
    }
    test::log_window_t window;
    EXPECT_TRUE(window->load(bag).succeeded());
    test::settle();
    ASSERT_EQ(window.log().GetElements().size(), 5u);
    for (std::size_t i = 0; i < 5; ++i)
        EXPECT_EQ(test::lines_of(window.control(), i).size(), i < 4 ? 0u : 1u) << i;
}

TEST(InplaceControl, progress_steps)
{
    test::log_window_t window;
    const auto tag = window->add_progress(test::make_progress("Progress"), {});
    IProgress* progress = window->get_progress(tag);
    ASSERT_EQ(window->get_progress(tag), progress) << "asking again connects nothing twice";
    const vdxcfrw7::CGauge& gauge = window.element(0).GetGauge();
    EXPECT_TRUE(gauge.IsShown());
    EXPECT_EQ(gauge.GetRange(), 800);

    const struct
    {
        double total, amount;
        int times, value;
    } rows[] = {
        {10, 1, 1, 80},      {10, 1, 10, 800},   {10, 1000, 1, 800},
        {320, 23, 1, 58}, // 57.5 is rounded up, which a quotient taken first would not reach
        {1e9, 600, 1000, 0}, {1e9, 700, 1000, 1}}; // less than half a step is kept until there is more
    for (const auto& row : rows) {
        progress->start("Reading", row.total);
        for (int i = 0; i < row.times; ++i)
            progress->internalProgressed(row.amount);
        test::settle();
        EXPECT_EQ(gauge.GetValue(), row.value) << row.amount << " of " << row.total;
    }
    EXPECT_EQ(gauge.GetCaption(), "Reading");
    EXPECT_EQ(progress->getTotalSteps(), 1e9);

    progress->start("Nothing to do", 0);
    progress->internalProgressed(5);
    progress->message("status");
    test::settle();
    EXPECT_EQ(gauge.GetValue(), 0);
    progress->finish();
    test::settle();
    EXPECT_EQ(gauge.GetValue(), 800) << "looks as if nothing had been done";
    EXPECT_EQ(window.element(0).GetText(), "Progress\nstatus");
    EXPECT_TRUE(test::lines_of(window.control(), 0).empty());
}

TEST(InplaceControl, cancel_is_seen_by_the_worker_and_not_by_the_callback)
{
    test::log_window_t window;
    std::vector<int> pressed;
    inplace_ctrl_t::callback_t callback;
    callback.connect([&pressed](int id) { pressed.push_back(id); });
    const auto tag = window->add_progress(test::make_progress("Progress"), callback);
    IProgress* progress = window->get_progress(tag);
    progress->start("Reading", 10);
    EXPECT_FALSE(progress->isCanceled());
    vdxcfrw7::CButton* cancel = test::offered_button(window.control(), 0, 5);
    ASSERT_TRUE(cancel);
    cancel->Press();
    test::settle();
    EXPECT_TRUE(progress->isCanceled());
    EXPECT_FALSE(cancel->IsEnabled());
    EXPECT_TRUE(pressed.empty());
    progress->finish(); // the worker has stopped
    progress->finish();
    test::settle();
    EXPECT_EQ(pressed, std::vector<int>{5});
}

TEST(InplaceControl, a_message_with_progress_loses_its_buttons)
{
    test::log_window_t window;
    const auto tag = window->add_message(with_buttons("message", {1}), {});
    IProgress* progress = window->get_progress(tag);
    EXPECT_TRUE(window.element(0).GetButtons().empty());
    progress->start("ignored", 2);
    progress->message("ignored");
    progress->internalProgressed(1);
    test::settle();
    EXPECT_EQ(window.element(0).GetGauge().GetValue(), 400);
    EXPECT_EQ(window.element(0).GetGauge().GetCaption(), "");
    EXPECT_TRUE(window.element(0).GetLines().empty());
}
