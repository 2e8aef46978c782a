#include "probe.h"
#include "support.h"

#include <wx_helpers1/inspect.h>
#include <wx_helpers1/moving.h>
#include <wx_helpers1/ui_settings.h>

#include <fstream>
#include <vector>

namespace {

using test::click;
using test::probe_page_t;

class Page : public testing::Test
{
protected:
    ~Page() override { m_frame->Destroy(); }
    wxFrame* m_frame = new wxFrame(test::main_window(), wxID_ANY, "host");
};

TEST_F(Page, RunsItsFirstStepsWhenCreatedAndEndsByItsSignal)
{
    auto* page = new probe_page_t("pref.example");
    std::vector<int> codes;
    page->get_end_signal().connect([&](commondlg3::generic_base_t<wxPanel>* ended, int code) {
        EXPECT_EQ(page, ended);
        codes.push_back(code);
    });
    page->create(m_frame);
    page->create(m_frame);
    EXPECT_EQ(1, page->calls["init"]);
    EXPECT_EQ(2, page->calls["fonts"]);
    EXPECT_TRUE(page->IsShown());
    click(page, "m_btn_ok");
    EXPECT_FALSE(page->IsShown());
    page->create(m_frame);
    EXPECT_TRUE(page->IsShown());
    click(page, "m_btn_cancel");
    page->Close();
    EXPECT_EQ(std::vector<int>({5100, 5101, 5101}), codes);
    EXPECT_EQ(1, page->calls["save"]);
    EXPECT_EQ(2, page->calls["cancel"]);
}

// The change of settings reaches the page once, however often it was initialised, and no page after its end.
TEST_F(Page, FollowsTheSettingsOnceUntilItIsGone)
{
    auto* page = new probe_page_t("no.such.object");
    page->create(m_frame);
    page->set_resource_object("pref.example");
    page->create(m_frame);
    auto& changed = wx_helpers1::ui_settings_t::get()->changed();
    const int before = page->calls["fonts"];
    changed.emit();
    EXPECT_EQ(before + 1, page->calls["fonts"]);
    const std::size_t slots = changed.num_slots();
    page->Destroy();
    EXPECT_EQ(slots - 1, changed.num_slots());
    changed.emit();
}

// As when one of its texts asks for a layout before the host has made room for it.
TEST_F(Page, SqueezesNothingWhenItIsLaidOutWithoutRoom)
{
    auto* page = new probe_page_t("pref.example");
    page->create(m_frame);
    auto* button = wxWindow::FindWindowByName("m_btn_ok", page);
    page->SetSize(20, 10);
    EXPECT_TRUE(page->Layout());
    EXPECT_EQ(button->GetBestSize(), button->GetSize());
}

TEST_F(Page, ThatCouldNotBeLoadedSurvivesEverythingAndIsWholeOnceItIsLoaded)
{
    const test::temp_dir_t dir;
    std::ofstream(dir.path() + "/broken.xrc") << "<resource><object class='wxPanel' name='pref.example'>";
    auto* page = new probe_page_t("pref.example");
    page->set_resource_file(dir.path() + "/broken.xrc");
    page->create(m_frame);
    EXPECT_TRUE(page->IsShown()) << "empty, but there";
    EXPECT_FALSE(page->is_loaded());
    EXPECT_EQ(1, page->calls["init"]);
    EXPECT_FALSE(page->m_btn_ok || page->m_btn_cancel || page->m_btn_help);
    page->send_init_event();
    page->on_ok();
    page->on_cancel();
    page->on_help();
    page->on_update_ui_settings();
    page->set_max_text_limit();
    page->end_dialog(wxID_OK);

    page->set_resource_file(commondlg3::create_resource_filename("gallery.dat", "gallery.xrc"));
    bool whole = false;
    page->on_init = [&] { whole = page->m_btn_ok && commondlg3::from_xrc<wxTextCtrl>(page, "m_name"); };
    page->create(m_frame);
    EXPECT_TRUE(page->is_loaded());
    EXPECT_TRUE(whole) << "its own steps ran on the real layout";
    EXPECT_EQ(2, page->calls["init"]);
    EXPECT_EQ(page, commondlg3::from_xrc<wxTextCtrl>(page, "m_name")->GetParent());
    click(page, "m_btn_ok");
    EXPECT_EQ(2, page->calls["save"]);
}

TEST_F(Page, LabelsKeepTheirEmphasisInTheConfiguredFont)
{
    auto* page = new probe_page_t("pref.example");
    page->create(m_frame);
    auto* label = commondlg3::from_xrc<wxStaticText>(page, "m_name_label");
    label->SetFont(wxFont(30, wxFONTFAMILY_TELETYPE, wxFONTSTYLE_ITALIC, wxFONTWEIGHT_BOLD));
    page->send_init_event();
    const wxFont wanted = wx_helpers1::ui_settings_t::get()->get_font(wx_helpers1::ui_font::text);
    EXPECT_EQ(wanted.GetFaceName(), label->GetFont().GetFaceName());
    EXPECT_EQ(wanted.GetFractionalPointSize(), label->GetFont().GetFractionalPointSize());
    EXPECT_EQ(wxFONTSTYLE_ITALIC, label->GetFont().GetStyle());
    EXPECT_EQ(wxFONTWEIGHT_BOLD, label->GetFont().GetWeight());
}

TEST(Moving, TheFocusGoesWithTheWindow)
{
    auto* frame = new wxFrame(test::main_window(), wxID_ANY, "host", wxPoint(100, 100), wxSize(300, 200));
    auto* moved = new wxPanel(frame);
    auto* button = new wxButton(moved, wxID_ANY, "b");
    auto* place = new wxPanel(frame);
    frame->Show();
    frame->Raise();
    button->SetFocus();
    ASSERT_TRUE(test::wait_for([&] { return button->HasFocus(); }));
    wx_helpers1::move_window(moved, place, true);
    test::settle();
    EXPECT_EQ(button, wx_helpers1::get_focus_in(*frame)) << "where keys go, whatever was last told";
    frame->Destroy();
}

} // namespace
