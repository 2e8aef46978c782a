#include "probe.h"
#include "support.h"

#include <commondlg3/error_warning_dialog.h>
#include <commondlg3/text_utils.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/clipbrd.h>
#include <wx/display.h>

#include <gtk/gtk.h>

#include <functional>
#include <string>
#include <vector>

namespace {

using commondlg3::message_window_t;
using test::run_modal;
using button_type_t = message_window_t::button_type_t;
using icon_types_t = message_window_t::icon_types_t;

message_window_t sample(int button_type = 0)
{
    message_window_t window;
    window.main_message = "The result could not be saved";
    window.supplemental_message = "The disk is full. Free some space and try again.";
    window.details_message = "write: ENOSPC";
    window.button_type = static_cast<button_type_t>(button_type);
    window.icon_type = icon_types_t::warning;
    return window;
}

int run(const message_window_t& window, const std::function<void(wxTopLevelWindow*)>& act)
{
    return run_modal([&] { return commondlg3::show_modal(window, test::main_window()); }, act);
}

template <class T>
T* find(wxTopLevelWindow* window, const char* name)
{
    return commondlg3::from_xrc<T>(window, name);
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
    enum way_t
    {
        first,
        second,
        enter,
        escape,
        close_box,
        ways
    };
    constexpr int no = -1; // that button is not there
    struct row_t
    {
        int type;
        int answers[ways];
    };
    const row_t rows[] = {
        {0, {no, 0, 0, 0, 0}},   {1, {1, 2, 1, 2, 2}},  {2, {no, 7, 7, 7, 7}},
        {3, {3, 4, 3, 4, 4}},    {4, {no, 7, 7, 7, 7}}, {5, {5, 4, 5, 4, 4}},
        {6, {no, no, no, 7, 7}}, {7, {no, 7, 7, 7, 7}}, {-1, {no, 7, 7, 7, 7}},
    };
    for (const row_t& row : rows) {
        for (int way = first; way < ways; ++way) {
            if (row.answers[way] == no)
                continue;
            SCOPED_TRACE("button type " + std::to_string(row.type) + ", way " + std::to_string(way));
            const int answer = run(sample(row.type), [&](wxTopLevelWindow* window) {
                EXPECT_EQ(row.answers[first] != no, find<wxButton>(window, "m_btn_ok")->IsShown());
                EXPECT_EQ(row.answers[second] != no, find<wxButton>(window, "m_btn_cancel")->IsShown());
                switch (way) {
                case first:
                    test::click(window, "m_btn_ok");
                    break;
                case second:
                    test::click(window, "m_btn_cancel");
                    break;
                case enter:
                    test::press(WXK_RETURN);
                    break;
                case escape:
                    test::press(WXK_ESCAPE);
                    break;
                default:
                    window->Close();
                }
            });
            EXPECT_EQ(row.answers[way], answer);
        }
    }
}

TEST(MessageWindow, ShowsWhatTheRecordSays)
{
    run(sample(1), [&](wxTopLevelWindow* window) {
        EXPECT_EQ("The result could not be saved",
                  find<wxStaticText>(window, "m_main_instructions")->GetLabel());
        EXPECT_EQ("write: ENOSPC", find<wxStaticText>(window, "m_details")->GetLabel());
        EXPECT_EQ("Yes", find<wxButton>(window, "m_btn_ok")->GetLabelText());
        EXPECT_EQ("No", find<wxButton>(window, "m_btn_cancel")->GetLabelText());
        EXPECT_FALSE(find<wxCheckBox>(window, "m_checkBox5")->IsShown());
        // The severity is a word too, not only a picture.
        EXPECT_EQ("Warning", wx_helpers1::get_accessible_name(find<wxWindow>(window, "m_icon")));
        EXPECT_NE(wxNOT_FOUND, window->GetTitle().Find("Warning"));
        // Over the middle of its parent.
        const wxPoint centre = window->GetScreenRect().GetPosition() + window->GetSize() / 2;
        const wxPoint wanted = test::main_window()->GetScreenPosition() + test::main_window()->GetSize() / 2;
        EXPECT_NEAR(wanted.x, centre.x, 20);
        EXPECT_NEAR(wanted.y, centre.y, 40);
        window->Close();
    });
}

// One window serves one message after the other: nothing of an earlier one may show, be answered or be kept
// alive.
TEST(MessageWindow, NextMessageInheritsNothing)
{
    bool box_is_gone = false;
    message_window_t long_one = sample(1);
    auto* box = new check_box_t;
    box->destroyed = &box_is_gone;
    long_one.check_box = box;
    for (int i = 0; i < 12; ++i)
        long_one.supplemental_message += "\nOne more line of many";
    wxTopLevelWindow* first = nullptr;
    wxSize first_size;
    run(long_one, [&](wxTopLevelWindow* window) {
        first = window;
        first_size = window->GetSize();
        wx_helpers1::select_label_text(find<wxStaticText>(window, "m_main_instructions"), true);
        find<wxWindow>(window, "m_btn_cancel")->SetFocus();
        test::press(WXK_ESCAPE);
    });
    long_one.check_box = nullptr;
    EXPECT_TRUE(box_is_gone) << "the window keeps what its message brought";

    // One that scrolls, and the next at once: no turn of the loop between them.
    message_window_t longest = sample(1);
    for (int i = 0; i < 300; ++i)
        longest.supplemental_message += "\nOne more line of many";
    const int next_answer = run_modal(
        [&] {
            commondlg3::show_modal(longest, test::main_window());
            return run(sample(1), [](wxTopLevelWindow* window) { test::click(window, "m_btn_ok"); });
        },
        [](wxTopLevelWindow*) { test::press(WXK_ESCAPE); });
    EXPECT_EQ(message_window_t::result_yes, next_answer);
    run(sample(1), [&](wxTopLevelWindow* window) {
        first = window;
        window->Close();
    });

    message_window_t short_one;
    short_one.main_message = "Saved";
    short_one.icon_type = icon_types_t::success;
    short_one.button_type = button_type_t::ok_cancel;
    const int answer = run(short_one, [&](wxTopLevelWindow* window) {
        EXPECT_EQ(first, window) << "a window of its own takes twice the time to open";
        EXPECT_LT(window->GetSize().y, first_size.y / 2);
        EXPECT_FALSE(find<wxWindow>(window, "m_checkBox5")->IsShown());
        EXPECT_FALSE(find<wxWindow>(window, "m_supplemental_instructions")->IsShown());
        EXPECT_FALSE(find<wxWindow>(window, "m_details")->IsShown());
        EXPECT_EQ("", wx_helpers1::get_selected_text(find<wxStaticText>(window, "m_main_instructions")));
        EXPECT_EQ(find<wxWindow>(window, "m_btn_ok"), wxWindow::FindFocus());
        const wxPoint centre = window->GetScreenRect().GetPosition() + window->GetSize() / 2;
        const wxPoint wanted = test::main_window()->GetScreenPosition() + test::main_window()->GetSize() / 2;
        EXPECT_NEAR(wanted.x, centre.x, 20);
        EXPECT_NEAR(wanted.y, centre.y, 40);
        test::press(WXK_RETURN);
    });
    EXPECT_EQ(message_window_t::result_ok, answer);
}

TEST(MessageWindow, AnotherMessageAnotherParentAndAnotherLanguageAreServed)
{
    EXPECT_EQ(message_window_t::result_yes, run(sample(1), [&](wxTopLevelWindow* outer) {
                  EXPECT_EQ(message_window_t::result_retry,
                            run_modal([&] { return commondlg3::show_modal(sample(5), outer); },
                                      [&](wxTopLevelWindow* inner) {
                                          EXPECT_NE(outer, inner);
                                          test::click(inner, "m_btn_ok");
                                      }));
                  test::click(outer, "m_btn_ok");
              }));
    auto* other = new wxFrame(test::main_window(), wxID_ANY, "other");
    other->Show();
    run_modal([&] { return commondlg3::show_modal(sample(1), other); },
              [&](wxTopLevelWindow* window) {
                  EXPECT_EQ(other, window->GetParent());
                  window->Close();
              });
    other->Destroy(); // and the window with it
    test::settle();
    const test::language_guard_t german("de");
    run(sample(1), [&](wxTopLevelWindow* window) {
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
        message_window_t window = sample(row.type);
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

TEST(MessageWindow, SilencedOneAnswersAtOnce)
{
    gen_helpers2::sptr_t<check_box_t> box(new check_box_t);
    box->checked = true;
    message_window_t window = sample(1);
    window.check_box = box;
    EXPECT_EQ(7, commondlg3::show_modal(window, test::main_window()));
    EXPECT_TRUE(box->committed.empty());
}

TEST(MessageWindow, IsNeverLargerThanTheScreenAndScrollsByKeyboard)
{
    std::string lines;
    for (int i = 0; i < 300; ++i)
        lines += "line " + std::to_string(i) + "\n";
    const wxSize screen = wxDisplay(test::main_window()).GetClientArea().GetSize();
    for (const std::string& text : {lines, std::string(3000, '\n')}) {
        message_window_t window = sample(1);
        window.supplemental_message = text;
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
            const wxWindow* last = find<wxStaticText>(shown, "m_details");
            EXPECT_LE(last->GetPosition().y + last->GetSize().y, area->GetClientSize().y + 1);
            test::press(WXK_HOME);
            EXPECT_EQ(0, area->GetViewStart().y);
            shown->Close();
        });
    }
}

std::string clipboard_text()
{
    wxTextDataObject data;
    wxClipboardLocker lock;
    EXPECT_TRUE(wxTheClipboard->GetData(data));
    return data.GetText().utf8_string();
}

// Texts that a label would measure for minutes: those without a blank, and with nothing but marks over a
// letter.
TEST(MessageWindow, TextWithoutBlanksOpensScrollsAndIsCopiedWhole)
{
    std::string marks = "e";
    while (marks.size() < 60000)
        marks += "\xcc\x81";
    for (const std::string& text : {std::string(1000000, 'x'), std::string(125000, '&'), marks}) {
        message_window_t window = sample(1);
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
            EXPECT_NE(std::string::npos, clipboard_text().find(text)) << "every character, and none between";
            view->SetFocus();
            view->SelectAll();
            test::press('C', wxMOD_CONTROL);
            EXPECT_NE(std::string::npos, clipboard_text().find(text)) << "as a selection too";
            test::press(WXK_ESCAPE);
        });
    }
}

TEST(MessageWindow, CopiesEverythingOrWhatIsSelected)
{
    const message_window_t window = sample(1);
    run(window, [&](wxTopLevelWindow* shown) {
        test::press('C', wxMOD_CONTROL);
        EXPECT_EQ(shown->GetTitle().utf8_string() + "\n\n" + window.main_message + "\n\n" +
                      window.supplemental_message + "\n\n" + window.details_message,
                  clipboard_text());
        auto* label = find<wxStaticText>(shown, "m_main_instructions");
        label->SetFocus();
        test::settle();
        // A click with the mouse would select by words; the label's own key selects it all.
        gtk_label_select_region(GTK_LABEL(label->GetHandle()), 4, 10);
        test::press('C', wxMOD_CONTROL);
        EXPECT_EQ("result", clipboard_text());
        shown->Close();
    });
}

// Callers hand over what other programs said.
TEST(MessageWindow, TextThatIsNotUtf8StillShows)
{
    message_window_t window = sample();
    window.main_message = "\x80\xbc\xe9t\xe9 & co";
    window.supplemental_message = "日本語日本語日本語";
    run(window, [&](wxTopLevelWindow* shown) {
        const wxString label = find<wxStaticText>(shown, "m_main_instructions")->GetLabelText();
        EXPECT_NE(wxNOT_FOUND, label.Find("& co")) << label;
        EXPECT_NE(wxNOT_FOUND, label.Find("t")) << label;
        EXPECT_EQ(wxString::FromUTF8("日本語日本語日本語"),
                  find<wxStaticText>(shown, "m_supplemental_instructions")->GetLabel());
        shown->Close();
    });
}

// The cut takes a byte off a text that begins with its longest word: texts without spaces between words are
// written so that they do not.
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

TEST(MessageWindow, FollowsAChangeOfThemeWhileItIsOpen)
{
    wx_helpers1::ui_settings_t* settings = wx_helpers1::ui_settings_t::get();
    run(sample(1), [&](wxTopLevelWindow* shown) {
        auto* details = find<wxStaticText>(shown, "m_details");
        const wxColour light = details->GetForegroundColour();
        settings->set_theme(wx_helpers1::theme_t::dark);
        ASSERT_TRUE(test::wait_for([&] { return settings->is_dark(); }));
        EXPECT_NE(light, details->GetForegroundColour());
        EXPECT_GE(wx_helpers1::contrast_ratio(details->GetForegroundColour(),
                                              settings->get_colour(wx_helpers1::ui_colour::background)),
                  4.5);
        settings->set_theme(wx_helpers1::theme_t::light);
        ASSERT_TRUE(test::wait_for([&] { return !settings->is_dark(); }));
        EXPECT_EQ(light, details->GetForegroundColour());
        shown->Close();
    });
}

TEST(MessageWindow, WidthSettersRewrapAndIgnoreNonsense)
{
    commondlg3::error_warning_dialog_t dialog(sample());
    run_modal([&] { return dialog.show_modal(test::main_window()); },
              [&](wxTopLevelWindow* shown) {
                  auto* label = find<wxStaticText>(shown, "m_supplemental_instructions");
                  const wxString before = label->GetLabel();
                  dialog.get_panel()->set_max_supp_msg_width(-2);
                  EXPECT_EQ(before, label->GetLabel());
                  dialog.get_panel()->set_max_supp_msg_width(-1); // a word a line
                  EXPECT_GT(label->GetLabel().Freq('\n'), 5);
                  dialog.get_panel()->set_max_supp_msg_width(4000);
                  EXPECT_EQ(0, label->GetLabel().Freq('\n'));
                  shown->Close();
              });
}

TEST(MessageWindow, FactoriesFillTheRecordAndUnknownIconsAreNoPicture)
{
    const auto error = message_window_t::simple_error_wnd("commondlg", "btn.ok", "no.such.key", {}, {});
    EXPECT_EQ(button_type_t::close, error.button_type);
    EXPECT_EQ(icon_types_t::error, error.icon_type);
    EXPECT_EQ("Message is not found: 'no.such.key'", error.supplemental_message);
    gen_helpers2::sptr_t<check_box_t> box(new check_box_t);
    const auto warning =
        message_window_t::warning_wnd_with_check("other", "k", "btn.ok", button_type_t::yes_no, box, {}, {});
    EXPECT_EQ("Message catalog 'other' is not loaded. Message: k", warning.main_message);
    EXPECT_EQ(button_type_t::yes_no, warning.button_type);
    EXPECT_EQ(icon_types_t::warning, warning.icon_type);
    EXPECT_EQ(box.get(), warning.check_box.get());

    EXPECT_TRUE(message_window_t::get_icon_by_type(static_cast<icon_types_t>(9)).is_empty());
    EXPECT_EQ(std::vector<std::string>{"unsupported picture type"}, test::take_assertions());
    EXPECT_TRUE(message_window_t::get_icon_by_type(icon_types_t::progress).is_animation());
    EXPECT_TRUE(message_window_t::get_icon_by_type(icon_types_t::information).is_still());
}

} // namespace
