#include "log_tools.h"

#include <wx_helpers1/tasks.h>

#include <wx/button.h>
#include <wx/clipbrd.h>

#include <algorithm>
#include <initializer_list>
#include <string>
#include <vector>

using namespace commondlg3;
using namespace msngr2;
using gen_helpers2::variant_bag_t;
using gen_helpers2::variant_t;

namespace {

const vdxcfrw7::line_t& line_at(test::log_window_t& window, std::size_t entry, std::size_t line)
{
    return window.log().GetElements().at(entry)->GetLines().at(line);
}

std::string clipboard_text(test::log_window_t& window)
{
    wxCommandEvent event;
    window->handle_copy(event);
    wxTextDataObject data;
    wxClipboardLocker lock;
    wxTheClipboard->GetData(data);
    return data.GetText().utf8_string();
}

message_t::ptr_t with_buttons(const std::string& caption, std::initializer_list<int> ids)
{
    interactive_message_t::ptr_t record(new interactive_message_t);
    record->caption = caption;
    for (int id : ids)
        record->add_button(id, "Button " + std::to_string(id));
    return record;
}

} // namespace

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

TEST(InplaceControl, unknown_tags)
{
    test::log_window_t window;
    for (const auto& result : {window->erase(5), window->update_message(5, test::make_message("x"), {})}) {
        EXPECT_TRUE(result.failed());
        EXPECT_NE(result.message().find("m_entries.find(tag) != m_entries.end()"), std::string::npos);
    }
    EXPECT_EQ(window->get_messenger(5), nullptr);
    EXPECT_EQ(window->get_progress(5), nullptr);
    EXPECT_FALSE(window->has_severity(5, sev_error));
    EXPECT_FALSE(window->has_changes());
}

TEST(InplaceControl, only_the_newest_entry_offers_buttons)
{
    test::log_window_t window;
    std::vector<int> pressed;
    inplace_ctrl_t::callback_t callback;
    callback.connect([&pressed](int id) { pressed.push_back(id); });
    window->add_message(with_buttons("first", {1, 7}), callback);
    ASSERT_TRUE(test::offered_button(window.control(), 0, 7));
    EXPECT_TRUE(test::offered_button(window.control(), 0, 1)->IsDefault());
    window->add_message(with_buttons("second", {1, 7}), callback);
    EXPECT_FALSE(test::offered_button(window.control(), 0, 7));

    test::offered_button(window.control(), 1, 7)->Press();
    EXPECT_EQ(pressed, std::vector<int>{7});
    EXPECT_FALSE(test::offered_button(window.control(), 1, 7)) << "an answered message asks no more";

    // A new record brings new buttons, for the newest entry only, and a new callback in place of the old.
    std::vector<int> others;
    inplace_ctrl_t::callback_t other;
    other.connect([&others](int id) { others.push_back(id); });
    EXPECT_TRUE(window->update_message(0, with_buttons("first again", {3}), other).succeeded());
    EXPECT_TRUE(window->update_message(1, with_buttons("second again", {4}), other).succeeded());
    EXPECT_FALSE(test::offered_button(window.control(), 0, 3));
    ASSERT_TRUE(test::offered_button(window.control(), 1, 4));
    test::offered_button(window.control(), 1, 4)->Press();
    EXPECT_EQ(others, std::vector<int>{4});
    EXPECT_EQ(pressed.size(), 1u);
    EXPECT_EQ(test::captions_of(window.control()), (std::vector<std::string>{"first again", "second again"}));
}

// An entry that becomes the newest again when a later one goes must hide its buttons like any other.
TEST(InplaceControl, updates)
{
    test::log_window_t window;
    window->add_message(with_buttons("a", {1}), {});
    window->add_message(with_buttons("b", {2}), {});
    EXPECT_TRUE(window->erase(1).succeeded());
    variant_bag_t bag;
    window->save(bag);
    EXPECT_TRUE(window->update_message(0, nullptr, {}).failed());
    EXPECT_EQ(test::captions_of(window.control()), std::vector<std::string>{"a"});
    EXPECT_TRUE(window->update_message(0, with_buttons("a again", {3}), {}).succeeded());
    EXPECT_FALSE(window->has_changes()) << "no update counts as a change, a refused one least of all";
    EXPECT_TRUE(test::offered_button(window.control(), 0, 3));
    window->add_message(with_buttons("c", {4}), {});
    EXPECT_FALSE(test::offered_button(window.control(), 0, 3));

    // Work that runs can be cancelled, whatever is said about it; work that has ended cannot.
    const auto tag = window->add_progress(test::make_progress("work"), {});
    IProgress* progress = window->get_progress(tag);
    progress->start("work", 2);
    EXPECT_TRUE(window->update_message(tag, with_buttons("half done", {8}), {}).succeeded());
    EXPECT_TRUE(test::offered_button(window.control(), 2, 5) && test::offered_button(window.control(), 2, 8));
    progress->finish();
    EXPECT_TRUE(window->update_message(tag, test::make_message("done"), {}).succeeded());
    EXPECT_FALSE(test::offered_button(window.control(), 2, 5));
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
    wxCommandEvent press(wxEVT_BUTTON, button->GetId());
    press.SetEventObject(button);
    button->HandleWindowEvent(press);
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
    EXPECT_TRUE(window.log().GetElements()[0]->GetLines().empty());

    messenger->say(sev_status, "reading a");
    messenger->say(sev_critical, "broken");
    messenger->say(sev_warning | sev_info, "odd");
    messenger->say(sev_none, "plain");
    messenger->say(sev_status | sev_error, "reading b");
    messenger->say(sev_none, nullptr);
    test::settle();
    EXPECT_TRUE(window->has_changes());
    ASSERT_EQ(window.log().GetElements()[0]->GetLines().size(), 4u)
        << "one status line, however often it is said";
    EXPECT_EQ(line_at(window, 0, 0).get_text(), "reading b");
    EXPECT_EQ(test::lines_of(window.control(), 0), (std::vector<std::string>{"broken", "odd", "plain"}));
    // Pictures: error, warning, info, empty, in the order of the list.
    const int images[] = {0, 0, 1, 3};
    for (std::size_t i = 0; i < 4; ++i)
        EXPECT_EQ(line_at(window, 0, i).image, images[i]) << i;

    EXPECT_TRUE(window->has_severity(tag, sev_error | sev_critical));
    EXPECT_FALSE(window->has_severity(tag, sev_error)) << "a status line does not count";
    EXPECT_FALSE(window->has_severity(tag, sev_status));

    test::log_window_t with_debug(true);
    with_debug->get_messenger(with_debug->add_message(test::make_message("entry"), {}))
        ->say(sev_debug, "shown");
    test::settle();
    EXPECT_EQ(test::lines_of(with_debug.control(), 0), std::vector<std::string>{"shown"});
}

TEST(InplaceControl, saving_and_loading)
{
    variant_bag_t bag;
    {
        test::log_window_t window;
        auto message = with_buttons("message", {1});
        message->message = "a < b &amp; <b>c</b>";
        message->picture = standard_message_t::get_icon_by_type(standard_message_t::icon_types_t::success);
        const auto tag = window->add_message(message, {});
        window->get_messenger(tag)->say(sev_warning, "one");
        window->get_messenger(tag)->say(sev_status, "not kept");
        window->get_messenger(tag)->say(sev_none, "two \xff");
        window->add_progress(test::make_progress("progress"), {});
        test::settle();
        EXPECT_TRUE(window->save(bag).succeeded());
        EXPECT_FALSE(window->has_changes());
    }
    ASSERT_EQ(bag.size(), 2u);
    const variant_bag_t& saved = bag.get<variant_bag_t>("message_entry_t");
    EXPECT_EQ(saved.get<variant_t>("msg").get<std::string>(), "a < b &amp; <b>c</b>");
    EXPECT_EQ(saved.get<variant_bag_t>("message").get<variant_t>("severity").get<int>(), sev_warning);

    test::log_window_t window;
    window->add_message(test::make_message("before"), {});
    EXPECT_TRUE(window->load(bag).succeeded());
    EXPECT_FALSE(window->has_changes()) << "right after loading";
    EXPECT_TRUE(test::lines_of(window.control(), 1).empty()) << "lines are said again, and shown later";
    test::settle();
    EXPECT_TRUE(window->has_changes());
    EXPECT_EQ(test::captions_of(window.control()),
              (std::vector<std::string>{"before", "message", "progress"}));
    EXPECT_EQ(test::lines_of(window.control(), 1), (std::vector<std::string>{"one", "two \xff"}));
    EXPECT_TRUE(window->has_severity(1, sev_warning));
    EXPECT_FALSE(window.log().GetElements()[1]->GetHead().picture.is_empty());
    EXPECT_TRUE(window.log().GetElements()[1]->GetButtons().empty());
    EXPECT_FALSE(window.log().GetElements()[2]->GetGauge().IsShown())
        << "progress comes back as a plain message";

    window->erase(0);
    variant_bag_t again;
    window->save(again);
    // The picture's text may name its colours in another order.
    EXPECT_EQ(again.find_child("message_entry_t")->remove("img"), 1u);
    EXPECT_EQ(bag.find_child("message_entry_t")->remove("img"), 1u);
    EXPECT_EQ(again, bag);
}

TEST(InplaceControl, one_bad_entry_does_not_stop_the_others)
{
    variant_bag_t bag;
    for (const char* caption : {"good", "no severity", "wrong text", "also good"}) {
        variant_bag_t& entry = bag.add_child("message_entry_t");
        entry.put("cap", caption);
        variant_bag_t& line = entry.add_child("message");
        line.put("msg", "line");
        line.put("severity", 2);
    }
    std::size_t index = 0;
    for (auto& item : bag) {
        if (++index == 2)
            item.child()->find_child("message")->remove("severity");
        else if (index == 3)
            item.child()->find_child("message")->put("msg", 5);
    }
    test::log_window_t window;
    EXPECT_TRUE(window->load(bag).succeeded());
    test::settle();
    EXPECT_EQ(test::captions_of(window.control()).size(), 4u) << "what could be read of a bad entry stays";
    EXPECT_TRUE(test::lines_of(window.control(), 1).empty());
    EXPECT_TRUE(test::lines_of(window.control(), 2).empty());
    EXPECT_EQ(test::lines_of(window.control(), 3), std::vector<std::string>{"line"});
}

TEST(InplaceControl, text_for_the_clipboard)
{
    test::log_window_t window;
    auto message = test::make_message("Caption", "Some <b>bold</b> text, 1 < 2");
    const auto tag = window->add_message(message, {});
    window->get_messenger(tag)->say(sev_status, "working");
    window->get_messenger(tag)->say(sev_none, "first");
    window->get_messenger(tag)->say(sev_error, "second");
    const auto progress_tag = window->add_progress(test::make_progress("Progress"), {});
    IProgress* progress = window->get_progress(progress_tag);
    progress->start("Reading", 3);
    progress->internalProgressed(1);
    test::settle();
    EXPECT_EQ(clipboard_text(window),
              "Caption\nSome bold text, 1 < 2\nworking\nfirst\nsecond\nProgress\nDone: 33%");
}

TEST(InplaceControl, progress_steps)
{
    test::log_window_t window;
    const auto tag = window->add_progress(test::make_progress("Progress"), {});
    IProgress* progress = window->get_progress(tag);
    ASSERT_EQ(window->get_progress(tag), progress) << "asking again connects nothing twice";
    const vdxcfrw7::CGauge& gauge = window.log().GetElements()[0]->GetGauge();
    EXPECT_TRUE(gauge.IsShown());
    EXPECT_EQ(gauge.GetRange(), 800);

    progress->start("Reading", 10);
    progress->internalProgressed(1);
    test::settle();
    EXPECT_EQ(gauge.GetValue(), 80);
    EXPECT_EQ(gauge.GetCaption(), "Reading");
    EXPECT_EQ(progress->getTotalSteps(), 10);
    for (int i = 0; i < 9; ++i)
        progress->internalProgressed(1);
    test::settle();
    EXPECT_EQ(gauge.GetValue(), 800);
    progress->internalProgressed(1000);
    test::settle();
    EXPECT_EQ(gauge.GetValue(), 800);

    progress->start("Exact", 320); // 57.5 is rounded up, which a quotient taken first would not reach
    progress->internalProgressed(23);
    test::settle();
    EXPECT_EQ(gauge.GetValue(), 58);

    progress->start("Again", 1e9); // less than half a step is kept until there is more
    for (int i = 0; i < 1000; ++i)
        progress->internalProgressed(600);
    test::settle();
    EXPECT_EQ(gauge.GetValue(), 0);
    progress->internalProgressed(100000);
    test::settle();
    EXPECT_EQ(gauge.GetValue(), 1);

    progress->start("Nothing to do", 0);
    progress->internalProgressed(5);
    progress->finish();
    progress->message("status");
    test::settle();
    EXPECT_EQ(gauge.GetValue(), 0);
    EXPECT_EQ(window.log().GetElements()[0]->GetText(), "Progress\nstatus");
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
    EXPECT_TRUE(window.log().GetElements()[0]->GetButtons().empty());
    progress->start("ignored", 2);
    progress->message("ignored");
    progress->internalProgressed(1);
    test::settle();
    EXPECT_EQ(window.log().GetElements()[0]->GetGauge().GetValue(), 400);
    EXPECT_EQ(window.log().GetElements()[0]->GetGauge().GetCaption(), "");
    EXPECT_TRUE(window.log().GetElements()[0]->GetLines().empty());
}

TEST(InplaceControl, proxies_are_shared_and_may_outlive_everything)
{
    IMessenger* messenger = nullptr;
    IProgress* progress = nullptr;
    {
        test::log_window_t window;
        window->add_progress(test::make_progress("a"), {});
        window->add_progress(test::make_progress("b"), {});
        messenger = window->get_messenger(0);
        progress = window->get_progress(0);
        EXPECT_EQ(window->get_messenger(1), messenger);
        messenger->say(sev_none, "to the second");
        test::settle();
        EXPECT_EQ(test::lines_of(window.control(), 1).size(), 1u);

        progress->start("x", 10);
        EXPECT_TRUE(window->erase(0).succeeded());
        EXPECT_EQ(progress->getTotalSteps(), 1.0) << "its entry is gone";
        EXPECT_EQ(window->get_progress(77), nullptr);
        window->clear();
        messenger->say(sev_none, "to nobody");
        progress->cancel();
        EXPECT_FALSE(progress->isCanceled());
        window->get_messenger(window->add_message(test::make_message("c"), {}));
    }
    messenger->say(sev_error, "after the window's end");
    progress->finish();
    test::settle();
}

TEST(InplaceControl, without_a_scheduler_nothing_appears)
{
    test::log_window_t window;
    const auto tag = window->add_progress(test::make_progress("a"), {});
    wx_helpers1::tasks::Scheduler::Shutdown();
    window->get_messenger(tag)->say(sev_none, "lost");
    window->get_progress(tag)->start("lost", 5);
    wx_helpers1::tasks::Scheduler::Initialize();
    test::settle();
    EXPECT_TRUE(test::lines_of(window.control(), 0).empty());
    EXPECT_EQ(test::take_assertions().size(), 2u);
}
