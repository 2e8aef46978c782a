#include "probe.h"
#include "support.h"

#include <commondlg3/dialog_base.h>
#include <wx_helpers1/accessibility.h>

#include <wx/button.h>
#include <wx/frame.h>
#include <wx/sizer.h>
#include <wx/toplevel.h>

#include <gdk/gdkx.h>
#include <gtk/gtk.h>

#include <algorithm>
#include <functional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using test::click;
using test::probe_dialog_t;
using test::run;

TEST(Dialog, FirstInitDialogEventPreparesEverythingOnceAndLaterOnesOnlyTheFonts)
{
    probe_dialog_t dialog("dlg.example");
    dialog.on_init = [&] {
        // What the derived class may count on when it fills its controls.
        EXPECT_TRUE(dialog.m_btn_ok && dialog.m_btn_cancel && dialog.m_btn_help);
        EXPECT_EQ(1, dialog.calls["fonts"]);
        EXPECT_EQ(1, dialog.calls["limits"]);
        ASSERT_EQ(6u, dialog.m_path_messages.size());
        for (const std::string& text : dialog.m_path_messages)
            EXPECT_NE(std::string::npos, text.find(' ')) << text << " is no sentence";
        EXPECT_FALSE(dialog.m_unknown_text.empty());
        EXPECT_FALSE(dialog.is_initialized());
    };
    run(dialog, [&](wxTopLevelWindow*) {
        dialog.send_init_event();
        dialog.end_dialog(wxID_CANCEL);
    });
    for (const char* once : {"init", "limits", "strings"})
        EXPECT_EQ(1, dialog.calls[once]) << once;
    EXPECT_EQ(2, dialog.calls["fonts"]);
    // A second run of the same dialog loads nothing again.
    EXPECT_EQ(7, run(dialog, [&](wxTopLevelWindow*) { dialog.end_dialog(7); }));
    EXPECT_EQ(1, dialog.calls["init"]);
}

// A window manager may leave the focus with the window below, where keys for the dialog come from then.
TEST(Dialog, TabGoesOnThoughTheFocusStayedBelow)
{
    wxFrame* parent = test::show_frame("parent");
    {
        probe_dialog_t dialog("dlg.example");
        const auto see = [&](wxTopLevelWindow* shown) {
            ASSERT_TRUE(test::wait_for([&] { return shown->IsActive() && wxWindow::FindFocus(); }));
            dialog.m_btn_ok->SetFocus();
            GdkWindow* below = gtk_widget_get_window(parent->GetHandle());
            XSetInputFocus(GDK_WINDOW_XDISPLAY(below), GDK_WINDOW_XID(below), RevertToParent, CurrentTime);
            ASSERT_TRUE(test::wait_for([&] { return !shown->IsActive(); }));
            test::press(WXK_SHIFT);
            ASSERT_TRUE(test::wait_for([&] { return shown->IsActive(); }));
            test::press(WXK_TAB);
            EXPECT_TRUE(test::wait_for([&] { return !dialog.m_btn_ok->HasFocus(); }));
            dialog.end_dialog(wxID_CANCEL);
        };
        test::run_modal([&] { return dialog.show_modal(parent); }, see);
    }
    parent->Destroy();
    test::settle();
}

// Each way of ending, with and without a code that the handler sets: the Cancel button and Escape end with
// 5101 whatever on_cancel() did, the close box and OK with the code that it left.
TEST(Dialog, EveryWayOfEndingGivesItsCodeOnce)
{
    struct way_t
    {
        const char* name;
        std::function<void(probe_dialog_t&)> end;
        int plain_code;
        int changed_code;
        const char* handler;
    };
    const way_t ways[] = {
        {"OK", [](probe_dialog_t& d) { click(&d, "m_btn_ok"); }, 5100, 42, "ok"},
        {"Enter", [](probe_dialog_t&) { test::press(WXK_RETURN); }, 5100, 42, "ok"},
        {"Cancel", [](probe_dialog_t& d) { click(&d, "m_btn_cancel"); }, 5101, 5101, "cancel"},
        {"Escape", [](probe_dialog_t&) { test::press(WXK_ESCAPE); }, 5101, 5101, "cancel"},
        {"close box", [](probe_dialog_t& d) { d.Close(); }, 5101, 43, "cancel"},
    };
    for (const way_t& way : ways) {
        for (const bool changed : {false, true}) {
            SCOPED_TRACE(std::string(way.name) + (changed ? ", code changed" : ""));
            probe_dialog_t dialog("dlg.example");
            dialog.code_of_ok = changed ? 42 : 0;
            dialog.code_of_cancel = changed ? 43 : 0;
            EXPECT_EQ(changed ? way.changed_code : way.plain_code,
                      run(dialog, [&](wxTopLevelWindow*) { way.end(dialog); }));
            EXPECT_EQ(1, dialog.calls[way.handler]);
            EXPECT_EQ(1, dialog.calls["ok"] + dialog.calls["cancel"]);
            EXPECT_EQ(dialog.calls["ok"], dialog.calls["save"]);
        }
    }
}

// What is seen of a window and read out of it, in the order of the Tab key.
std::vector<std::string> look_of(wxWindow* window)
{
    std::ostringstream line;
    const wxRect place = window->IsTopLevel() ? wxRect(window->GetSize()) : window->GetRect();
    line << window->GetName() << ' ' << window->GetLabel() << ' ' << place.x << ' ' << place.y << ' '
         << place.width << ' ' << place.height << ' ' << window->IsShown() << ' ' << window->GetToolTipText()
         << ' ' << wx_helpers1::get_accessible_name(window);
    std::vector<std::string> look{line.str()};
    for (wxWindow* child : window->GetChildren())
        for (const std::string& each : look_of(child))
            look.push_back(each);
    return look;
}

// A later dialog gets controls that were built ahead: it must look and work like the first, and two of them
// open at the same time must not share any.
TEST(Dialog, LaterOnesAreLikeTheFirst)
{
    std::vector<std::vector<std::string>> looks;
    for (int opening = 0; opening < 3; ++opening) {
        probe_dialog_t dialog("dlg.example");
        EXPECT_EQ(wxID_OK, run(dialog, [&](wxTopLevelWindow* window) {
                      looks.push_back(look_of(window));
                      probe_dialog_t second("dlg.example");
                      EXPECT_TRUE(second.show_nonmodal(test::main_window(), true));
                      test::settle();
                      EXPECT_EQ(looks[0], look_of(&second));
                      second.Hide();
                      window->Raise();
                      EXPECT_TRUE(test::wait_for([&] { return window->IsActive(); }));
                      test::press(WXK_RETURN);
                  }));
        EXPECT_EQ(looks[0], looks[opening]);
        const auto spare_is_built = [] {
            return std::any_of(wxTopLevelWindows.begin(), wxTopLevelWindows.end(), [](wxWindow* window) {
                return window->GetName() == "dlg.example" && !window->IsShown();
            });
        };
        EXPECT_TRUE(test::wait_for(spare_is_built)) << "the next one would be built while the user waits";
    }
}

TEST(Dialog, ModelessOneIsHiddenAndKeepsItsCode)
{
    probe_dialog_t dialog("dlg.example");
    EXPECT_TRUE(dialog.show_nonmodal(test::main_window(), true));
    EXPECT_TRUE(dialog.IsShown());
    test::settle();
    click(&dialog, "m_btn_ok");
    EXPECT_FALSE(dialog.IsShown());
    EXPECT_EQ(wxID_OK, dialog.get_return_code());
    dialog.EndModal(3); // harmless where nothing is modal
}

TEST(Dialog, HelpComesFromTheButtonAndTheHelpKeyAndOnlyWithATopic)
{
    probe_dialog_t dialog("dlg.example");
    std::vector<std::string> topics;
    dialog.get_help_signal().connect(&dialog, [&](const std::string& topic) { topics.push_back(topic); });
    dialog.set_help_id(5);
    run(dialog, [&](wxTopLevelWindow*) {
        EXPECT_TRUE(dialog.m_btn_help->IsEnabled());
        click(&dialog, "m_btn_help");
        test::press(WXK_F1);
        EXPECT_TRUE(topics.empty());
        dialog.set_help_topic("collecting");
        click(&dialog, "m_btn_help");
        test::press(WXK_F1);
        dialog.end_dialog(wxID_CANCEL);
    });
    EXPECT_EQ(std::vector<std::string>({"collecting", "collecting"}), topics);

    probe_dialog_t without("dlg.example");
    run(without, [&](wxTopLevelWindow*) {
        EXPECT_FALSE(without.m_btn_help->IsEnabled());
        without.end_dialog(wxID_CANCEL);
    });
}

TEST(Dialog, IsRaisedToItsMinimumSizeInEachDirectionOnItsOwn)
{
    const std::pair<wxSize, wxSize> rows[] = {{wxSize(900, 200), wxSize(900, 500)},
                                              {wxSize(300, 700), wxSize(600, 700)}};
    for (const auto& [before, after] : rows) {
        probe_dialog_t dialog("dlg.example");
        dialog.show_nonmodal(test::main_window(), false);
        ASSERT_TRUE(dialog.is_loaded());
        dialog.SetSize(before);
        dialog.m_min_size = wxSize(600, 500);
        dialog.send_init_event();
        EXPECT_EQ(after, dialog.GetSize());
        EXPECT_EQ(wxSize(400, test::main_window()->GetSize().y / 2),
                  dialog.get_proportional_size(0.5f, 0.5f, wxSize(400, 200)));
    }
}

TEST(Dialog, FocusComesBackToWhereItWas)
{
    auto* field = new wxTextCtrl(test::main_window(), wxID_ANY);
    test::main_window()->Raise();
    field->SetFocus();
    ASSERT_TRUE(test::wait_for([&] { return field->HasFocus(); }));
    probe_dialog_t dialog("dlg.example");
    run(dialog, [&](wxTopLevelWindow*) { test::press(WXK_ESCAPE); });
    EXPECT_TRUE(test::wait_for([&] { return field->HasFocus(); }));
    field->Destroy();
}

// A dialog with a frame that no other window of the process has: what the window manager adds is not known
// before it is shown, and must not be taken from the contents.
class framed_dialog_t : public commondlg3::dialog_base_t
{
public:
    using dialog_base_t::fit_to_contents;
    bool load_from_xml_resource(wxWindow* parent, const std::string&, const std::string&,
                                const std::string&) override
    {
        return Create(parent, wxID_ANY, "", wxDefaultPosition, wxSize(400, 300), wxCAPTION);
    }
    void on_init_dialog() override
    {
        SetSizer(new wxBoxSizer(wxVERTICAL));
        GetSizer()->Add(350, 200);
        fit_to_contents();
        centre_on_parent();
    }
};

TEST(Dialog, ContentsKeepTheirSizeWhenTheFrameIsNotKnownYetAndWhenTheyAreFittedAgain)
{
    for (int opening = 1; opening <= 2; ++opening) {
        framed_dialog_t dialog;
        run(dialog, [&](wxTopLevelWindow*) {
            EXPECT_LT(200, dialog.GetSize().y) << "this window manager draws no frames";
            for (int fitting = 1; fitting <= 3; ++fitting) {
                EXPECT_EQ(wxSize(350, 200), dialog.GetClientSize())
                    << "opening " << opening << ", fitting " << fitting;
                dialog.fit_to_contents();
                test::settle();
            }
            dialog.end_dialog(wxID_CANCEL);
        });
    }
}

void keep_narrowest(GtkWidget*, GdkRectangle* place, int* narrowest)
{
    *narrowest = std::min(*narrowest, place->width);
}

TEST(Dialog, OneThatIsShownAgainIsAsWideAsItsContents)
{
    for (const bool by_width : {false, true}) {
        framed_dialog_t dialog;
        const auto end = [&](wxTopLevelWindow*) { dialog.end_dialog(wxID_CANCEL); };
        run(dialog, end);
        ASSERT_TRUE(test::wait_for([&] { return dialog.GetSize() == dialog.GetClientSize(); }))
            << "it has a frame";
        int narrowest = 350;
        g_signal_connect(dialog.GetHandle(), "size-allocate", G_CALLBACK(keep_narrowest), &narrowest);
        by_width ? dialog.fit_to_contents(350) : dialog.fit_to_contents();
        run(dialog, end);
        EXPECT_EQ(350, narrowest);
        g_signal_handlers_disconnect_by_data(dialog.GetHandle(), &narrowest);
    }
}

} // namespace
