#include "probe.h"
#include "support.h"

#include <wx_helpers1/input_guard.h>

#include <wx/textctrl.h>
#include <wx/uiaction.h>

#include <gtk/gtk.h>

#include <cstdint>
#include <functional>
#include <optional>

namespace {

using commondlg3::message_window_t;

class InputGuard : public testing::Test
{
protected:
    void SetUp() override
    {
        wx_helpers1::input_guard_times_t times;
        times.now = [this] { return m_now; };
        wx_helpers1::set_input_guard_times(times);
        g_type_class_unref(g_type_class_ref(GTK_TYPE_WIDGET));
        m_hook =
            g_signal_add_emission_hook(g_signal_lookup("event", GTK_TYPE_WIDGET), 0, on_event, this, nullptr);
        test::main_window()->SetFocus();
    }
    void TearDown() override
    {
        g_signal_remove_emission_hook(g_signal_lookup("event", GTK_TYPE_WIDGET), m_hook);
        test::let_unasked_windows_take_input();
        test::main_window()->DestroyChildren();
    }

    static gboolean on_event(GSignalInvocationHint*, guint, const GValue* values, gpointer data)
    {
        const auto* event = static_cast<const GdkEvent*>(g_value_get_boxed(values + 1));
        static_cast<InputGuard*>(data)->m_presses += event->type == GDK_KEY_PRESS;
        return TRUE;
    }

    void wait_for_repeats()
    {
        const int before = m_presses;
        EXPECT_TRUE(test::wait_for([&] { return m_presses > before + 6; })) << "the key does not repeat";
    }

    // Whether the message that `open` brings takes keys at once; it is answered with Yes.
    bool takes_keys(const std::function<void()>& bring)
    {
        bool at_once = false;
        m_answer = test::run_modal(
            [&] {
                bring();
                return m_answer ? *m_answer : show();
            },
            [&](wxTopLevelWindow* window) {
                test::press(WXK_SPACE);
                at_once = !window->IsShown();
                m_now += 1000;
                if (!at_once && test::wait_for([&] { return !wx_helpers1::is_input_held_back(window); }))
                    test::press(WXK_SPACE);
            });
        EXPECT_EQ(message_window_t::result_yes, m_answer);
        m_answer.reset();
        return at_once;
    }

    static int show() { return commondlg3::show_modal(test::sample_message(1), test::main_window()); }

    wxButton* add_button()
    {
        auto* button = new wxButton(test::main_window(), wxID_ANY, "Ask");
        button->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { m_answer = show(); });
        button->SetFocus();
        test::settle();
        return button;
    }

    std::int64_t m_now = 1000000;
    int m_presses = 0;
    std::optional<int> m_answer;
    gulong m_hook = 0;
};

// A question that came by itself was answered with Yes by a space bar that was meant for another window.
TEST_F(InputGuard, UnaskedWindowIsNotAnsweredByWhatWasMeantForAnother)
{
    const int answer = test::run(test::sample_message(1), [&](wxTopLevelWindow* window) {
        auto* yes = commondlg3::from_xrc<wxButton>(window, "m_btn_ok");
        for (const int key : {WXK_SPACE, WXK_RETURN, WXK_ESCAPE})
            test::press(key);
        wxUIActionSimulator mouse;
        mouse.MouseMove(yes->GetScreenPosition() + yes->GetSize() / 2);
        test::settle();
        mouse.MouseClick();
        test::settle();
        EXPECT_TRUE(window->IsShown()) << "was answered by a key or a click within its first moment";
        EXPECT_LT(gtk_widget_get_opacity(yes->GetHandle()), 1) << "does not show that it waits";

        mouse.KeyDown(WXK_SPACE);
        wait_for_repeats();
        m_now += 1000;
        EXPECT_TRUE(test::wait_for([&] { return !wx_helpers1::is_input_held_back(window); }));
        EXPECT_EQ(1, gtk_widget_get_opacity(yes->GetHandle()));
        wait_for_repeats();
        EXPECT_TRUE(window->IsShown()) << "was answered by a key that is still held";
        mouse.KeyUp(WXK_SPACE);
        test::settle();
        EXPECT_TRUE(window->IsShown());
        test::press(WXK_SPACE);
    });
    EXPECT_EQ(message_window_t::result_yes, answer);
    EXPECT_EQ(message_window_t::result_no,
              test::run(test::sample_message(1), [](wxTopLevelWindow* window) { window->Close(); }))
        << "the close box of the window manager has to wait";
}

// What somebody asks for must not make him wait; one input does not answer for windows that come later.
TEST_F(InputGuard, AskedWindowTakesKeysAtOnce)
{
    add_button();
    EXPECT_TRUE(takes_keys([] { test::press(WXK_RETURN); }));
    m_now += 5000;
    EXPECT_FALSE(takes_keys([] {})) << "each input asks for one window";
    test::press(WXK_F5);
    m_now += 900;
    EXPECT_TRUE(takes_keys([] {})) << "what was asked for may take a moment";
    test::press(WXK_F5);
    m_now += 1100;
    EXPECT_FALSE(takes_keys([] {}));
    auto* field = new wxTextCtrl(test::main_window(), wxID_ANY);
    field->SetFocus();
    test::settle();
    m_now += 5000;
    EXPECT_FALSE(takes_keys([] { test::type("a b"); })) << "who types asks for nothing";
    EXPECT_EQ("a b", field->GetValue());
}

// Return that is let go of a moment too late must not answer the question that it opened.
TEST_F(InputGuard, KeyThatOpenedTheWindowDoesNotAnswerIt)
{
    add_button();
    const int answer = test::run_modal(
        [&] {
            wxUIActionSimulator().KeyDown(WXK_RETURN);
            EXPECT_TRUE(test::wait_for([&] { return m_answer.has_value(); }));
            return m_answer.value_or(-1);
        },
        [&](wxTopLevelWindow* window) {
            wait_for_repeats();
            EXPECT_TRUE(window->IsShown());
            wxUIActionSimulator().KeyUp(WXK_RETURN);
            test::settle();
            test::press(WXK_ESCAPE);
        });
    EXPECT_EQ(message_window_t::result_no, answer);
}

} // namespace
