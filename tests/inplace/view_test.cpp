#include "log_tools.h"

#include "paint_dc.h"

#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/timer.h>
#include <wx/uiaction.h>

#include <gtk/gtk.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <utility>
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
    const auto& element = window.element(entry);
    for (std::size_t line = 0; line < element.GetLines().size(); ++line) {
        const wxRect rect = window.log().GetLineRect(element, line);
        if (rect.y >= 0)
            return {line, rect.y};
    }
    return {0, -1};
}

int y_of(test::log_window_t& window, std::size_t entry, std::size_t line)
{
    return window.log().GetLineRect(window.element(entry), line).y;
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

    window.focus();
    test::press(WXK_HOME);
    EXPECT_EQ(window.log().GetState().top, 0);
    test::press(WXK_PAGEDOWN);
    EXPECT_GT(window.log().GetState().top, 400);
    const seen_t before = first_seen(window, 0);
    test::say_lines(window, tag, 2000);
    EXPECT_FALSE(window.log().GetState().at_end);
    EXPECT_EQ(y_of(window, 0, before.line), before.y) << "the reader's place must not move";

    test::press(WXK_END);
    test::say_lines(window, tag, 100);
    const auto again = window.log().GetState();
    EXPECT_TRUE(again.at_end);
    EXPECT_EQ(again.top, again.height - window.log().GetWindow()->GetClientSize().y);
}

TEST(InplaceView, keys_work_without_room_for_a_text)
{
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("entry"), {});
    test::say_lines(window, tag, 3);
    window.focus();
    test::press(WXK_HOME);
    window.log().GetWindow()->SetSize(400, 0);
    EXPECT_EQ(window.log().GetWindow()->GetClientSize().y, 0);
    for (const int key : {WXK_PAGEDOWN, WXK_PAGEUP, WXK_PAGEUP, WXK_DOWN, WXK_END})
        test::press(key);
}

TEST(InplaceView, finds_without_room_for_a_text)
{
    for (const bool forward : {true, false}) {
        test::log_window_t window;
        window->add_message(test::make_message("entry"), {});
        window.log().GetWindow()->SetSize(400, 0);
        ASSERT_EQ(window.log().GetWindow()->GetClientSize().y, 0);
        EXPECT_FALSE(window.log().Find("nowhere", forward));
        EXPECT_TRUE(window.log().Find("try", forward));
    }
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
}

// Case is no matter in any script that has it, and bytes that are no UTF-8 neither match by accident nor
// stop the search.
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

// The log draws its text past the toolkit: what comes out must be what the toolkit draws, also in its
// mirror.
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

// The user's way to what the log can find and hide.
TEST(InplaceView, the_search_bar_works_by_keyboard)
{
    test::log_window_t window;
    const auto tag =
        window->add_message(test::make_message("Caption needle", "A <b>needle</b> in the body"), {});
    for (int i = 0; i < 300; ++i)
        window->get_messenger(tag)->say(i % 10 ? sev_none : sev_error, i == 200 ? "NEEDLE" : "hay");
    window.log().ScrollTo(0);
    test::settle();
    window.focus();
    test::press('F', wxMOD_CONTROL);
    auto* text = wxDynamicCast(wxWindow::FindFocus(), wxTextCtrl);
    ASSERT_TRUE(text) << "the bar opens with the focus in its field";
    text->WriteText(wxString('x', 20000));
    EXPECT_EQ(1000u, text->GetValue().length()) << "what does not fit is refused as a whole";
    text->Clear();
    test::type("needle");
    const auto found = [&](int key, int modifiers) {
        test::press(key, modifiers);
        return window.log().GetSelectedText();
    };
    test::settle();
    EXPECT_EQ("needle", window.log().GetSelectedText()) << "the caption, while it is typed";
    EXPECT_EQ("A needle in the body", found(WXK_RETURN, wxMOD_NONE)) << "a body in HTML is found whole";
    EXPECT_EQ("NEEDLE", found(WXK_F3, wxMOD_NONE));
    const int y = y_of(window, 0, 200);
    EXPECT_TRUE(y >= 0 && y < 600) << "shown: " << y;
    EXPECT_EQ("A needle in the body", found(WXK_F3, wxMOD_SHIFT));
    EXPECT_EQ("needle", found(WXK_RETURN, wxMOD_SHIFT));
    EXPECT_EQ("NEEDLE", found(WXK_RETURN, wxMOD_SHIFT)) << "round to the end";

    const auto says = [text](const char* answer) {
        for (const wxWindow* child : text->GetParent()->GetChildren())
            if (wxDynamicCast(child, wxStaticText) && child->GetLabel() == answer)
                return true;
        return false;
    };
    test::press('M', wxMOD_ALT); // only matching lines
    EXPECT_EQ(299u, window.log().GetHiddenCount());
    window->get_messenger(tag)->say(sev_none, "more hay");
    window->get_messenger(tag)->say(sev_status, "status is always shown");
    test::settle();
    EXPECT_TRUE(says("300 lines are hidden")) << "what is hidden as it comes is told as well";
    test::press('M', wxMOD_ALT);
    for (int stop = 0; stop < 3; ++stop) // back to the severities
        test::press(WXK_TAB, wxMOD_SHIFT);
    test::press(WXK_DOWN);
    test::press(WXK_DOWN);
    test::settle();
    EXPECT_TRUE(says("271 lines are hidden"));
    test::press(WXK_ESCAPE);
    EXPECT_FALSE(text->IsShownOnScreen());
    EXPECT_TRUE(window.log().GetWindow()->HasFocus());
    EXPECT_EQ(0u, window.log().GetHiddenCount());
    EXPECT_EQ("needle", found(WXK_F3, wxMOD_NONE)) << "without the bar, for what it held";
    EXPECT_EQ(test::lines_of(window.control(), 0).size(), 301u) << "hidden lines are remembered";
    test::press('F', wxMOD_CONTROL);
    test::type("no such text");
    test::press(WXK_RETURN);
    EXPECT_TRUE(says("No match"));
}

TEST(InplaceView, the_menu_copies_everything_by_keyboard)
{
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("Caption", "Some <b>bold</b> text, 1 < 2"), {});
    window->get_messenger(tag)->say(sev_status, "working");
    window->get_messenger(tag)->say(sev_none, "first");
    window->get_messenger(tag)->say(sev_error, "second");
    IProgress* progress = window->get_progress(window->add_progress(test::make_progress("Progress"), {}));
    progress->start("Reading", 3);
    progress->internalProgressed(1);
    test::settle();
    window.focus();
    wxTimer timer;
    timer.Bind(wxEVT_TIMER, [&](wxTimerEvent&) {
        if (!GTK_IS_MENU(gtk_grab_get_current()))
            return;
        timer.Stop();
        for (const int key : {WXK_DOWN, WXK_RETURN}) // its only item
            wxUIActionSimulator().Char(key);
    });
    timer.Start(20);
    test::press(WXK_F10, wxMOD_SHIFT);
    EXPECT_TRUE(test::wait_for([&] { return !timer.IsRunning() && !gtk_grab_get_current(); }));
    test::settle();
    EXPECT_EQ(test::clipboard_text(),
              "Caption\nSome bold text, 1 < 2\nworking\nfirst\nsecond\nProgress\nDone: 33%");
    EXPECT_NE(std::string::npos,
              window.log().GetHTML().find("<b>Caption</b><br>\nSome bold text, 1 &lt; 2<br>"));
}

TEST(InplaceView, selecting_and_copying)
{
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("Caption", "1 < 2"), {});
    for (const char* line : {"first", "second <b>", "third"})
        window->get_messenger(tag)->say(sev_none, line);
    test::settle();
    window.focus();
    test::press('A', wxMOD_CONTROL);
    EXPECT_EQ(window.log().GetSelectedText(), "Caption\n1 < 2\nfirst\nsecond <b>\nthird");
    EXPECT_EQ(window.log().GetSelectedHTML(), "<p><b>Caption</b></p>\n<p><i>1 &lt; 2 </i> "
                                              "</p>\n<p>first</p>\n<p>second &lt;b&gt;</p>\n<p>third</p>\n");
    test::press('C', wxMOD_CONTROL);
    EXPECT_EQ(test::clipboard_text(), "Caption\n1 < 2\nfirst\nsecond <b>\nthird");
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

TEST(InplaceView, may_go_while_a_text_is_being_selected)
{
    test::log_window_t window;
    window->add_message(test::make_message("caption"), {});
    test::settle();
    wxWindow* view = window.log().GetWindow();
    wxUIActionSimulator mouse;
    mouse.MouseMove(view->ClientToScreen(wxPoint(20, 10)));
    test::settle();
    mouse.MouseDown();
    test::settle();
    EXPECT_EQ(wxWindow::GetCapture(), view);
    window.destroy();
    EXPECT_FALSE(wxWindow::GetCapture());
    mouse.MouseUp();
    test::settle();
}

TEST(InplaceView, bodies_are_read_as_they_were_meant)
{
    const std::pair<const char*, const char*> rows[] = {
        {"<b>if a<b and c>d && e</b>", "if a<b and c>d && e"},
        {"&lt; &#65; &nosuch; &", "< A &nosuch; &"},
        {"vector<int> <script>x</script>", "vector<int> <script>x</script>"},
        {"a <b>never closed", "a never closed"},
        {"never opened</b>", "never opened"},
        {"<img src='file:///etc/passwd' alt='pic <1>'>x", "pic <1>x"},
        {"<a href='file:///x'>y</a>", "y"},
        {"a&nbsp;&lt;b&gt;<br>c   d<p>e<img alt=\"f\"> 1 < 2", "a\u00a0<b>\nc d\nef 1 < 2"}};
    for (const auto& [body, text] : rows) {
        test::log_window_t window;
        window->add_message(test::make_message("c", body), {});
        EXPECT_EQ(std::string("c\n") + text, window.log().GetText());
    }
}

// Names, roles and their order are what a screen reader says.
TEST(InplaceView, screen_readers_find_places_words_and_how_far_work_is)
{
    test::log_window_t window;
    const auto tag = window->add_progress(test::make_progress("Collecting"), {});
    window->get_messenger(tag)->say(sev_error, "cannot be read");
    window->get_progress(tag)->start("Reading", 2);
    window->get_progress(tag)->internalProgressed(1);
    test::settle();
    AtkObject* log = gtk_widget_get_accessible(window.log().GetWindow()->m_wxwindow);
    int below = -1;
    int values_told = 0;
    for (int i = 0; i < atk_object_get_n_accessible_children(log); ++i) {
        AtkObject* child = atk_object_ref_accessible_child(log, i);
        int x = 0, y = 0, width = 0, height = 0;
        atk_component_get_extents(ATK_COMPONENT(child), &x, &y, &width, &height, ATK_XY_SCREEN);
        EXPECT_GT(y, below) << atk_object_get_name(child);
        below = y;
        if (ATK_IS_VALUE(child)) {
            double value = 0;
            atk_value_get_value_and_text(ATK_VALUE(child), &value, nullptr);
            EXPECT_EQ(50, value);
            g_signal_connect_swapped(child, "value-changed", G_CALLBACK(+[](int* count) { ++*count; }),
                                     &values_told);
        }
        if (i == 1) {
            int from = 0, to = 0;
            char* word =
                atk_text_get_string_at_offset(ATK_TEXT(child), 9, ATK_TEXT_GRANULARITY_WORD, &from, &to);
            EXPECT_STREQ("cannot ", word);
            g_free(word);
        }
        g_object_unref(child);
    }
    for (int i = 0; i < 5; ++i) {
        window->get_progress(tag)->internalProgressed(i % 2);
        test::settle();
    }
    EXPECT_EQ(1, values_told) << "and then for some seconds no more";
}
