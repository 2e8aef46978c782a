#include "log_tools.h"

#include "html_markup.h"
#include "paint_dc.h"

#include <wx_helpers1/ui_settings.h>

#include <wx/button.h>
#include <wx/clipbrd.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

using namespace commondlg3;
using namespace msngr2;

namespace {

// The line that is seen at the top, and where.
struct seen_t
{
    std::size_t line;
    int y;
};

seen_t first_seen(test::log_window_t& window, std::size_t entry)
{
    const auto& element = *window.log().GetElements().at(entry);
    for (std::size_t line = 0; line < element.GetLines().size(); ++line) {
        const wxRect rect = window.log().GetLineRect(element, line);
        if (rect.y >= 0)
            return {line, rect.y};
    }
    return {0, -1};
}

int y_of(test::log_window_t& window, std::size_t entry, std::size_t line)
{
    return window.log().GetLineRect(*window.log().GetElements().at(entry), line).y;
}

int different_pixels(const wxImage& image)
{
    int different = 0;
    const unsigned char* rgb = image.GetData();
    for (int i = 1; i < image.GetWidth() * image.GetHeight(); ++i)
        different += rgb[3 * i] != rgb[0] || rgb[3 * i + 1] != rgb[1] || rgb[3 * i + 2] != rgb[2];
    return different;
}

} // namespace

TEST(InplaceView, follows_the_end_only_from_the_end)
{
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("entry"), {});
    test::say_lines(window, tag, 500);
    EXPECT_TRUE(window.log().GetState().at_end);
    const auto end = window.log().GetState();
    EXPECT_EQ(end.top, end.height - window.log().GetWindow()->GetClientSize().y);

    window.log().ScrollTo(end.height / 2);
    const seen_t before = first_seen(window, 0);
    test::say_lines(window, tag, 2000);
    EXPECT_FALSE(window.log().GetState().at_end);
    EXPECT_EQ(y_of(window, 0, before.line), before.y) << "the reader's place must not move";

    window.log().ScrollTo(window.log().GetState().height);
    test::say_lines(window, tag, 100);
    const auto again = window.log().GetState();
    EXPECT_TRUE(again.at_end);
    EXPECT_EQ(again.top, again.height - window.log().GetWindow()->GetClientSize().y);
}

TEST(InplaceView, what_is_read_stays_when_things_change_above)
{
    test::log_window_t window;
    for (int i = 0; i < 30; ++i)
        window->add_message(test::make_message("Entry " + std::to_string(i), "A body of <b>some</b> words"),
                            {});
    test::say_lines(window, 20, 300);
    window.log().ScrollTo(window.log().GetState().height / 2);
    const seen_t read = first_seen(window, 20);
    ASSERT_GE(read.y, 0);

    window->erase(3);
    test::settle();
    EXPECT_NEAR(y_of(window, 19, read.line), read.y, 1) << "erased above";
    window->erase(25);
    test::settle();
    EXPECT_NEAR(y_of(window, 19, read.line), read.y, 1) << "erased below";
    std::string long_text;
    for (int i = 0; i < 200; ++i)
        long_text += "word ";
    window->update_message(0, test::make_message("longer", long_text), {});
    test::settle();
    EXPECT_NEAR(y_of(window, 19, read.line), read.y, 1) << "grown above";
    // A body above that has not been seen yet is measured only when it is; that moves nothing either.
    ASSERT_TRUE(test::wait_for([&] { return window.log().GetState().exact; }));
    EXPECT_NEAR(y_of(window, 19, read.line), read.y, 1);
}

TEST(InplaceView, a_resize_keeps_the_place_and_ends_exact)
{
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("entry"), {});
    test::say_lines(window, tag, 5000);
    const std::int64_t wide = window.log().GetState().height;
    window.log().ScrollTo(wide / 3);
    const seen_t read = first_seen(window, 0);
    for (int width : {500, 800}) {
        window.frame()->SetClientSize(width, 600);
        test::settle();
        ASSERT_TRUE(test::wait_for([&] { return window.log().GetState().exact; }));
        EXPECT_NEAR(y_of(window, 0, read.line), read.y, 1) << width;
    }
    EXPECT_EQ(window.log().GetState().height, wide) << "there and back again is the same";

    // What was measured line by line as it came is what one measuring of everything gives.
    test::log_window_t other;
    const auto other_tag = other->add_message(test::make_message("entry"), {});
    other.frame()->SetClientSize(500, 600);
    test::settle();
    test::say_lines(other, other_tag, 5000);
    window.frame()->SetClientSize(500, 600);
    test::settle();
    ASSERT_TRUE(
        test::wait_for([&] { return window.log().GetState().exact && other.log().GetState().exact; }));
    EXPECT_EQ(window.log().GetState().height, other.log().GetState().height);
}

TEST(InplaceView, shaped_scripts_are_measured_when_they_are_seen)
{
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("entry"), {});
    msngr2::IMessenger* messenger = window->get_messenger(tag);
    std::string arabic;
    for (int i = 0; i < 60; ++i)
        arabic += "تعذر فتح الملف ";
    for (int i = 0; i < 300; ++i)
        messenger->say(sev_none, arabic.c_str());
    test::settle();
    ASSERT_TRUE(test::wait_for([&] { return window.log().GetState().exact; }));
    const std::int64_t height = window.log().GetState().height;
    const wxRect first = window.log().GetLineRect(*window.log().GetElements()[0], 0);
    EXPECT_EQ(first.height, window.log().GetLineRect(*window.log().GetElements()[0], 299).height);
    window.log().ScrollTo(0);
    EXPECT_EQ(window.log().GetState().height, height) << "seeing it changes nothing any more";
    EXPECT_GT(first.height, 40) << "it does wrap";
}

TEST(InplaceView, finding)
{
    test::log_window_t window;
    const auto tag =
        window->add_message(test::make_message("Caption needle", "A <b>needle</b> in the body"), {});
    test::say_lines(window, tag, 300);
    window->get_messenger(tag)->say(sev_none, "The NEEDLE and a needle");
    test::settle();
    test::say_lines(window, tag, 300);
    window.log().ScrollTo(0);
    vdxcfrw7::CEventLog& log = window.log();
    EXPECT_TRUE(log.Find("needle", true));
    EXPECT_EQ(log.GetSelectedText(), "needle");
    EXPECT_TRUE(log.Find("needle", true));
    EXPECT_EQ(log.GetSelectedText(), "A needle in the body") << "a body in HTML is found whole";
    EXPECT_TRUE(log.Find("needle", true));
    EXPECT_EQ(log.GetSelectedText(), "NEEDLE");
    const int y = y_of(window, 0, 300);
    EXPECT_TRUE(y >= 0 && y < 600) << "shown: " << y;
    EXPECT_TRUE(log.Find("needle", true));
    EXPECT_EQ(log.GetSelectedText(), "needle");
    EXPECT_TRUE(log.Find("needle", false));
    EXPECT_EQ(log.GetSelectedText(), "NEEDLE");
    EXPECT_TRUE(log.Find("needle", false));
    EXPECT_TRUE(log.Find("needle", false));
    EXPECT_EQ(log.GetSelectedText(), "needle") << "the caption";
    EXPECT_TRUE(log.Find("needle", false)) << "round to the end";
    EXPECT_FALSE(log.Find("no such text", true));
    EXPECT_FALSE(log.Find("", true));
}

// Case is no matter in any script that has it, and bytes that are no UTF-8 neither match by accident nor stop
// the search.
TEST(InplaceView, finds_in_every_script)
{
    struct row_t
    {
        const char* line;
        const char* sought;
        const char* found; // null: nothing
    };
    const row_t rows[] = {
        {"Größe ÜBERSCHRITTEN", "überschritten", "ÜBERSCHRITTEN"},
        {"ДИСК переполнен", "диск", "ДИСК"},
        {"диск Рабочий", "РАБОЧИЙ", "Рабочий"},
        {"ΑΡΧΕΙΟ", "αρχειο", "ΑΡΧΕΙΟ"},
        {"ディスクがいっぱいです", "いっぱい", "いっぱい"},
        {"bad \xff\xfe\xd0 bytes", "\xd0", "\xd0"},
        {"\xd0\x94", "\xd0\xb5", nullptr},
        {"cut \xd0", "\xd0\xb4", nullptr},
        {"İstanbul", "istanbul", nullptr}, // its small letter takes other bytes
    };
    for (const row_t& row : rows) {
        SCOPED_TRACE(row.sought);
        test::log_window_t window;
        const auto tag = window->add_message(test::make_message("entry"), {});
        window->get_messenger(tag)->say(sev_none, row.line);
        test::settle();
        for (const bool forward : {true, false}) {
            EXPECT_EQ(row.found != nullptr, window.log().Find(row.sought, forward));
            EXPECT_EQ(row.found ? row.found : "", window.log().GetSelectedText());
        }
    }
}

// The log draws its text past the toolkit: what comes out must be what the toolkit draws, also in its mirror.
TEST(InplaceView, draws_text_as_the_toolkit_does)
{
    for (const wxLayoutDirection direction : {wxLayout_LeftToRight, wxLayout_RightToLeft}) {
        auto* frame = new wxFrame(test::main_window(), wxID_ANY, "text", wxPoint(50, 50), wxSize(400, 300));
        auto* canvas = new wxWindow(frame, wxID_ANY);
        canvas->SetLayoutDirection(direction);
        canvas->SetBackgroundStyle(wxBG_STYLE_PAINT);
        bool painted = false;
        canvas->Bind(wxEVT_PAINT, [&](wxPaintEvent&) {
            wxPaintDC window(canvas);
            window.SetBackground(*wxWHITE_BRUSH);
            window.Clear();
            vdxcfrw7::paint_dc_t fast(window);
            wxDC* const contexts[] = {&window, &fast};
            for (int i = 0; i < 2; ++i) {
                wxDC& dc = *contexts[i];
                int y = 100 * i;
                for (const wxFont& font : {canvas->GetFont(), canvas->GetFont().Italic().Larger(),
                                           canvas->GetFont().Bold().Underlined()}) {
                    dc.SetFont(font);
                    dc.SetTextForeground(wxColour(200, 0, 60));
                    dc.DrawText(wxString::FromUTF8("Ärger: تم فتح 日本"), 10, y + 5);
                    dc.SetPen(*wxBLACK_PEN);
                    dc.DrawLine(10, y + 31, 200, y + 31);
                    y += 33;
                }
            }
            painted = true;
        });
        frame->Show();
        ASSERT_TRUE(test::wait_for([&] { return painted; }));
        test::settle();
        const wxImage picture = test::picture_of(*frame);
        ASSERT_TRUE(picture.IsOk());
        const int top = canvas->GetScreenPosition().y - frame->GetScreenPosition().y;
        int inked = 0, different = 0;
        for (int y = top; y < top + 100; ++y)
            for (int x = 5; x < picture.GetWidth() - 5; ++x) {
                inked += picture.GetGreen(x, y) < 200;
                different += std::abs(picture.GetGreen(x, y) - picture.GetGreen(x, y + 100)) > 8;
            }
        EXPECT_GT(inked, 1000) << "nothing was drawn, so that everything is alike";
        EXPECT_EQ(0, different) << (direction == wxLayout_RightToLeft ? "from right to left"
                                                                      : "from left to right");
        frame->Destroy();
        test::settle();
    }
}

TEST(InplaceView, filtering)
{
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("entry"), {});
    for (int i = 0; i < 1000; ++i)
        window->get_messenger(tag)->say(i % 10 ? sev_none : sev_error, (i % 2 ? "Odd line" : "Even line"));
    test::settle();
    const std::int64_t height = window.log().GetState().height;
    std::size_t told = 0;
    window.log().hidden_changed().connect([&] { told = window.log().GetHiddenCount(); });
    window.log().SetFilter(sev_error | sev_critical, "");
    test::settle();
    EXPECT_EQ(window.log().GetHiddenCount(), 900u);
    window.log().SetFilter(0, "ODD");
    test::settle();
    EXPECT_EQ(told, 500u);
    window->get_messenger(tag)->say(sev_none, "even as it comes");
    window->get_messenger(tag)->say(sev_status, "status is always shown");
    test::settle();
    EXPECT_EQ(window.log().GetHiddenCount(), 501u);
    EXPECT_EQ(told, 501u) << "what is hidden as it comes is told as well";
    window.log().SetFilter(0, "");
    test::settle();
    EXPECT_EQ(window.log().GetHiddenCount(), 0u);
    EXPECT_GT(window.log().GetState().height, height);
    EXPECT_EQ(test::lines_of(window.control(), 0).size(), 1001u)
        << "hidden lines are remembered all the same";
}

TEST(InplaceView, selecting_and_copying)
{
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("Caption", "1 < 2"), {});
    for (const char* line : {"first", "second <b>", "third"})
        window->get_messenger(tag)->say(sev_none, line);
    test::settle();
    window.frame()->Raise();
    window.log().GetWindow()->SetFocus();
    ASSERT_TRUE(test::wait_for([&] { return window.log().GetWindow()->HasFocus(); }));
    // With the mouse, from within the first line to within the third.
    const wxRect first = window.log().GetLineRect(*window.log().GetElements()[0], 0);
    const wxRect third = window.log().GetLineRect(*window.log().GetElements()[0], 2);
    const auto at = [&](const wxRect& rect) {
        return window.log().GetWindow()->ClientToScreen(wxPoint(rect.x, rect.y + rect.height / 2));
    };
    wxUIActionSimulator mouse;
    mouse.MouseMove(at(first) - wxPoint(2, 0));
    test::settle();
    mouse.MouseDown();
    test::settle();
    mouse.MouseMove(at(third) + wxPoint(600, 0));
    test::settle();
    mouse.MouseUp();
    test::settle();
    EXPECT_EQ(window.log().GetSelectedText(), "first\nsecond <b>\nthird");
    EXPECT_EQ(window.log().GetSelectedHTML(), "<p>first</p>\n<p>second &lt;b&gt;</p>\n<p>third</p>\n");

    test::press('A', wxMOD_CONTROL);
    EXPECT_EQ(window.log().GetSelectedText(), "Caption\n1 < 2\nfirst\nsecond <b>\nthird");
    test::press('C', wxMOD_CONTROL);
    {
        wxTextDataObject data;
        wxClipboardLocker lock;
        ASSERT_TRUE(wxTheClipboard->GetData(data));
        EXPECT_EQ(data.GetText(), "Caption\n1 < 2\nfirst\nsecond <b>\nthird");
    }
    test::press(WXK_END, wxMOD_CONTROL | wxMOD_SHIFT); // from the place where everything was begun
    test::press(WXK_LEFT, wxMOD_SHIFT);
    EXPECT_EQ(window.log().GetSelectedText(), "Caption\n1 < 2\nfirst\nsecond <b>\nthir");
    // The text at the caret becomes shorter.
    window->add_message(test::make_message("A long caption", ""), {});
    EXPECT_TRUE(window.log().Find("caption", true));
    window->update_message(1, test::make_message("A", ""), {});
    test::press(WXK_LEFT, wxMOD_SHIFT);
    EXPECT_EQ(window.log().GetSelectedText(), "A");
    window->clear();
    EXPECT_EQ(window.log().GetSelectedText(), "");
}

TEST(InplaceView, keyboard)
{
    test::log_window_t window;
    standard_message_t::ptr_t message(new standard_message_t);
    message->caption = "Question";
    message->set_buttons(standard_message_t::standard_buttons_t::yes_no);
    const auto first = window->add_message(test::make_message("entry"), {});
    test::say_lines(window, first, 200);
    int pressed = 0;
    inplace_ctrl_t::callback_t callback;
    callback.connect([&pressed](int id) { pressed = id; });
    window->add_message(message, callback);
    test::settle();
    window.frame()->Raise();
    window.log().GetWindow()->SetFocus();
    ASSERT_TRUE(test::wait_for([&] { return window.log().GetWindow()->HasFocus(); }));
    test::press(WXK_HOME);
    EXPECT_EQ(window.log().GetState().top, 0);
    test::press(WXK_PAGEDOWN);
    const std::int64_t page = window.log().GetState().top;
    EXPECT_GT(page, 400);
    test::press(WXK_PAGEUP);
    EXPECT_EQ(window.log().GetState().top, 0);
    test::press(WXK_TAB); // the buttons are far below
    test::press(WXK_TAB);
    test::press(WXK_SPACE);
    EXPECT_EQ(pressed, 3);
    window.log().GetWindow()->SetFocus(); // the button is gone
    test::press(WXK_END);
    EXPECT_TRUE(window.log().GetState().at_end);
}

// Tab goes through the log's own stops and out of it at either end.
TEST(InplaceView, tab_leaves_the_log)
{
    test::log_window_t window;
    auto* before = new wxTextCtrl(window.frame(), wxID_ANY, "before");
    auto* after = new wxTextCtrl(window.frame(), wxID_ANY, "after");
    before->MoveBeforeInTabOrder(&window.control());
    for (wxWindow* field : {before, after})
        window.frame()->GetSizer()->Add(field, 0, wxEXPAND);
    window.frame()->Layout();
    const auto stop = [&] {
        const wxWindow* focus = wxWindow::FindFocus();
        const auto* button = wxDynamicCast(focus, wxButton);
        return button                              ? button->GetLabelText().utf8_string()
               : focus == before                   ? std::string("before")
               : focus == after                    ? std::string("after")
               : focus == window.log().GetWindow() ? std::string("log")
                                                   : std::string("nothing");
    };
    standard_message_t::ptr_t question(new standard_message_t);
    question->set_buttons(standard_message_t::standard_buttons_t::yes_no);
    window.frame()->Raise();
    for (const bool with_buttons : {true, false}) {
        if (with_buttons)
            window->add_message(question, {});
        else
            window->add_progress(test::make_progress("running"), {});
        test::settle();
        std::vector<std::string> stops = with_buttons
                                             ? std::vector<std::string>{"before", "log", "Yes", "No", "after"}
                                             : std::vector<std::string>{"before", "log", "after"};
        if (!with_buttons)
            test::offered_button(window.control(), 1, 5)->Press(); // Cancel can be pressed once
        test::settle();
        before->SetFocus();
        ASSERT_TRUE(test::wait_for([&] { return before->HasFocus(); }));
        for (const int modifiers : {wxMOD_NONE, wxMOD_SHIFT}) {
            std::vector<std::string> seen{stop()};
            while (seen.size() < stops.size()) {
                test::press(WXK_TAB, modifiers);
                seen.push_back(stop());
            }
            EXPECT_EQ(stops, seen);
            std::reverse(stops.begin(), stops.end());
        }
    }
}

TEST(InplaceView, markup)
{
    using vdxcfrw7::markup_to_text;
    using vdxcfrw7::safe_markup;
    EXPECT_EQ(safe_markup("<i>if a<b and c>d && e</i>"), "<i>if a&lt;b and c&gt;d &amp;&amp; e</i>");
    EXPECT_EQ(safe_markup("&lt; &#65; &nosuch; &"), "&lt; &#65; &amp;nosuch; &amp;");
    EXPECT_EQ(safe_markup("vector<int> <script>x</script>"),
              "vector&lt;int&gt; &lt;script&gt;x&lt;/script&gt;");
    EXPECT_EQ(safe_markup("a <b>never closed"), "a <b>never closed</b>");
    EXPECT_EQ(safe_markup("a</b>"), "a");
    EXPECT_EQ(safe_markup("<img src='file:///etc/passwd' alt='pic <1>'>x"), "pic &lt;1&gt;x");
    // Attributes that no text needs are dropped, and no number is larger than a text needs.
    EXPECT_EQ(
        safe_markup("<table border=1 onclick='x()' width=9999999><tr><td colspan=99999999 rowspan=-1 "
                    "align=right style='a'>x</table>"),
        "<table border=\"1\" width=\"2000\"><tr><td colspan=\"10\" align=\"right\">x</table></td></tr>");
    EXPECT_EQ(safe_markup("<font size=+99 color=#f00 face=a><a href='file:///x'>y</a></font>"),
              "<font size=\"+7\" color=\"#f00\"><a>y</a></font>");
    EXPECT_EQ(markup_to_text("a&nbsp;&lt;b&gt;<br>c   d<p>e<img alt=\"f\"> 1 < 2"),
              "a\xC2\xA0<b>\nc d\nef 1 < 2");
    // Nothing in the toolkit's parser may be nested as deeply as somebody can type.
    std::string deep;
    for (int i = 0; i < 20000; ++i)
        deep += "<table><tr><td>";
    EXPECT_LT(safe_markup(deep).size(), 2000u);
}

TEST(InplaceView, the_theme_changes_while_it_is_open)
{
    test::log_window_t window;
    window->add_message(test::make_message("Caption", "A body"), {});
    test::settle();
    const wxImage light = test::picture_of(*window.frame());
    EXPECT_GT(different_pixels(light), 100) << "something is drawn";
    auto* settings = wx_helpers1::ui_settings_t::get();
    settings->set_theme(wx_helpers1::theme_t::dark);
    ASSERT_TRUE(test::wait_for([&] { return settings->is_dark(); }));
    test::settle();
    const wxImage dark = test::picture_of(*window.frame());
    settings->set_theme(wx_helpers1::theme_t::system);
    test::settle();
    EXPECT_GT(light.GetRed(40, 300), 180);
    EXPECT_LT(dark.GetRed(40, 300), 90);
    EXPECT_GT(different_pixels(dark), 100);
}

TEST(InplaceView, screen_readers_are_told_what_is_seen)
{
    test::log_window_t window;
    const auto tag = window->add_progress(test::make_progress("Collecting"), {});
    window->get_messenger(tag)->say(sev_error, "cannot be read");
    window->get_messenger(tag)->say(sev_none, "plain");
    window->get_progress(tag)->start("Reading", 2);
    window->get_progress(tag)->internalProgressed(1);
    test::settle();
    AtkObject* log = gtk_widget_get_accessible(window.log().GetWindow()->m_wxwindow);
    EXPECT_EQ(atk_object_get_role(log), ATK_ROLE_LOG);
    EXPECT_STREQ(atk_object_get_name(log), "Message log");
    std::map<std::string, AtkRole> told;
    for (int i = 0; i < atk_object_get_n_accessible_children(log); ++i) {
        AtkObject* child = atk_object_ref_accessible_child(log, i);
        told[atk_object_get_name(child)] = atk_object_get_role(child);
        EXPECT_EQ(atk_object_get_parent(child), log) << atk_object_get_name(child);
        g_object_unref(child);
    }
    EXPECT_EQ(told["Collecting"], ATK_ROLE_HEADING);
    EXPECT_EQ(told["Error: cannot be read"], ATK_ROLE_LABEL);
    EXPECT_EQ(told["plain"], ATK_ROLE_LABEL);
    EXPECT_EQ(told["Reading 50%"], ATK_ROLE_PROGRESS_BAR);
    EXPECT_EQ(told["Cancel"], ATK_ROLE_PUSH_BUTTON);
    window->get_messenger(tag)->say(sev_warning, "later");
    test::settle();
    const int count = atk_object_get_n_accessible_children(log);
    EXPECT_EQ(count, static_cast<int>(told.size()) + 1);
}
