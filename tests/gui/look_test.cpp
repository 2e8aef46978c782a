#include "probe.h"
#include "support.h"

#include <wx_helpers1/label.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/checkbox.h>
#include <wx/menu.h>
#include <wx/notebook.h>
#include <wx/radiobut.h>
#include <wx/scrolwin.h>
#include <wx/spinctrl.h>
#include <wx/stattext.h>

#include <gtk/gtk.h>

#include <memory>
#include <vector>

namespace {

using wx_helpers1::contrast_ratio;
using wx_helpers1::ui_colour;
using wx_helpers1::ui_settings_t;

TEST(Look, TextsCanBeReadInEveryTheme)
{
    EXPECT_NEAR(21, contrast_ratio(*wxBLACK, *wxWHITE), 0.01);
    EXPECT_NEAR(4.54, contrast_ratio(wxColour(118, 118, 118), *wxWHITE), 0.01);
    ui_settings_t* settings = ui_settings_t::get();
    const test::theme_guard_t light(false);
    int changes = 0;
    auto connection = settings->changed().connect([&changes] { ++changes; });
    for (const bool is_dark : {true, false}) {
        const int before = changes;
        const test::theme_guard_t theme(is_dark);
        EXPECT_EQ(before + 1, changes) << "one signal for a change";
        const wxColour background = settings->get_colour(ui_colour::background);
        for (const int number :
             {ui_colour::text, ui_colour::secondary_text, ui_colour::error, ui_colour::warning})
            EXPECT_GE(contrast_ratio(settings->get_colour(number), background), 4.5) << number;
        EXPECT_GE(contrast_ratio(settings->get_colour(ui_colour::notice_text),
                                 settings->get_colour(ui_colour::notice_background)),
                  4.5);
    }
    connection.disconnect();
    // Grey on grey is moved until it can be read, whichever way there is room.
    for (const unsigned char grey : {0, 90, 128, 160, 255}) {
        const wxColour back(grey, grey, grey);
        EXPECT_GE(contrast_ratio(wx_helpers1::readable_colour(back, back), back), 4.5) << int(grey);
    }
}

// The controls of the second are built before the change, out of sight.
TEST(Look, AWindowThatIsOpenedAgainIsMeasuredInTheLookOfNow)
{
    const auto count_windows = [] {
        GList* all = gtk_window_list_toplevels();
        const guint count = g_list_length(all);
        g_list_free(all);
        return count;
    };
    int heights[] = {0, 0};
    std::vector<std::unique_ptr<test::font_guard_t>> fonts;
    for (const bool large : {false, true}) {
        fonts.push_back(std::make_unique<test::font_guard_t>(large ? "Sans 33" : "Sans 11"));
        test::settle();
        const guint before = count_windows();
        {
            test::probe_dialog_t dialog("dlg.example");
            test::run(dialog, [&](wxTopLevelWindow* shown) {
                heights[large] = commondlg3::from_xrc<wxStaticText>(shown, "m_notes_label")->GetBestSize().y;
                dialog.end_dialog(1);
            });
        }
        EXPECT_TRUE(test::wait_for([&] { return count_windows() > before; }));
    }
    EXPECT_GT(heights[1], 2 * heights[0]);
}

// Takes its time to fit, and notes at which turn of the loop it did.
class slow_dialog_t : public test::probe_dialog_t
{
public:
    slow_dialog_t(const int& turn, std::vector<int>& fits)
        : probe_dialog_t("dlg.example"), m_turn(turn), m_fits(fits)
    {
    }
    void on_init_dialog() override { fit_to_contents(); }
    void SetMinSize(const wxSize& size) override
    {
        for (const gint64 end = g_get_monotonic_time() + 20000; g_get_monotonic_time() < end;)
            ;
        if (size == wxDefaultSize)
            m_fits.push_back(m_turn);
        probe_dialog_t::SetMinSize(size);
    }

private:
    const int& m_turn;
    std::vector<int>& m_fits;
};

TEST(Look, WindowsFitThemselvesOneAfterTheOtherAndInputGetsInBetween)
{
    int turn = 0;
    std::vector<int> fits;
    slow_dialog_t dialogs[] = {{turn, fits}, {turn, fits}, {turn, fits}};
    for (slow_dialog_t& dialog : dialogs)
        ASSERT_TRUE(dialog.show_nonmodal(test::main_window(), true));
    test::settle();
    fits.clear();
    const test::font_guard_t large("Sans 15");
    ASSERT_TRUE(test::wait_for([&] { return ++turn, fits.size() == 3; }));
    EXPECT_LT(fits[0], fits[1]);
    EXPECT_LT(fits[1], fits[2]);
}

// Any complaint of the toolkit's fails the test.
TEST(Look, ControlsMayHaveLessRoomThanTheyNeed)
{
    wxFrame* frame = new wxFrame(test::main_window(), wxID_ANY, "tiny", wxDefaultPosition, wxSize(300, 200));
    auto* bar = new wxMenuBar;
    bar->Append(new wxMenu, "First");
    bar->Append(new wxMenu, "Second");
    frame->SetMenuBar(bar);
    auto* area = new wxScrolledWindow(frame, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxALWAYS_SHOW_SB);
    area->SetScrollbars(1, 1, 1000, 1000);
    const std::vector<wxWindow*> controls = {
        area, new wxCheckBox(frame, wxID_ANY, "check"), new wxRadioButton(frame, wxID_ANY, "radio"),
        new wxSpinCtrl(frame, wxID_ANY), new wxNotebook(frame, wxID_ANY)};
    frame->Show();
    for (const wxSize size : {wxSize(1, 1), wxSize(200, 3), wxSize(3, 100), wxSize(200, 100)}) {
        for (wxWindow* control : controls)
            control->SetSize(wxRect(wxPoint(0, 0), size));
        test::settle();
        ASSERT_TRUE(
            test::wait_for([&] { return gtk_widget_get_allocated_width(area->GetHandle()) == size.x; }));
    }
    frame->Destroy();
}

// The widget goes by the first letter of each line, isolated or not.
TEST(Look, ALabelsLinesRunInTheDirectionOfItsSentence)
{
    struct row_t
    {
        const char* text;
        bool right_to_left[2]; // of its first two lines
    };
    const row_t rows[] = {
        {"\u2068Vorbex\u2069 \u0645\u0644\u0641 \u062c\u062f\u064a\u062f\nVorbex 2", {true, true}},
        {"\u0645\u0644\u0641\n/home/u \u0645\u0644\u0641", {true, true}},
        {"File \u0645\u0644\u0641\n\u0645\u0644\u0641 is gone", {false, false}},
        {"\u2068\u0645\u0644\u0641\u2069 is gone\n12", {false, false}},
    };
    wxStaticText label(test::main_window(), wxID_ANY, "x");
    auto* widget = GTK_LABEL(label.GetHandle());
    for (const row_t& row : rows) {
        wx_helpers1::set_label_text(&label, row.text);
        for (int line : {0, 1})
            EXPECT_EQ(row.right_to_left[line],
                      pango_layout_get_line_readonly(gtk_label_get_layout(widget), line)->resolved_dir ==
                          PANGO_DIRECTION_RTL)
                << row.text << ", line " << line;
        wx_helpers1::set_selectable(&label, true);
        wx_helpers1::select_label_text(&label, true);
        EXPECT_EQ(row.text, wx_helpers1::get_selected_text(&label)) << "what is copied is the text";
    }
}

// By whole words the toolkit's own goes to behind the full stop that ends a text, and one farther.
TEST(Look, TheCursorStaysInItsText)
{
    wxStaticText label(test::main_window(), wxID_ANY, "Gone.");
    wx_helpers1::set_selectable(&label, true);
    gtk_widget_grab_focus(label.GetHandle());
    ASSERT_TRUE(test::wait_for([&] { return gtk_widget_has_focus(label.GetHandle()); }));
    test::press(WXK_END);
    test::press(WXK_LEFT);
    test::press(WXK_RIGHT, wxMOD_CONTROL);
    test::press(WXK_LEFT);
    gint cursor = -1;
    g_object_get(label.GetHandle(), "cursor-position", &cursor, nullptr);
    EXPECT_EQ(4, cursor);
}

} // namespace
