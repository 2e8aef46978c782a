#include "probe.h"
#include "support.h"

#include <commondlg3/message_center.h>
#include <wx_helpers1/painted.h>

#include <wx/app.h>
#include <wx/listbox.h>
#include <wx/modalhook.h>

#include <gtk/gtk.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using commondlg3::message_center_t;
using commondlg3::message_window_t;

message_window_t named(const std::string& name, int button_type = 1)
{
    message_window_t window = test::sample_message(button_type);
    window.main_message = name;
    return window;
}

wxListBox* list_of(wxTopLevelWindow* window)
{
    return commondlg3::from_xrc<wxListBox>(window, "m_list");
}

std::string headline_of(wxTopLevelWindow* window)
{
    return commondlg3::from_xrc<wxStaticText>(window, "m_main_instructions")->GetLabel().utf8_string();
}

void press_yes(wxTopLevelWindow* window)
{
    test::click(window, "m_btn_ok");
    test::settle();
}

// One answer for all who raised it, in one window, however often it came.
TEST(MessageCenter, TheSameMessageIsCounted)
{
    auto center = std::make_unique<message_center_t>();
    std::vector<int> answers;
    const auto note = [&](int answer) { answers.push_back(answer); };
    const int answer = test::run_modal(
        [&] {
            center->raise(named("a"), note);
            return center->ask(named("a"));
        },
        [&](wxTopLevelWindow* window) {
            auto* count = commondlg3::from_xrc<wxStaticText>(window, "m_count");
            EXPECT_EQ("This message came 2 times.", count->GetLabel());
            EXPECT_FALSE(list_of(window)->IsShown());
            wxTheApp->CallAfter([&] { press_yes(window); });
            note(10 + center->ask(named("a"))); // waits above the window
        });
    EXPECT_EQ(1, answer);
    EXPECT_EQ((std::vector<int>{1, 11}), answers);
    EXPECT_EQ(0u, center->get_count());
}

class failing_hook_t : public wxModalDialogHook
{
public:
    failing_hook_t() { Register(); }
    ~failing_hook_t() override { Unregister(); }

protected:
    int Enter(wxDialog*) override { throw std::runtime_error("no window"); }
};

TEST(MessageCenter, AWindowThatCannotOpenKeepsNobodyWaiting)
{
    message_center_t center;
    int answer = -1;
    {
        const failing_hook_t hook;
        center.raise(named("a"), [&](int given) { answer = given; });
        EXPECT_THROW(center.ask(named("b")), std::runtime_error);
    }
    EXPECT_EQ(static_cast<int>(message_window_t::result_none), answer);
    EXPECT_EQ(0u, center.get_count());
    EXPECT_EQ(1, test::run_modal([&] { return center.ask(named("c")); }, press_yes)) << "the next one comes";
}

TEST(MessageCenter, DifferentOnesStandInAListAndAreAnsweredOneByOne)
{
    message_center_t center;
    std::string answers;
    for (const char* name : {"a", "b", "c", "a"})
        center.raise(named(name, name[0] == 'c' ? 0 : 1),
                     [&answers, name](int answer) { answers += name + std::to_string(answer); });
    for (int i = 0; i < 300; ++i)
        center.raise(named("more " + std::to_string(i), 0));
    const int answer =
        test::run_modal([&] { return center.ask(named("last")); },
                        [&](wxTopLevelWindow* window) {
                            EXPECT_EQ(304u, list_of(window)->GetCount());
                            EXPECT_EQ("Warning: a (×2)", list_of(window)->GetString(0).utf8_string());
                            EXPECT_EQ("a", headline_of(window));
                            center.raise(named("new", 0));
                            test::settle();
                            EXPECT_EQ("a", headline_of(window)) << "who looks at one is disturbed by another";
                            press_yes(window);
                            EXPECT_EQ("b", headline_of(window));
                            test::press(WXK_ESCAPE);
                            EXPECT_EQ("a1a1b2", answers);
                            test::click(window, "m_btn_close_all");
                            test::settle();
                            EXPECT_EQ("a1a1b2c0", answers);
                            EXPECT_FALSE(list_of(window)->IsShown());
                            EXPECT_EQ("last", headline_of(window));
                            press_yes(window);
                        });
    EXPECT_EQ(1, answer);
}

// A button that Return presses away from the focus acts a quarter of a second later.
TEST(MessageCenter, WhatIsPressedDoesNotAnswerTheMessageThatIsLookedAtNext)
{
    message_center_t center;
    std::string answers;
    center.raise(named("a"), [&](int answer) { answers += "a" + std::to_string(answer); });
    const int answer = test::run_modal([&] { return center.ask(named("b")); },
                                       [&](wxTopLevelWindow* window) {
                                           const auto look_at = [&](int number) {
                                               list_of(window)->SetSelection(number);
                                               test::send(wxEVT_LISTBOX, list_of(window), number);
                                           };
                                           wxWindow* yes = wxWindow::FindWindowByName("m_btn_ok", window);
                                           gtk_widget_activate(GTK_WIDGET(yes->GetHandle()));
                                           EXPECT_TRUE(test::is_pressed(yes));
                                           look_at(1);
                                           EXPECT_EQ("b", headline_of(window));
                                           EXPECT_FALSE(test::is_pressed(yes));
                                           look_at(0);
                                           press_yes(window);
                                           EXPECT_EQ("a1", answers);
                                           press_yes(window);
                                       });
    EXPECT_EQ(1, answer);
}

// Who waits for one message gets its answer while others are still there; these come again.
TEST(MessageCenter, WhatIsLeftComesAgain)
{
    message_center_t center;
    int left = -1;
    center.raise(named("left"), [&](int answer) { left = answer; });
    EXPECT_EQ(1, test::run_modal([&] { return center.ask(named("asked")); },
                                 [&](wxTopLevelWindow* window) {
                                     list_of(window)->SetSelection(1);
                                     test::send(wxEVT_LISTBOX, list_of(window), 1);
                                     EXPECT_EQ("asked", headline_of(window));
                                     wx_helpers1::when_next_window_is_painted(
                                         [](wxTopLevelWindow* again) { again->Close(); });
                                     press_yes(window);
                                 }));
    EXPECT_TRUE(test::wait_for([&] { return left != -1; }));
    EXPECT_EQ(2, left);
}

// Who asks from above another modal window could not be answered below that.
TEST(MessageCenter, ComesAboveWhatCoversIt)
{
    message_center_t center;
    std::vector<int> answers;
    const auto ask = [&](const char* name) {
        answers.push_back(center.ask(named(name)));
        return 0;
    };
    const auto cover_and_ask = [&](wxTopLevelWindow* window) {
        test::probe_dialog_t cover("dlg.example");
        test::run_modal([&] { return cover.show_modal(window); },
                        [&](wxTopLevelWindow*) {
                            test::run_modal([&] { return ask("second"); },
                                            [](wxTopLevelWindow* second) { second->Close(); });
                            EXPECT_TRUE(cover.IsShown()) << "what was typed there is lost";
                            cover.Close();
                        });
        press_yes(window);
    };
    test::run_modal([&] { return ask("first"); }, cover_and_ask);
    EXPECT_EQ((std::vector<int>{2, 1}), answers);
    EXPECT_EQ(0u, center.get_count());
}

// Who waits above the window keeps it from returning when it ends with one below it.
TEST(MessageCenter, EndsWithWhatIsBelowIt)
{
    message_center_t center;
    test::probe_dialog_t below("dlg.example");
    std::vector<int> answers;
    const auto ask_above = [&](wxTopLevelWindow*) {
        wxTheApp->CallAfter([&] { below.end_dialog(wxID_CANCEL); });
        answers.push_back(center.ask(named("second")));
    };
    test::run_modal([&] { return below.show_modal(test::main_window()); },
                    [&](wxTopLevelWindow*) {
                        answers.push_back(
                            test::run_modal([&] { return center.ask(named("first")); }, ask_above));
                    });
    EXPECT_EQ((std::vector<int>{7, 7}), answers);
    EXPECT_EQ(0u, center.get_count());
}

// Nobody is left waiting when the window or the center goes.
TEST(MessageCenter, GoesWithItsParentOrItsOwner)
{
    auto center = std::make_unique<message_center_t>();
    EXPECT_EQ(7, test::run_modal([&] { return center->ask(named("a")); },
                                 [&](wxTopLevelWindow*) { center.reset(); }));
    message_center_t other;
    wxFrame* parent = test::show_frame("parent");
    test::probe_dialog_t below("dlg.example");
    test::run_modal([&] { return below.show_modal(parent); },
                    [&](wxTopLevelWindow*) {
                        EXPECT_EQ(7, test::run_modal([&] { return other.ask(named("a")); },
                                                     [&](wxTopLevelWindow*) { parent->Destroy(); }));
                    });
    EXPECT_EQ(0u, other.get_count());
}

} // namespace
