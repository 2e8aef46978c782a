#include "probe.h"
#include "support.h"

#include <commondlg3/error_warning_dialog.h>
#include <commondlg3/text_utils.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/painted.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/display.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <string>
#include <vector>

namespace {

using commondlg3::message_window_t;
using test::run;
using test::run_modal;
using test::sample_message;
using button_type_t = message_window_t::button_type_t;
using icon_types_t = message_window_t::icon_types_t;

template <class T>
T* find(wxTopLevelWindow* window, const char* name)
{
    return commondlg3::from_xrc<T>(window, name);
}

wxPoint centre_of(const wxWindow* window)
{
    return window->GetScreenPosition() + window->GetSize() / 2;
}

class check_box_t : public gen_helpers2::ref_counted_of_t<commondlg3::i_check_box_definition>
{
public:
    std::string get_name() const override { return "test"; }
    bool get_default_checked() const override { return false; }
    void reset() override { checked = false; }
    bool is_checked() const override { return checked; }
    void set_checked(bool value) override { checked = value; }
    void commit() override { committed.push_back(checked); }
    std::string get_label() const override { return "Don't show R&D messages"; }

    ~check_box_t()
    {
        if (destroyed)
            *destroyed = true;
    }

    bool checked = false;
    std::vector<bool> committed;
    bool* destroyed = nullptr;
};

// Button set x way of ending -> answer; and how many buttons the set shows.
TEST(MessageWindow, EveryButtonSetAnswersEveryWayOfEnding)
{
    const std::function<void(wxTopLevelWindow*)> ways[] = {
        [](wxTopLevelWindow* window) { test::click(window, "m_btn_ok"); },
        [](wxTopLevelWindow* window) { test::click(window, "m_btn_cancel"); },
        [](wxTopLevelWindow*) { test::press(WXK_RETURN); },
        [](wxTopLevelWindow*) { test::press(WXK_ESCAPE); },
        [](wxTopLevelWindow* window) { window->Close(); },
    };
    constexpr int no = -1; // that button is not there
    struct row_t
    {
        int type;
        int answers[5];
    };
    const row_t rows[] = {
        {0, {no, 0, 0, 0, 0}},   {1, {1, 2, 1, 2, 2}},  {2, {no, 7, 7, 7, 7}},
        {3, {3, 4, 3, 4, 4}},    {4, {no, 7, 7, 7, 7}}, {5, {5, 4, 5, 4, 4}},
        {6, {no, no, no, 7, 7}}, {7, {no, 7, 7, 7, 7}}, {-1, {no, 7, 7, 7, 7}},
    };
    for (const row_t& row : rows) {
        for (std::size_t way = 0; way < std::size(ways); ++way) {
            if (row.answers[way] == no)
                continue;
            SCOPED_TRACE("button type " + std::to_string(row.type) + ", way " + std::to_string(way));
            const int answer = run(sample_message(row.type), [&](wxTopLevelWindow* window) {
                EXPECT_EQ(row.answers[0] != no, find<wxButton>(window, "m_btn_ok")->IsShown());
                EXPECT_EQ(row.answers[1] != no, find<wxButton>(window, "m_btn_cancel")->IsShown());
                ways[way](window);
            });
            EXPECT_EQ(row.answers[way], answer);
        }
    }
}

// One window serves one message after the other: nothing of an earlier one may show, be answered or be kept
// alive.
TEST(MessageWindow, NextMessageInheritsNothing)
{
    bool box_is_gone = false;
    message_window_t long_one = sample_message(1);
    auto* box = new check_box_t;
    box->destroyed = &box_is_gone;
    long_one.check_box = box;
    for (int i = 0; i < 12; ++i)
        long_one.supplemental_message += "\nOne more line of many";
    wxTopLevelWindow* first = nullptr;
    wxSize first_size;
    run(long_one, [&](wxTopLevelWindow* window) {
        first_size = window->GetSize();
        wx_helpers1::select_label_text(find<wxStaticText>(window, "m_main_instructions"), true);
        find<wxWindow>(window, "m_btn_cancel")->SetFocus();
        test::press(WXK_ESCAPE);
    });
    long_one.check_box = nullptr;
    EXPECT_TRUE(box_is_gone) << "the window keeps what its message brought";

    // One that scrolls, and the next at once: no turn of the loop between them.
    message_window_t longest = sample_message(1);
    for (int i = 0; i < 300; ++i)
        longest.supplemental_message += "\nOne more line of many";
    const int next_answer = run_modal(
        [&] {
            commondlg3::show_modal(longest, test::main_window());
            return run(sample_message(1), [&first](wxTopLevelWindow* window) {
                first = window;
                test::click(window, "m_btn_ok");
            });
        },
        [](wxTopLevelWindow*) { test::press(WXK_ESCAPE); });
    EXPECT_EQ(message_window_t::result_yes, next_answer);

    message_window_t short_one;
    short_one.main_message = "Saved caf\xe9 & co"; // callers hand over what other programs said
    short_one.icon_type = icon_types_t::success;
    short_one.button_type = button_type_t::ok_cancel;
    const int answer = run(short_one, [&](wxTopLevelWindow* window) {
        EXPECT_EQ(first, window) << "a window of its own takes twice the time to open";
        EXPECT_LT(window->GetSize().y, first_size.y / 2);
        const wxPoint middle = window->ClientToScreen(wxPoint(0, 0)) + window->GetClientSize() / 2;
        EXPECT_NEAR(centre_of(test::main_window()).y, middle.y, 30) << "comes back where it was";
        EXPECT_FALSE(find<wxWindow>(window, "m_checkBox5")->IsShown());
        EXPECT_FALSE(find<wxWindow>(window, "m_supplemental_instructions")->IsShown());
        EXPECT_FALSE(find<wxWindow>(window, "m_details")->IsShown());
        auto* label = find<wxStaticText>(window, "m_main_instructions");
        EXPECT_EQ(wxString::FromUTF8("Saved caf\xef\xbf\xbd & co"), label->GetLabelText());
        EXPECT_EQ("", wx_helpers1::get_selected_text(label));
        EXPECT_EQ(find<wxWindow>(window, "m_btn_ok"), wxWindow::FindFocus());
        EXPECT_NEAR(centre_of(test::main_window()).x, centre_of(window).x, 20);
        EXPECT_NEAR(centre_of(test::main_window()).y, centre_of(window).y, 40);
        test::press(WXK_RETURN);
    });
    EXPECT_EQ(message_window_t::result_ok, answer);
}

TEST(MessageWindow, AnotherLanguageIsServed)
{
    run(sample_message(1), [](wxTopLevelWindow* window) { window->Close(); });
    const test::language_guard_t german("de");
    run(sample_message(1), [&](wxTopLevelWindow* window) {
        EXPECT_EQ("Ja", find<wxButton>(window, "m_btn_ok")->GetLabelText());
        EXPECT_EQ("Nein", find<wxButton>(window, "m_btn_cancel")->GetLabelText());
        window->Close();
    });
}

// The state is saved when the user answers; cancelling a real choice discards it, closing a mere notice does
// not.
TEST(MessageWindow, CheckBoxIsSavedOnAnAnswerAndOnAcknowledgementOnly)
{
    struct row_t
    {
        int type;
        const char* button; // null: the close box
        bool saved;
    };
    for (const row_t& row :
         {row_t{0, "m_btn_cancel", true}, row_t{0, nullptr, true}, row_t{3, "m_btn_ok", true},
          row_t{3, "m_btn_cancel", false}, row_t{3, nullptr, false}, row_t{2, nullptr, false}}) {
        SCOPED_TRACE("type " + std::to_string(row.type) + (row.button ? row.button : " close box"));
        gen_helpers2::sptr_t<check_box_t> box(new check_box_t);
        message_window_t window = sample_message(row.type);
        window.check_box = box;
        run(window, [&](wxTopLevelWindow* shown) {
            auto* control = find<wxCheckBox>(shown, "m_checkBox5");
            ASSERT_TRUE(control->IsShown());
            EXPECT_EQ("Don't show R&D messages", control->GetLabelText());
            EXPECT_FALSE(control->GetValue());
            control->SetValue(true);
            if (row.button)
                test::click(shown, row.button);
            else
                shown->Close();
        });
        EXPECT_EQ(row.saved, box->checked);
        EXPECT_EQ(row.saved ? std::vector<bool>{true} : std::vector<bool>{}, box->committed);
    }
}

TEST(MessageWindow, IsNeverLargerThanTheScreenAndScrollsByKeyboard)
{
    std::string lines;
    for (int i = 0; i < 300; ++i)
        lines += "line " + std::to_string(i) + "\n";
    const wxSize screen = wxDisplay(test::main_window()).GetClientArea().GetSize();
    for (const auto& [text, alone] :
         {std::make_pair(lines, false), {std::string(3000, '\n'), false}, {lines, true}}) {
        message_window_t window = sample_message(1);
        window.supplemental_message = text;
        if (alone) // the toolkit complains of what is hidden in a window that scrolls
            window.main_message = window.details_message = "";
        const char* const last_text = alone ? "m_supplemental_instructions" : "m_details";
        run(window, [&](wxTopLevelWindow* shown) {
            EXPECT_LE(shown->GetSize().x, screen.x);
            EXPECT_LE(shown->GetSize().y, screen.y);
            auto* area = find<wxScrolledWindow>(shown, "m_text_area");
            for (const char* name : {"m_btn_ok", "m_btn_cancel"}) {
                const wxWindow* button = find<wxButton>(shown, name);
                EXPECT_TRUE(shown->GetClientRect().Contains(
                    wxRect(shown->ScreenToClient(button->GetScreenPosition()), button->GetSize())));
            }
            EXPECT_GT(area->GetVirtualSize().y, area->GetClientSize().y);
            test::press(WXK_PAGEDOWN);
            const int page = area->GetViewStart().y;
            EXPECT_GT(page, 0);
            test::press(WXK_END);
            const int end = area->GetViewStart().y;
            EXPECT_GT(end, page);
            // The end is really reached: the last text's bottom edge is in sight.
            const wxWindow* last = find<wxStaticText>(shown, last_text);
            EXPECT_LE(last->GetPosition().y + last->GetSize().y, area->GetClientSize().y + 1);
            test::press(WXK_HOME);
            EXPECT_EQ(0, area->GetViewStart().y);
            shown->Close();
        });
    }
}

// Texts that a label would measure for minutes: those without a blank, and with nothing but marks over a
// letter.
TEST(MessageWindow, TextWithoutBlanksOpensScrollsAndIsCopiedWhole)
{
    std::string marks = "e";
    while (marks.size() < 60000)
        marks += "\xcc\x81";
    for (const std::string& text : {std::string(1000000, 'x'), std::string(125000, '&'), marks}) {
        message_window_t window = sample_message(1);
        window.supplemental_message = text;
        run(window, [&](wxTopLevelWindow* shown) {
            wxTextCtrl* view = nullptr;
            for (wxWindow* child : find<wxScrolledWindow>(shown, "m_text_area")->GetParent()->GetChildren())
                if (auto* control = wxDynamicCast(child, wxTextCtrl))
                    view = control;
            ASSERT_TRUE(view);
            EXPECT_TRUE(view->IsShownOnScreen());
            EXPECT_FALSE(find<wxStaticText>(shown, "m_main_instructions")->IsShownOnScreen());
            EXPECT_EQ(0, view->GetValue().Find("The result could not be saved"));
            EXPECT_TRUE(find<wxButton>(shown, "m_btn_ok")->HasFocus());
            EXPECT_TRUE(wxRect(wxGetDisplaySize()).Contains(shown->GetScreenRect()));
            test::press(WXK_END);
            GtkAdjustment* scroll =
                gtk_scrolled_window_get_vadjustment(GTK_SCROLLED_WINDOW(view->GetHandle()));
            EXPECT_TRUE(test::wait_for([&] {
                return gtk_adjustment_get_value(scroll) + gtk_adjustment_get_page_size(scroll) >
                       gtk_adjustment_get_upper(scroll) - 20;
            })) << "the end is in sight";
            test::press('C', wxMOD_CONTROL);
            EXPECT_NE(std::string::npos, test::clipboard_text().find(text))
                << "every character, and none between";
            view->SetFocus();
            view->SelectAll();
            test::press('C', wxMOD_CONTROL);
            EXPECT_NE(std::string::npos, test::clipboard_text().find(text)) << "as a selection too";
            test::press(WXK_ESCAPE);
        });
    }
}

// In a label, in one that scrolls, and in the view of what is too long for a label.
TEST(MessageWindow, TallTextsBecomeWideKeepWordsWholeAndShowTheKeyboard)
{
    std::vector<int> widths;
    for (const int sentences : {5, 20, 60}) {
        message_window_t window;
        for (int i = 0; i < sentences; ++i)
            window.main_message += "Some of the samples that were collected could not be read. ";
        run(window, [&](wxTopLevelWindow* shown) {
            widths.push_back(shown->GetSize().x);
            wxWindow* area = find<wxScrolledWindow>(shown, "m_text_area");
            if (!area->IsShown())
                area = area->GetNextSibling();
            if (auto* view = wxDynamicCast(area, wxTextCtrl)) {
                wxString text = view->GetValue();
                EXPECT_GT(text.Replace(wxString::FromUTF8(" \u2029"), wxString()), 0U);
                EXPECT_EQ(wxNOT_FOUND, text.Find(wxChar(0x2029))) << "inside a word";
            }
            const wxRect beside(area->GetScreenPosition() - wxSize(3, 0), wxSize(2, 20));
            const auto pixels = [&] {
                const wxImage image = wx_helpers1::get_screen_pixels(beside);
                return std::string(reinterpret_cast<const char*>(image.GetData()), 3 * 2 * 20);
            };
            const std::string before = pixels();
            test::press(WXK_TAB);
            EXPECT_TRUE(area->HasFocus());
            EXPECT_TRUE(test::wait_for([&] { return pixels() != before; }));
            test::press(WXK_TAB);
            EXPECT_TRUE(test::wait_for([&] { return pixels() == before; }));
            shown->Close();
        });
    }
    ASSERT_EQ(3U, widths.size());
    EXPECT_GT(widths[1], widths[0] * 13 / 10);
    EXPECT_GT(widths[2], widths[0] * 13 / 10);
    EXPECT_LE(std::max(widths[1], widths[2]), wxGetDisplaySize().x * 2 / 3);
}

TEST(MessageWindow, ShowsItsTextsInAnyThemeAndCopiesThemOrWhatIsSelected)
{
    const test::theme_guard_t light_theme(false);
    run(sample_message(1), [](wxTopLevelWindow* shown) {
        test::press('C', wxMOD_CONTROL);
        EXPECT_EQ("Vorbex – Warning\n\nThe result could not be saved\n\n"
                  "The disk is full. Free some space and try again.\n\nwrite: ENOSPC",
                  test::clipboard_text());
        EXPECT_EQ(wxString::FromUTF8("Vorbex – Warning"), shown->GetTitle());
        EXPECT_EQ("Warning", wx_helpers1::get_accessible_name(find<wxWindow>(shown, "m_icon")))
            << "the severity is a word too, not only a picture";
        const auto* details = find<wxStaticText>(shown, "m_details");
        EXPECT_EQ("write: ENOSPC", details->GetLabel());
        const wxColour dark_ink = details->GetForegroundColour();
        const test::theme_guard_t dark_theme(true);
        EXPECT_NE(dark_ink, details->GetForegroundColour());
        EXPECT_GE(wx_helpers1::contrast_ratio(details->GetForegroundColour(), wxColour(53, 53, 53)), 4.5);
        EXPECT_EQ("Yes", find<wxButton>(shown, "m_btn_ok")->GetLabelText());
        auto* label = find<wxStaticText>(shown, "m_main_instructions");
        EXPECT_EQ("The result could not be saved", label->GetLabel());
        label->SetFocus();
        test::settle();
        // A click with the mouse would select by words; the label's own key selects it all.
        gtk_label_select_region(GTK_LABEL(label->GetHandle()), 4, 10);
        test::press('C', wxMOD_CONTROL);
        EXPECT_EQ("result", test::clipboard_text());
        shown->Close();
    });
}

// A line ended behind the blank, where the sentence had no room, and left "2%" alone.
TEST(MessageWindow, TextsWithoutBlanksAreBrokenByTheLabelAlone)
{
    const std::string sentence =
        "が書き込まれませんでした。実行時間の長い関数の値は信頼できますが、短い関数は不明です。";
    message_window_t window;
    window.main_message = window.supplemental_message = "サンプルの約 2% " + sentence + sentence;
    window.details_message = sentence + window.main_message + " 2% " + sentence;
    run(window, [&](wxTopLevelWindow* shown) {
        for (const auto& [name, text] :
             {std::pair("m_main_instructions", window.main_message),
              std::pair("m_supplemental_instructions", window.supplemental_message),
              std::pair("m_details", window.details_message)})
            EXPECT_EQ(wx_helpers1::to_label(text), find<wxStaticText>(shown, name)->GetLabel());
        shown->Close();
    });
}

// What was measured was the widest paragraph alone, and lines were broken behind where the label ends.
TEST(MessageWindow, LinesOfSeveralParagraphsEndWithinTheLabel)
{
    const std::string sentence = "The process “render_server” ended before the first sample was taken. ";
    message_window_t window;
    window.main_message = "m";
    window.supplemental_message = sentence + sentence + sentence;
    for (const bool in_details : {false, true}) {
        (in_details ? window.details_message : window.supplemental_message) += "\n" + sentence + sentence;
        run(window, [](wxTopLevelWindow* shown) {
            const auto* label = find<wxStaticText>(shown, "m_supplemental_instructions");
            for (const wxString& line : wxSplit(label->GetLabel(), '\n'))
                EXPECT_LE(label->GetTextExtent(line).x, label->GetSize().x) << line;
            shown->Close();
        });
    }
}

// The cut takes a byte off a text that begins with its longest word.
TEST(MessageWindow, ShippedTextsKeepEveryCharacter)
{
    for (const std::string language : {"en", "de", "ja", "ar"}) {
        const test::language_guard_t guard(language);
        for (const std::string kind : {"error", "warning", "success", "information", "progress"}) {
            message_window_t window;
            window.set_main_message("gallery", "sample.main." + kind, {});
            window.set_supplemental_message("gallery", "sample.supplemental." + kind, {});
            window.set_details_message("commondlg", "max_len_details",
                                       {{"product_name", "Vorbex"}, {"field_name", "Name"}, {"max_len", 20}});
            run(window, [&](wxTopLevelWindow* shown) {
                const auto shown_text = [&](const char* name) {
                    wxString text = find<wxStaticText>(shown, name)->GetLabel();
                    text.Replace("\n", " ");
                    return text;
                };
                EXPECT_EQ(wx_helpers1::to_label(window.main_message), shown_text("m_main_instructions"));
                EXPECT_EQ(wx_helpers1::to_label(window.supplemental_message),
                          shown_text("m_supplemental_instructions"));
                EXPECT_EQ(wx_helpers1::to_label(window.details_message), shown_text("m_details"));
                shown->Close();
            });
        }
    }
}

} // namespace
