#include "probe.h"
#include "support.h"

#include <commondlg3/dialog_base.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/text.h>

#include <wx/sizer.h>
#include <wx/toplevel.h>

#include <algorithm>
#include <functional>
#include <sstream>
#include <string>
#include <vector>

namespace {

using test::click;
using test::probe_dialog_t;
using test::run_modal;

int run(probe_dialog_t& dialog, const std::function<void(wxTopLevelWindow*)>& act)
{
    return run_modal([&] { return dialog.show_modal(test::main_window()); }, act);
}

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

struct look_t
{
    explicit look_t(wxTopLevelWindow* window)
        : title(window->GetTitle()),
          size(window->GetSize()),
          default_item(window->GetDefaultItem()->GetName())
    {
        add(window);
    }

    void add(wxWindow* window)
    {
        for (wxWindow* child : window->GetChildren()) {
            std::ostringstream line;
            line << child->GetName() << ' ' << child->GetLabel() << ' ' << child->GetRect().x << ' '
                 << child->GetRect().y << ' ' << child->GetRect().width << ' ' << child->GetRect().height
                 << ' ' << child->IsShown() << ' ' << child->GetToolTipText() << ' '
                 << wx_helpers1::get_accessible_name(child);
            controls.push_back(line.str());
            add(child);
        }
    }

    wxString title;
    wxSize size;
    wxString default_item;
    std::vector<std::string> controls; // in the order of the Tab key
};

// A later dialog gets controls that were built ahead: it must look and work like the first, and two of them
// open at the same time must not share any.
TEST(Dialog, LaterOnesAreLikeTheFirst)
{
    std::vector<look_t> looks;
    for (int opening = 0; opening < 3; ++opening) {
        probe_dialog_t dialog("dlg.example");
        EXPECT_EQ(wxID_OK, run(dialog, [&](wxTopLevelWindow* window) {
                      looks.emplace_back(window);
                      probe_dialog_t second("dlg.example");
                      EXPECT_TRUE(second.show_nonmodal(test::main_window(), true));
                      test::settle();
                      EXPECT_EQ(looks[0].controls, look_t(&second).controls);
                      second.Hide();
                      window->Raise();
                      test::press(WXK_RETURN);
                  }));
        EXPECT_EQ(looks[0].title, looks[opening].title);
        EXPECT_EQ(looks[0].size, looks[opening].size);
        EXPECT_EQ(looks[0].default_item, looks[opening].default_item);
        EXPECT_EQ(looks[0].controls, looks[opening].controls);
        const auto spare_is_built = [] {
            return std::any_of(wxTopLevelWindows.begin(), wxTopLevelWindows.end(), [](wxWindow* window) {
                return window->GetName() == "dlg.example" && !window->IsShown();
            });
        };
        EXPECT_TRUE(test::wait_for(spare_is_built)) << "the next one would be built while the user waits";
    }
}

TEST(Dialog, FittingAgainChangesNothing)
{
    class dialog_t : public probe_dialog_t
    {
    public:
        using probe_dialog_t::fit_to_contents;
        using probe_dialog_t::probe_dialog_t;
    };
    dialog_t dialog("dlg.example");
    dialog.on_init = [&] { dialog.fit_to_contents(); };
    std::vector<look_t> looks;
    run(dialog, [&](wxTopLevelWindow* window) {
        for (int i = 0; i < 4; ++i) {
            looks.emplace_back(window);
            dialog.fit_to_contents();
            test::settle();
        }
        dialog.end_dialog(wxID_OK);
    });
    ASSERT_EQ(4u, looks.size());
    for (const look_t& look : looks) {
        EXPECT_EQ(looks[0].size, look.size);
        EXPECT_EQ(looks[0].controls, look.controls);
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
    probe_dialog_t dialog("dlg.example");
    dialog.show_nonmodal(test::main_window(), false);
    ASSERT_TRUE(dialog.is_loaded());
    dialog.SetSize(900, 200); // wide enough, not high enough
    dialog.m_min_size = wxSize(600, 500);
    dialog.send_init_event();
    EXPECT_EQ(wxSize(900, 500), dialog.GetSize());

    probe_dialog_t narrow("dlg.example");
    narrow.show_nonmodal(test::main_window(), false);
    ASSERT_TRUE(narrow.is_loaded());
    narrow.SetSize(300, 700);
    narrow.m_min_size = wxSize(600, 500);
    narrow.send_init_event();
    EXPECT_EQ(wxSize(600, 700), narrow.GetSize());
}

TEST(Dialog, ProportionalSizeTruncatesAndNeverFallsBelowTheMinimumOrZero)
{
    auto* parent = new wxFrame(test::main_window(), wxID_ANY, "parent", wxDefaultPosition, wxSize(400, 1000));
    {
        probe_dialog_t dialog("dlg.example");
        EXPECT_EQ(wxSize(300, 200), dialog.get_proportional_size(0.5f, 0.5f, wxSize(300, 200)));
        dialog.show_nonmodal(parent, false);
        ASSERT_TRUE(dialog.is_loaded());
        const wxSize whole = parent->GetSize();
        EXPECT_EQ(wxSize(300, whole.y / 2), dialog.get_proportional_size(0.5f, 0.5f, wxSize(300, 200)));
        EXPECT_EQ(wxSize(0, 0), dialog.get_proportional_size(-1.0f, std::nanf(""), wxSize(-5, -5)));
    }
    parent->Destroy();
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

TEST(Dialog, TitleKeepsAnyBytes)
{
    probe_dialog_t dialog("dlg.example");
    dialog.show_nonmodal(test::main_window(), false);
    ASSERT_TRUE(dialog.is_loaded());
    for (const std::string title : {"Größe – 日本", "caf\xe9 \xff.txt", ""}) {
        dialog.set_title(title);
        EXPECT_EQ(title, dialog.get_title());
    }
}

// A dialog with a frame that no other window of the process has: what the window manager adds is not known
// before it is shown, and must not be taken from the contents.
class framed_dialog_t : public commondlg3::dialog_base_t
{
public:
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

TEST(Dialog, ContentsKeepTheirSizeWhenTheFrameIsNotKnownYet)
{
    for (int opening = 1; opening <= 2; ++opening) {
        framed_dialog_t dialog;
        run_modal([&] { return dialog.show_modal(test::main_window()); },
                  [&](wxTopLevelWindow*) {
                      EXPECT_EQ(wxSize(350, 200), dialog.GetClientSize()) << "opening " << opening;
                      EXPECT_LT(200, dialog.GetSize().y) << "this window manager draws no frames";
                      dialog.end_dialog(wxID_CANCEL);
                  });
    }
}

} // namespace
