#include "caption_tools.h"

#include <commondlg3/advanced_panel.h>

#include <wx/checkbox.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include <gtk/gtk.h>

#include <string>
#include <vector>

using commondlg3::advanced_panel_t;
using button_style_t = advanced_panel_t::button_style_t;

namespace {

advanced_panel_t* make_panel(wxWindow* parent, const std::string& caption = "Advanced")
{
    return new advanced_panel_t(parent, caption, button_style_t::arrow, wxID_ANY);
}

wxWindow* header_of(advanced_panel_t* panel)
{
    return panel->GetChildren().GetFirst()->GetData();
}

wxPoint near_end_of(wxWindow* window)
{
    const wxSize size = window->GetSize();
    return window->ClientToScreen(wxPoint(size.x - 6, size.y / 2));
}

void click(wxWindow* window)
{
    test::drag(near_end_of(window), near_end_of(window));
}

// A page as a host has it: a field, the panel with two fields, another field.
struct page_t
{
    test::window_t window;
    wxTextCtrl* above = new wxTextCtrl(window, wxID_ANY);
    advanced_panel_t* panel = make_panel(window);
    wxTextCtrl* first = new wxTextCtrl(panel, wxID_ANY);
    wxTextCtrl* second = new wxTextCtrl(window, wxID_ANY);
    wxTextCtrl* below = new wxTextCtrl(window, wxID_ANY);
    std::vector<bool> signals;

    page_t()
    {
        wxSizer* sizer = window->GetSizer();
        sizer->Add(above, 0, wxEXPAND);
        sizer->Add(panel, 0, wxEXPAND);
        sizer->Add(below, 0, wxEXPAND);
        panel->add(first, 0, wxEXPAND | wxBOTTOM, 5, nullptr);
        panel->add(second, 0, wxEXPAND, 0, nullptr);
        window->Layout();
        panel->get_open_close_signal().connect([this](bool opened) { signals.push_back(opened); });
        test::settle();
    }
};

} // namespace

TEST(AdvancedPanel, what_is_added_is_there_while_the_panel_is_open)
{
    page_t page;
    EXPECT_TRUE(page.panel->is_opened());
    EXPECT_EQ(page.second->GetParent(), page.panel) << "taken over from the page";
    const int header = page.panel->get_header_height();
    EXPECT_EQ(page.panel->GetMinSize(), page.panel->GetSizer()->CalcMin());
    EXPECT_EQ(page.first->GetPosition(), wxPoint(header, header));
    page.panel->open(true);
    EXPECT_TRUE(page.signals.empty()) << "it was open";

    page.panel->open(false);
    EXPECT_FALSE(page.first->IsShown());
    EXPECT_EQ(page.panel->GetMinSize(), wxSize(2 * header, 2 * header));
    EXPECT_EQ(page.below->GetPosition().y, page.panel->GetPosition().y + 2 * header) << "the page moved up";
    auto* late = new wxCheckBox(page.panel, wxID_ANY, "late");
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(late);
    page.panel->add(row, 0, 0, 0, nullptr);
    EXPECT_FALSE(late->IsShown());
    EXPECT_EQ(page.panel->GetMinSize(), wxSize(2 * header, 2 * header)) << "whatever it holds";
    page.panel->open(true);
    EXPECT_TRUE(late->IsShown());
    EXPECT_EQ(page.signals, (std::vector<bool>{false, true}));

    page.panel->clear();
    page.panel->update_min_size();
    EXPECT_EQ(page.first->GetParent(), page.panel) << "cleared, not destroyed";
    EXPECT_EQ(page.panel->GetMinSize(), wxSize(2 * header, 2 * header)) << "only the borders are left";
}

// The outer panel's minimum changes with the inner one, and the page must give it the room.
TEST(AdvancedPanel, often_opened_and_closed_with_another_inside_leaves_every_size_as_it_was)
{
    page_t page;
    auto* inner = make_panel(page.panel, "Inner");
    page.panel->add(inner, 0, wxEXPAND, 0, nullptr);
    inner->add(new wxTextCtrl(inner, wxID_ANY), 0, wxEXPAND, 0, nullptr);
    wxFrame* frame = page.window.frame();
    const auto fit = [&] {
        page.window->SetSize(page.window->GetSizer()->CalcMin());
        frame->SetClientSize(page.window->GetSize());
    };
    page.panel->get_open_close_signal().connect([&fit](bool) { fit(); });
    fit();
    test::settle();
    const wxSize open_size = frame->GetSize();
    const wxRect inner_rect = inner->GetRect();
    const int below = page.below->GetPosition().y;
    inner->open(false);
    EXPECT_EQ(page.below->GetPosition().y, below - (inner_rect.height - inner->GetSize().y));
    EXPECT_EQ(inner->GetSize().y, 2 * inner->get_header_height());
    for (int i = 0; i < 100; ++i) {
        page.panel->open(false);
        if (i % 10 == 0) {
            test::settle();
            EXPECT_LT(frame->GetSize().y, open_size.y);
        }
        page.panel->open(true);
    }
    EXPECT_FALSE(inner->is_opened()) << "each panel has its own state";
    inner->open(true);
    fit();
    test::settle();
    EXPECT_EQ(frame->GetSize(), open_size);
    EXPECT_EQ(inner->GetRect(), inner_rect);
    EXPECT_EQ(page.below->GetPosition().y, below);
}

TEST(AdvancedPanel, keyboard_reaches_the_header_and_passes_over_what_is_hidden)
{
    page_t page;
    page.above->SetFocus();
    test::settle();
    test::press(WXK_TAB);
    EXPECT_TRUE(header_of(page.panel)->HasFocus());
    test::press(WXK_SPACE);
    EXPECT_FALSE(page.panel->is_opened());
    test::press(WXK_TAB);
    EXPECT_TRUE(page.below->HasFocus()) << "the fields inside are out of the order";
    test::press(WXK_TAB, wxMOD_SHIFT);
    EXPECT_TRUE(header_of(page.panel)->HasFocus());
    test::press(WXK_RETURN);
    EXPECT_EQ(page.signals, (std::vector<bool>{false, true}));
    test::press(WXK_TAB);
    EXPECT_TRUE(page.first->HasFocus());
    page.panel->open(false);
    test::settle();
    EXPECT_TRUE(header_of(page.panel)->HasFocus()) << "what is typed must not go to a hidden field";
}

TEST(AdvancedPanel, a_held_key_works_once_and_one_that_is_let_go_elsewhere_not_at_all)
{
    page_t page;
    header_of(page.panel)->SetFocus();
    test::settle();
    wxUIActionSimulator keys;
    for (const auto act :
         {&wxUIActionSimulator::KeyDown, &wxUIActionSimulator::KeyDown, &wxUIActionSimulator::KeyUp}) {
        (keys.*act)(WXK_SPACE, wxMOD_NONE);
        test::settle();
    }
    EXPECT_EQ(page.signals, std::vector<bool>{false});
    keys.KeyDown(WXK_SPACE);
    test::settle();
    page.below->SetFocus();
    test::settle();
    keys.KeyUp(WXK_SPACE);
    test::settle();
    EXPECT_EQ(page.signals, std::vector<bool>{false});
}

TEST(AdvancedPanel, mouse_works_on_the_whole_header_unless_disabled)
{
    page_t page;
    click(header_of(page.panel));
    EXPECT_FALSE(page.panel->is_opened());
    test::drag(near_end_of(header_of(page.panel)), near_end_of(page.below));
    test::drag(near_end_of(page.below), near_end_of(header_of(page.panel)));
    EXPECT_FALSE(page.panel->is_opened()) << "a click ends where it began";
    page.panel->Enable(false);
    click(header_of(page.panel));
    EXPECT_FALSE(page.panel->is_opened());
    page.panel->open(true);
    EXPECT_TRUE(page.panel->is_opened()) << "the program still can";
    page.panel->Enable(true);
    click(header_of(page.panel));
    EXPECT_EQ(page.signals, (std::vector<bool>{false, true, false}));
}

TEST(AdvancedPanel, a_click_may_destroy_it)
{
    page_t page;
    const wxWeakRef<wxWindow> alive(page.panel);
    page.panel->get_open_close_signal().connect([&page](bool) { delete page.panel; });
    click(header_of(page.panel));
    EXPECT_FALSE(alive);
}

TEST(AdvancedPanel, may_go_while_it_is_pressed)
{
    page_t page;
    wxUIActionSimulator mouse;
    mouse.MouseMove(near_end_of(header_of(page.panel)));
    test::settle();
    mouse.MouseDown();
    test::settle();
    EXPECT_EQ(wxWindow::GetCapture(), header_of(page.panel));
    delete page.panel;
    EXPECT_FALSE(wxWindow::GetCapture());
    mouse.MouseUp();
    test::settle();
}

TEST(AdvancedPanel, screen_reader_can_press_it_unless_disabled)
{
    page_t page;
    AtkObject* header = gtk_widget_get_accessible(GTK_WIDGET(header_of(page.panel)->GetHandle()));
    ASSERT_TRUE(ATK_IS_ACTION(header));
    EXPECT_TRUE(atk_action_do_action(ATK_ACTION(header), 0));
    test::settle();
    EXPECT_FALSE(page.panel->is_opened());
    page.panel->set_caption("More");
    EXPECT_STREQ(atk_object_get_name(header), "More");
    page.panel->Enable(false);
    EXPECT_FALSE(atk_action_do_action(ATK_ACTION(header), 0));
    EXPECT_EQ(page.signals, std::vector<bool>{false});
}
