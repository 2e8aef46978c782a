// Modal runs end with what the user sees of them, whatever becomes of the windows.
#include "probe.h"
#include "support.h"

#include <commondlg3/text_utils.h>
#include <wx_helpers1/modal_flavor.h>

#include <wx/app.h>
#include <wx/choice.h>
#include <wx/menu.h>
#include <wx/timer.h>
#include <wx/uiaction.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>

namespace {

using test::probe_dialog_t;
using test::run;
using test::run_modal;
using test::sample_message;
using wx_helpers1::modal_stack_t;

int ask(wxWindow* parent)
{
    return commondlg3::show_modal(sample_message(1), parent);
}

// Two messages, one over the other, over `parent`; `act` comes when both are painted. Gives their answers.
std::pair<int, int> two_messages(wxWindow* parent, const std::function<void(wxTopLevelWindow*)>& act)
{
    int inner_answer = -1;
    const int outer_answer = run_modal(
        [&] { return ask(parent); },
        [&](wxTopLevelWindow* outer) { inner_answer = run_modal([&] { return ask(outer); }, act); });
    return {outer_answer, inner_answer};
}

const std::pair<int, int> neither{7, 7};

TEST(Modal, MessagesEndUnansweredWithTheirParent)
{
    for (const bool at_once : {false, true}) {
        SCOPED_TRACE(at_once ? "deleted" : "destroyed");
        wxFrame* parent = test::show_frame("parent");
        auto* panel = new wxPanel(parent); // the parent of a message need not be a window of its own
        EXPECT_EQ(neither, two_messages(panel, [&](wxTopLevelWindow*) {
                      if (at_once)
                          delete parent;
                      else
                          parent->Destroy();
                  }));
        EXPECT_EQ(0, modal_stack_t::depth());
    }
    // The next one is as good as ever.
    EXPECT_EQ(1, run(sample_message(1), [](wxTopLevelWindow* shown) { test::click(shown, "m_btn_ok"); }));
}

// A window that stays behind, hidden and nobody's, would keep the program from its end.
TEST(Modal, AMessageThatIsAnsweredWhileItsParentGoesDoesNotStay)
{
    const auto is_alone = [] {
        return std::all_of(wxTopLevelWindows.begin(), wxTopLevelWindows.end(), [](const wxWindow* window) {
            return window == test::main_window() || window->GetParent();
        });
    };
    ASSERT_TRUE(test::wait_for(is_alone));
    wxFrame* parent = test::show_frame("parent");
    EXPECT_EQ(1, run_modal([&] { return ask(parent); },
                           [&](wxTopLevelWindow* shown) {
                               test::click(shown, "m_btn_ok");
                               delete parent;
                           }));
    EXPECT_TRUE(test::wait_for(is_alone));
}

// A window manager may be late with the first of two windows that come at once.
TEST(Modal, AWindowThatComesUpLateLeavesKeysToTheOneAboveIt)
{
    wxFrame* parent = test::show_frame("parent");
    two_messages(parent, [](wxTopLevelWindow* inner) {
        GtkWidget* outer = inner->GetParent()->GetHandle();
        gtk_widget_hide(outer);
        gtk_widget_show(outer);
        for (const wxWindow* next : {static_cast<wxWindow*>(inner), inner->GetParent()}) {
            EXPECT_EQ(next->GetHandle(), gtk_grab_get_current());
            test::press(WXK_ESCAPE);
            EXPECT_FALSE(next->IsShown());
        }
    });
    parent->Destroy();
    test::settle();
}

// The toolkit clears its list of handlers of those that were taken off by the next event that passes through,
// and does not expect another to pass through meanwhile.
TEST(Modal, ParentHandlesEventsInsideEventsAfterwards)
{
    wxFrame* parent = test::show_frame("parent");
    parent->Bind(wxEVT_MENU, [parent](wxCommandEvent& event) {
        event.Skip();
        wxCommandEvent inner(wxEVT_TOOL_ENTER);
        parent->ProcessWindowEvent(inner);
    });
    const auto ask_and_tell = [parent] {
        const int answer = ask(parent);
        wxCommandEvent event(wxEVT_MENU);
        parent->ProcessWindowEvent(event);
        return answer;
    };
    EXPECT_EQ(1, run_modal(ask_and_tell, [](wxTopLevelWindow* shown) { test::click(shown, "m_btn_ok"); }));
    parent->Destroy();
    test::settle();
}

TEST(Modal, DialogOnTheStackOutlivesItsParent)
{
    wxFrame* parent = test::show_frame("parent");
    {
        probe_dialog_t dialog("dlg.example");
        EXPECT_EQ(wxID_CANCEL, run_modal([&] { return dialog.show_modal(parent); },
                                         [&](wxTopLevelWindow*) { parent->Destroy(); }));
        EXPECT_FALSE(dialog.IsShown());
        EXPECT_TRUE(dialog.was_abandoned());
    }
    test::settle();
}

// As the toolkit leaves one behind whose pointer another program holds.
TEST(Modal, HiddenMenuKeepsNobodyOut)
{
    GtkWidget* menu = gtk_menu_new();
    g_object_ref_sink(menu);
    GtkWidget* item = gtk_menu_item_new_with_label("hidden");
    gtk_widget_show(item);
    gtk_menu_shell_append(GTK_MENU_SHELL(menu), item);
    wxTimer turn;
    int turns = 0;
    EXPECT_EQ(1, run(sample_message(1), [&](wxTopLevelWindow* shown) {
                  gtk_widget_realize(gtk_widget_get_toplevel(menu));
                  gtk_menu_shell_select_first(GTK_MENU_SHELL(menu), FALSE);
                  EXPECT_EQ(menu, gtk_grab_get_current());
                  turn.Bind(wxEVT_TIMER, [&, shown](wxTimerEvent&) {
                      if (gtk_grab_get_current() == menu && ++turns < 500) {
                          turn.StartOnce(1);
                          return;
                      }
                      EXPECT_NE(menu, gtk_grab_get_current());
                      test::click(shown, "m_btn_ok");
                  });
                  turn.StartOnce(1);
              }));
    gtk_widget_destroy(menu);
    g_object_unref(menu);
}

// Nor does the menu of a bar, as it would come up if nobody dragged something elsewhere meanwhile.
TEST(Modal, AMenuThatDoesNotComeUpKeepsNobodyOut)
{
    wxFrame* frame = test::show_frame("bar");
    auto* menu = new wxMenu;
    menu->Append(wxID_COPY);
    auto* bar = new wxMenuBar;
    bar->Append(menu, "&View");
    frame->SetMenuBar(bar);
    const wxString one = "one";
    auto* choice = new wxChoice(new wxPanel(frame), wxID_ANY, wxDefaultPosition, wxDefaultSize, 1, &one);
    choice->SetSelection(0);
    gtk_widget_realize(
        gtk_widget_get_toplevel(GTK_WIDGET(gtk_menu_get_for_attach_widget(choice->GetHandle())->data)));
    ASSERT_TRUE(test::wait_for([frame] { return frame->IsActive(); }));
    test::press('V', wxMOD_ALT);
    ASSERT_TRUE(test::wait_for([] { return GTK_IS_MENU(gtk_grab_get_current()); }));
    test::press(WXK_ESCAPE);
    ASSERT_TRUE(test::wait_for([] { return gtk_grab_get_current() == nullptr; }));
    GdkDisplay* other = gdk_display_open(nullptr);
    ASSERT_TRUE(other);
    GdkWindowAttr attributes{};
    attributes.width = attributes.height = 1;
    attributes.window_type = GDK_WINDOW_TEMP;
    GdkWindow* holder =
        gdk_window_new(gdk_screen_get_root_window(gdk_display_get_default_screen(other)), &attributes, 0);
    gdk_window_show(holder);
    ASSERT_EQ(GDK_GRAB_SUCCESS,
              gdk_seat_grab(gdk_display_get_default_seat(other), holder, GDK_SEAT_CAPABILITY_ALL_POINTING,
                            TRUE, nullptr, nullptr, nullptr, nullptr));
    gdk_display_sync(other);
    test::press('V', wxMOD_ALT);
    EXPECT_TRUE(test::wait_for([] { return gtk_grab_get_current() == nullptr; }));
    choice->SetFocus();
    test::press(WXK_DOWN, wxMOD_ALT);
    EXPECT_TRUE(test::wait_for([] { return gtk_grab_get_current() == nullptr; }));
    gdk_window_destroy(holder);
    gdk_display_close(other);
    gboolean is_pressed = TRUE;
    g_object_get(choice->GetHandle(), "popup-shown", &is_pressed, nullptr);
    EXPECT_FALSE(is_pressed);
    frame->Destroy();
    test::settle();
}

// The field of what is typed in a list hides by itself, and by Escape; what it opens would stay, unseen.
TEST(Modal, WhatIsTypedInAListKeepsNobodyOut)
{
    GtkWidget* window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    GtkListStore* rows = gtk_list_store_new(1, G_TYPE_STRING);
    GtkWidget* list = gtk_tree_view_new_with_model(GTK_TREE_MODEL(rows));
    g_object_unref(rows);
    gtk_container_add(GTK_CONTAINER(window), list);
    gtk_widget_show_all(window);
    gtk_widget_grab_focus(list);
    ASSERT_TRUE(test::wait_for([&] { return gtk_widget_has_focus(list); }));
    gboolean begun = FALSE;
    g_signal_emit_by_name(list, "start-interactive-search", &begun);
    ASSERT_TRUE(test::wait_for([] { return GTK_IS_WINDOW(gtk_grab_get_current()); }));
    GtkWidget* const popup = gtk_grab_get_current();
    for (const auto& [key, modifiers] :
         {std::pair(WXK_WINDOWS_MENU, wxMOD_NONE), std::pair(WXK_F10, wxMOD_SHIFT),
          std::pair(static_cast<wxKeyCode>('.'), wxMOD_CONTROL)}) {
        test::press(key, modifiers);
        EXPECT_EQ(popup, gtk_grab_get_current()) << key;
    }
    test::press(WXK_ESCAPE);
    EXPECT_EQ(nullptr, gtk_grab_get_current());
    gtk_widget_destroy(window);
}

TEST(Modal, AClickWhileAnotherButtonIsHeldOpensOneMenuAlone)
{
    wxFrame* frame = test::show_frame("bar");
    auto* bar = new wxMenuBar;
    for (const char* name : {"File", "View"}) {
        auto* menu = new wxMenu;
        menu->Append(wxID_COPY);
        bar->Append(menu, name);
    }
    frame->SetMenuBar(bar);
    ASSERT_TRUE(test::wait_for([frame] { return frame->IsActive(); }));
    const auto is_open = [bar](int at) { return gtk_widget_get_mapped(bar->GetMenu(at)->m_menu) != FALSE; };
    GtkWidget* first = gtk_menu_get_attach_widget(GTK_MENU(bar->GetMenu(0)->m_menu));
    GtkAllocation place{};
    ASSERT_TRUE(test::wait_for([&] {
        gtk_widget_get_allocation(first, &place);
        return place.width > 1;
    }));
    wxPoint corner;
    gdk_window_get_origin(gtk_widget_get_window(first), &corner.x, &corner.y);
    wxUIActionSimulator mouse;
    mouse.MouseMove(corner + wxSize(place.x + place.width / 2, place.y + place.height / 2));
    test::settle();
    mouse.MouseDown();
    ASSERT_TRUE(test::wait_for([&] { return is_open(0); }));
    test::press(WXK_RIGHT);
    ASSERT_TRUE(test::wait_for([&] { return is_open(1); }));
    mouse.MouseDown(wxMOUSE_BTN_RIGHT);
    EXPECT_TRUE(test::wait_for([&] { return is_open(0); }));
    EXPECT_FALSE(is_open(1));
    mouse.MouseUp(wxMOUSE_BTN_RIGHT);
    mouse.MouseUp();
    test::press(WXK_ESCAPE);
    test::press(WXK_ESCAPE);
    EXPECT_TRUE(test::wait_for([] { return gtk_grab_get_current() == nullptr; }));
    frame->Destroy();
    test::settle();
}

// A window with a field that has the focus.
struct field_window_t
{
    GtkWidget* const window = gtk_window_new(GTK_WINDOW_TOPLEVEL);
    GtkWidget* const field = gtk_entry_new();

    field_window_t()
    {
        g_object_ref(window);
        gtk_container_add(GTK_CONTAINER(window), field);
        gtk_widget_show_all(window);
        gtk_widget_grab_focus(field);
        EXPECT_TRUE(test::wait_for([this] { return gtk_widget_has_focus(field); }));
    }
    ~field_window_t()
    {
        gtk_widget_destroy(window); // may be for the second time
        g_object_unref(window);
    }
};

TEST(Modal, APopoverEndsWithItsWindow)
{
    for (const auto& end : {gtk_widget_hide, gtk_widget_destroy}) {
        const field_window_t shown;
        gtk_popover_popup(GTK_POPOVER(gtk_popover_new(shown.field)));
        EXPECT_TRUE(test::wait_for([] { return GTK_IS_POPOVER(gtk_grab_get_current()); }));
        end(shown.window);
        EXPECT_TRUE(test::wait_for([] { return gtk_grab_get_current() == nullptr; }));
        test::settle();
    }
}

// By what happens when it takes the focus. Any complaint of the toolkit's fails the test.
TEST(Modal, APopoverMayGoOutOfSightAsItAppears)
{
    const field_window_t window;
    GtkWidget* const field = window.field;
    GtkWidget* popover = gtk_popover_new(field);
    const auto on_focus_out = [](GtkWidget* shown) -> gboolean {
        gtk_widget_set_child_visible(shown, FALSE);
        return FALSE;
    };
    g_signal_connect_object(field, "focus-out-event", G_CALLBACK(+on_focus_out), popover, G_CONNECT_SWAPPED);
    g_signal_connect(popover, "hide", G_CALLBACK(gtk_widget_destroy),
                     nullptr); // as the chooser of emoji does
    gtk_popover_popup(GTK_POPOVER(popover));
    EXPECT_TRUE(test::wait_for([] { return gtk_grab_get_current() == nullptr; }));
}

// The outer one's caller waits for its answer, which cannot come before the inner one's.
TEST(Modal, EndingTheOuterOneEndsTheInnerOne)
{
    struct row_t
    {
        const char* way;
        std::function<void(probe_dialog_t*)> end;
        int answer;
    };
    const row_t rows[] = {
        {"ended", [](probe_dialog_t* dialog) { dialog->end_dialog(5); }, 5},
        {"closed", [](probe_dialog_t* dialog) { dialog->Close(); }, wxID_CANCEL},
        {"hidden", [](probe_dialog_t* dialog) { dialog->Hide(); }, wxID_CANCEL},
        {"destroyed", [](probe_dialog_t* dialog) { dialog->Destroy(); }, wxID_CANCEL},
    };
    for (const row_t& row : rows) {
        SCOPED_TRACE(row.way);
        auto* dialog = new probe_dialog_t("dlg.example");
        const wxWeakRef<wxWindow> alive(dialog);
        int inner = -1;
        EXPECT_EQ(row.answer, run(*dialog, [&](wxTopLevelWindow*) {
                      inner =
                          run_modal([&] { return ask(dialog); }, [&](wxTopLevelWindow*) { row.end(dialog); });
                  }));
        EXPECT_EQ(7, inner);
        if (alive)
            dialog->Destroy();
        test::settle();
        EXPECT_FALSE(alive);
    }
}

// A menu runs a loop inside that of its dialog, and would hold it up for as long as nobody chooses.
TEST(Modal, AnOpenMenuEndsWithItsDialog)
{
    probe_dialog_t dialog("dlg.example");
    EXPECT_EQ(6, run(dialog, [&](wxTopLevelWindow*) {
                  wxMenu menu;
                  menu.Append(wxID_COPY);
                  wxTimer end;
                  end.Bind(wxEVT_TIMER, [&](wxTimerEvent&) { dialog.end_dialog(6); });
                  end.StartOnce(1); // the first turn of the menu's loop
                  dialog.PopupMenu(&menu);
              }));
}

TEST(Modal, RequestToCloseDuringOpeningIsKept)
{
    probe_dialog_t dialog("dlg.example");
    dialog.on_init = [&] { dialog.Close(); };
    EXPECT_EQ(wxID_CANCEL, dialog.show_modal(test::main_window()));
    EXPECT_FALSE(dialog.IsShown());
    dialog.on_init = nullptr;
    EXPECT_EQ(3, run(dialog, [&](wxTopLevelWindow*) { dialog.end_dialog(3); }));
}

// The window manager's request to close comes to windows that a modal one blocks as well.
TEST(Modal, BlockedWindowsCannotBeClosedByTheUser)
{
    wxFrame* other = test::show_frame("other");
    probe_dialog_t dialog("dlg.example");
    const auto ask_to_close = [](wxWindow* window) {
        GdkEvent* event = gdk_event_new(GDK_DELETE);
        event->any.window = GDK_WINDOW(g_object_ref(gtk_widget_get_window(window->GetHandle())));
        gtk_main_do_event(event);
        gdk_event_free(event);
        test::settle();
    };
    run(dialog, [&](wxTopLevelWindow*) {
        run_modal([&] { return ask(&dialog); },
                  [&](wxTopLevelWindow* inner) {
                      ask_to_close(other);
                      ask_to_close(&dialog);
                      EXPECT_TRUE(other->IsShown());
                      EXPECT_TRUE(dialog.IsShown());
                      ask_to_close(inner);
                      EXPECT_FALSE(inner->IsShown());
                  });
        ask_to_close(&dialog);
        EXPECT_FALSE(dialog.IsShown());
    });
    // One that was there when the run began, and is shown during it.
    probe_dialog_t kept("dlg.example");
    run(kept, [&](wxTopLevelWindow*) { ask_to_close(&kept); });
    run(dialog, [&](wxTopLevelWindow*) {
        run(kept, [&](wxTopLevelWindow*) {
            ask_to_close(&dialog);
            EXPECT_TRUE(dialog.IsShown());
            ask_to_close(&kept);
            EXPECT_FALSE(kept.IsShown());
        });
        ask_to_close(&dialog);
    });
    const wxWeakRef<wxWindow> alive(other);
    ask_to_close(other);
    EXPECT_TRUE(test::wait_for([&] { return !alive; }));
}

// As a button does that hides when it is pressed.
TEST(Modal, EscapeAndHelpWorkWhenWhatHadTheFocusIsGone)
{
    probe_dialog_t dialog("dlg.example");
    int helped = 0;
    dialog.set_help_topic("topic");
    dialog.get_help_signal().connect(&dialog, [&](const std::string&) { ++helped; });
    EXPECT_EQ(wxID_CANCEL, run(dialog, [&](wxTopLevelWindow* shown) {
                  ASSERT_TRUE(test::wait_for([&] { return shown->IsActive() && wxWindow::FindFocus(); }));
                  wxWindow::FindFocus()->Hide();
                  ASSERT_EQ(nullptr, gtk_window_get_focus(GTK_WINDOW(shown->GetHandle())));
                  test::press(WXK_F1);
                  EXPECT_TRUE(test::wait_for([&] { return helped == 1; }));
                  test::press(WXK_ESCAPE);
                  EXPECT_TRUE(test::wait_for([&] { return !shown->IsShown(); }));
              }));
}

// Layouts are built ahead in windows that the application must not take for its own.
TEST(Modal, WithoutAnyWindowOfTheApplicationMessagesStandAlone)
{
    // Windows of the toolkit that nobody sees: spare ones for the dialog and for its panel, at least.
    const auto hidden_windows = [] {
        int count = 0;
        GList* windows = gtk_window_list_toplevels();
        for (GList* at = windows; at; at = at->next) {
            GtkWidget* box = gtk_bin_get_child(GTK_BIN(at->data));
            count += !gtk_widget_get_visible(GTK_WIDGET(at->data)) && box && GTK_IS_BOX(box) ? 1 : 0;
        }
        g_list_free(windows);
        return count;
    };
    using icon = commondlg3::message_window_t::icon_types_t;
    wxFrame* main = test::main_window();
    const wxWindowList others = wxTopLevelWindows;
    wxTheApp->SetTopWindow(nullptr);
    wxTopLevelWindows.Clear();
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(1, run_modal([] { return ask(nullptr); },
                               [&](wxTopLevelWindow* shown) {
                                   EXPECT_EQ(nullptr, shown->GetParent());
                                   test::click(shown, "m_btn_ok");
                               }));
        EXPECT_TRUE(test::wait_for([&] { return hidden_windows() >= 2; }))
            << "no layout was built ahead: the test would pass for nothing";
        EXPECT_EQ(0u, wxTopLevelWindows.GetCount());
        EXPECT_EQ(6, commondlg3::show_msg_box("a", "b", icon::error, nullptr));
    }
    for (wxWindow* window : others)
        wxTopLevelWindows.Append(window);
    wxTheApp->SetTopWindow(main);
}

// A screen reader's action waits for an answer from the bus: a modal loop must not run before it has one.
TEST(Modal, AccessibleActionOpensItsWindowAfterItHasAnswered)
{
    auto* button = new wxButton(test::main_window(), wxID_ANY, "Ask");
    int pressed = 0;
    button->Bind(wxEVT_BUTTON, [&](wxCommandEvent&) {
        ++pressed;
        ask(test::main_window());
    });
    AtkObject* object = gtk_widget_get_accessible(button->GetHandle());
    run_modal(
        [&] {
            EXPECT_TRUE(atk_action_do_action(ATK_ACTION(object), 0));
            EXPECT_EQ(0, pressed);
            test::wait_for([&] { return pressed > 0; });
            return 0;
        },
        [](wxTopLevelWindow* shown) { shown->Close(); });
    EXPECT_EQ(1, pressed);
    button->Disable();
    EXPECT_FALSE(atk_action_do_action(ATK_ACTION(object), 0));
    button->Destroy();
}

} // namespace
