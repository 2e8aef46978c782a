#include "probe.h"
#include "support.h"

#include <commondlg3/error_warning_dialog.h>

#include <gtk/gtk.h>

#include <functional>
#include <string>

namespace {

using commondlg3::message_options_t;
using commondlg3::message_window_t;
using default_answer_t = message_options_t::default_answer_t;

int run(const message_window_t& window, const message_options_t& options,
        const std::function<void(wxTopLevelWindow*)>& act)
{
    return test::run_modal([&] { return commondlg3::show_modal(window, options, test::main_window()); }, act);
}

wxButton* find(wxTopLevelWindow* window, const char* name)
{
    return wxDynamicCast(wxWindow::FindWindowByName(name, window), wxButton);
}

bool looks_destructive(wxButton* button)
{
    return gtk_style_context_has_class(gtk_widget_get_style_context(GTK_WIDGET(button->GetHandle())),
                                       "destructive-action");
}

// Which answers are destructive and which is wanted -> what Return, Escape and the close box answer.
TEST(MessageOptions, NothingIsDestroyedByDefault)
{
    struct row_t
    {
        bool first, second;
        default_answer_t wanted;
        int on_return, on_escape;
    };
    constexpr int nothing = -1;
    for (const row_t& row : {row_t{false, false, default_answer_t::automatic, 3, 4},
                             row_t{false, false, default_answer_t::second, 4, 4},
                             row_t{true, false, default_answer_t::first, 4, 4},
                             row_t{false, true, default_answer_t::second, 3, 7},
                             row_t{true, true, default_answer_t::first, nothing, 7}}) {
        message_options_t options;
        options.first = {"&Delete", row.first};
        options.second.destructive = row.second;
        options.default_answer = row.wanted;
        for (const bool by_escape : {false, true}) {
            SCOPED_TRACE(testing::Message()
                         << (by_escape ? "Escape" : "Return") << " with " << row.first << row.second);
            bool returned = false;
            const int answer = run(test::sample_message(3), options, [&](wxTopLevelWindow* window) {
                EXPECT_EQ("Delete", find(window, "m_btn_ok")->GetLabelText());
                EXPECT_EQ("Cancel", find(window, "m_btn_cancel")->GetLabelText());
                EXPECT_EQ(row.first, looks_destructive(find(window, "m_btn_ok")));
                EXPECT_EQ(row.second, looks_destructive(find(window, "m_btn_cancel")));
                test::press(by_escape ? WXK_ESCAPE : WXK_RETURN);
                returned = !window->IsShown();
                EXPECT_FALSE(test::is_pressed(find(window, "m_btn_ok"))) << "it acts when it comes up again";
                if (!returned)
                    window->Close();
            });
            EXPECT_EQ(by_escape || row.on_return == nothing ? row.on_escape : row.on_return, answer);
            EXPECT_EQ(by_escape || row.on_return != nothing, returned);
        }
    }
    test::run(test::sample_message(3), [](wxTopLevelWindow* window) {
        EXPECT_EQ("OK", find(window, "m_btn_ok")->GetLabelText()) << "the next message inherits the options";
        EXPECT_FALSE(looks_destructive(find(window, "m_btn_ok")));
        test::press(WXK_ESCAPE);
    });
}

// The button that Return presses away from the focus acts a quarter of a second later.
TEST(MessageOptions, ReturnAnswersNoMessageButItsOwn)
{
    message_options_t options;
    options.first = {"&Delete", false};
    const auto close = [](wxTopLevelWindow* window) {
        gtk_window_activate_default(
            GTK_WINDOW(window->GetHandle())); // as Return does, without a turn of the loop
        EXPECT_TRUE(test::is_pressed(find(window, "m_btn_ok")));
        window->Close();
    };
    EXPECT_EQ(message_window_t::result_cancel, run(test::sample_message(3), options, close));
    const auto wait = [](wxTopLevelWindow* window) {
        EXPECT_TRUE(test::wait_for([&] { return !test::is_pressed(find(window, "m_btn_ok")); }));
        EXPECT_TRUE(window->IsShown());
        window->Close();
    };
    EXPECT_EQ(message_window_t::result_cancel, run(test::sample_message(3), options, wait));
}

TEST(MessageOptions, LongDetailsFold)
{
    message_window_t message = test::sample_message();
    const auto with_lines = [&](int count) {
        message.details_message.clear();
        for (int i = 0; i < count; ++i)
            message.details_message += "Line of the details\n";
        return message;
    };
    test::run(with_lines(5), [](wxTopLevelWindow* window) {
        EXPECT_FALSE(find(window, "m_btn_details"));
        test::press(WXK_ESCAPE);
    });
    for (const int count : {6, 400}) {
        test::run(with_lines(count), [&](wxTopLevelWindow* window) {
            auto* details = commondlg3::from_xrc<wxStaticText>(window, "m_details");
            const wxSize folded = window->GetSize();
            EXPECT_FALSE(details->IsShown());
            find(window, "m_btn_details")->SetFocus();
            test::press(WXK_SPACE);
            EXPECT_TRUE(details->IsShownOnScreen());
            EXPECT_GT(window->GetSize().y, folded.y + 60);
            EXPECT_LE(window->GetScreenRect().GetBottom(), wxGetDisplaySize().y);
            EXPECT_TRUE(find(window, "m_btn_details")->HasFocus());
            test::press(WXK_SPACE);
            EXPECT_FALSE(details->IsShown());
            EXPECT_EQ(folded, window->GetSize());
            test::press('C', wxMOD_CONTROL);
            EXPECT_NE(std::string::npos, test::clipboard_text().find("Line of the details"));
            test::press(WXK_ESCAPE);
        });
    }
}

// What helps to report a message: the log is beneath it, so that a message that asks nothing goes first.
TEST(MessageOptions, WhatHelpsToReportIt)
{
    int shown = 0;
    message_options_t options;
    options.offers_copy = true;
    options.show_in_log = [&] { ++shown; };
    EXPECT_EQ(0, run(test::sample_message(0), options, [&](wxTopLevelWindow* window) {
                  EXPECT_FALSE(find(window, "m_btn_save_report")->IsShown());
                  find(window, "m_btn_copy")->SetFocus();
                  test::press(WXK_SPACE);
                  EXPECT_NE(std::string::npos, test::clipboard_text().find("ENOSPC"));
                  EXPECT_EQ("Copied", find(window, "m_btn_copy")->GetLabelText());
                  test::send(wxEVT_BUTTON, find(window, "m_btn_show_in_log"));
                  EXPECT_FALSE(window->IsShown());
              }));
    EXPECT_EQ(2, run(test::sample_message(1), options, [&](wxTopLevelWindow* window) {
                  EXPECT_EQ("Copy", find(window, "m_btn_copy")->GetLabelText());
                  test::send(wxEVT_BUTTON, find(window, "m_btn_show_in_log"));
                  EXPECT_TRUE(window->IsShown());
                  test::press(WXK_ESCAPE);
              }));
    EXPECT_EQ(2, shown);
}

} // namespace
