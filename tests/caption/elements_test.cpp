#include "caption_tools.h"

#include <wx_helpers1/elements/element_adapter.h>
#include <wx_helpers1/elements/icon_button_element.h>
#include <wx_helpers1/elements/text_element.h>

#include <wx/dcclient.h>
#include <wx/sizer.h>

using wx_helpers1::element_adapter_t;
using wx_helpers1::element_state;
using wx_helpers1::element_t;
using wx_helpers1::icon_button_element_t;

namespace {

struct counted_t : element_t
{
    void draw(wxDC&, wxWindow&) const override { ++drawn; }
    void change() { damage(); }
    mutable int drawn = 0;
};

// Two buttons and a caption that belongs to the second.
struct board_t : wxWindow
{
    explicit board_t(wxWindow* parent) : wxWindow(parent, wxID_ANY), elements(this)
    {
        SetMinSize(wxSize(200, 60));
        root = &elements.make_root<counted_t>();
        root->set_rect(wxRect(0, 0, 200, 60));
        first = &root->add<icon_button_element_t>();
        first->set_rect(wxRect(0, 0, 20, 20));
        second = &root->add<icon_button_element_t>();
        second->set_rect(wxRect(40, 0, 20, 20));
        caption = &root->add<counted_t>();
        caption->set_rect(wxRect(60, 0, 60, 20));
        caption->set_target(second);
        first->clicked().connect([this] { ++first_clicks; });
        second->clicked().connect([this] { ++second_clicks; });
        parent->GetSizer()->Add(this);
        parent->Layout();
        test::settle();
    }

    void mouse(wxEventType type, int x, int y = 10)
    {
        wxMouseEvent event(type);
        event.SetEventObject(this);
        event.SetPosition(wxPoint(x, y));
        ProcessWindowEvent(event);
    }

    void key(wxEventType type, int code)
    {
        wxKeyEvent event(type);
        event.m_keyCode = code;
        event.SetEventObject(this);
        ProcessWindowEvent(event);
    }

    element_adapter_t elements;
    counted_t* root;
    icon_button_element_t* first;
    icon_button_element_t* second;
    counted_t* caption;
    int first_clicks = 0;
    int second_clicks = 0;
};

} // namespace

TEST(Elements, states_follow_the_mouse_and_a_click_ends_where_it_began)
{
    test::window_t window;
    auto* board = new board_t(window);
    const auto state = [&](int x, wxEventType type) {
        board->mouse(type, x);
        return board->first->get_state();
    };
    EXPECT_EQ(state(30, wxEVT_MOTION), element_state::normal);
    EXPECT_EQ(state(5, wxEVT_MOTION), element_state::hovered);
    EXPECT_EQ(state(5, wxEVT_LEFT_DOWN), element_state::pressed);
    EXPECT_EQ(state(45, wxEVT_MOTION), element_state::normal) << "dragged out of";
    EXPECT_EQ(board->second->get_state(), element_state::normal) << "the other one was not pressed";
    EXPECT_EQ(state(5, wxEVT_MOTION), element_state::pressed) << "and back";
    state(45, wxEVT_MOTION);
    state(45, wxEVT_LEFT_UP);
    EXPECT_EQ(board->first_clicks + board->second_clicks, 0);
    EXPECT_FALSE(board->HasCapture());
    state(5, wxEVT_LEFT_DOWN);
    EXPECT_EQ(state(5, wxEVT_LEFT_UP), element_state::hovered);
    EXPECT_EQ(board->first_clicks, 1);
    EXPECT_EQ(state(-1, wxEVT_LEAVE_WINDOW), element_state::normal);

    board->mouse(wxEVT_MOTION, 90);
    EXPECT_EQ(board->second->get_state(), element_state::hovered) << "its caption works as the button does";
    board->second->enable(false);
    EXPECT_EQ(board->second->get_state(), element_state::disabled);
    for (int x : {45, 90}) {
        board->mouse(wxEVT_LEFT_DOWN, x);
        board->mouse(wxEVT_LEFT_UP, x);
    }
    EXPECT_EQ(board->second_clicks, 0);
    board->first->show(false);
    board->mouse(wxEVT_LEFT_DOWN, 5);
    board->mouse(wxEVT_LEFT_UP, 5);
    EXPECT_EQ(board->first_clicks, 1) << "hidden";
}

TEST(Elements, keys_go_through_the_active_ones_and_press_once)
{
    test::window_t window;
    auto* board = new board_t(window);
    board->SetFocus();
    test::settle();
    EXPECT_TRUE(board->first->is_focused());
    board->key(wxEVT_KEY_DOWN, WXK_SPACE);
    board->key(wxEVT_KEY_DOWN, WXK_SPACE); // held down
    EXPECT_EQ(board->first->get_state(), element_state::pressed);
    board->key(wxEVT_KEY_UP, WXK_SPACE);
    EXPECT_EQ(board->first_clicks, 1);
    test::press(WXK_TAB);
    EXPECT_TRUE(board->second->is_focused());
    test::press(WXK_RETURN);
    EXPECT_EQ(board->second_clicks, 1);
    board->key(wxEVT_KEY_DOWN, WXK_SPACE);
    test::main_window()->Raise();
    test::main_window()->SetFocus();
    wxFocusEvent lost(wxEVT_KILL_FOCUS);
    board->ProcessWindowEvent(lost);
    board->key(wxEVT_KEY_UP, WXK_SPACE);
    EXPECT_EQ(board->second_clicks, 1) << "let go in another window";
}

TEST(Elements, only_what_is_damaged_is_drawn)
{
    test::window_t window;
    auto* board = new board_t(window);
    auto* other = &board->root->add<counted_t>();
    other->set_rect(wxRect(150, 40, 20, 20));
    test::settle();
    const int drawn = board->caption->drawn;
    other->drawn = 0;
    other->change();
    EXPECT_TRUE(test::wait_for([&] { return other->drawn > 0; }));
    EXPECT_EQ(board->caption->drawn, drawn);
    other->show(false);
    test::settle();
    EXPECT_EQ(other->drawn, 1) << "hidden things are not drawn";
    board->caption->change();
    EXPECT_TRUE(test::wait_for([&] { return board->caption->drawn > drawn; }));
}

TEST(Elements, click_may_destroy_the_window)
{
    test::window_t window;
    auto* board = new board_t(window);
    const wxWeakRef<wxWindow> alive(board);
    board->second->clicked().connect([board] { delete board; });
    board->mouse(wxEVT_LEFT_DOWN, 45);
    board->mouse(wxEVT_LEFT_UP, 45);
    EXPECT_FALSE(alive);
}
