#include "tools.h"

#include <commondlg3/feature_config.h>
#include <commondlg3/resources.h>
#include <ff/search_directories.h>
#include <preferences_dialog.h>
#include <preferences_search.h>
#include <usage_record.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/listbox.h>
#include <wx/radiobut.h>
#include <wx/srchctrl.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace {

using gallery::preferences_dialog_t;

class PreferencesPages : public testing::Test
{
protected:
    static int run(preferences_dialog_t& dialog, const std::function<void(wxTopLevelWindow*)>& act)
    {
        return test::run_modal([&] { return dialog.show_modal(test::main_window()); }, act);
    }
    static void search(wxWindow* dialog, const char* words)
    {
        commondlg3::from_xrc<wxSearchCtrl>(dialog, "m_search")->SetValue(wxString::FromUTF8(words));
    }
    static void refuse(wxWindow* dialog)
    {
        search(dialog, "Usage");
        commondlg3::from_xrc<wxRadioButton>(dialog, "m_radioBtn6")->SetFocus();
        test::press(WXK_SPACE);
        auto* apply = commondlg3::from_xrc<wxButton>(dialog, "m_btn_apply");
        ASSERT_TRUE(test::wait_for([&] { return apply->IsEnabled(); }));
    }
    static std::vector<std::string> listed(wxWindow* dialog)
    {
        std::vector<std::string> pages;
        for (const wxString& page : commondlg3::from_xrc<wxListBox>(dialog, "m_pages")->GetStrings())
            pages.push_back(page.utf8_string());
        return pages;
    }
    std::string files() const
    {
        std::string all;
        if (std::filesystem::exists(m_dir.path() + "/config"))
            for (const auto& file : std::filesystem::directory_iterator(m_dir.path() + "/config"))
                all += file.path().filename().string() + "\n" + test::read_file(file.path().string());
        return all;
    }

    const test::temp_dir_t m_dir;
    const test::config_guard_t m_config{m_dir.path() + "/config"};
};

TEST_F(PreferencesPages, SearchFindsSettingsByTheWordsOnTheirPages)
{
    preferences_dialog_t dialog;
    run(dialog, [](wxTopLevelWindow* window) {
        const auto all = listed(window);
        test::press('F', wxMOD_CONTROL);
        test::type("object NAMES"); // a check box of a page that was not looked at
        EXPECT_TRUE(test::wait_for(
            [&] { return listed(window) == std::vector<std::string>{"Experimental features"}; }));
        test::press(WXK_RETURN);
        EXPECT_TRUE(test::wait_for([] {
            const auto* box = wxDynamicCast(wxWindow::FindFocus(), wxCheckBox);
            return box && box->GetLabelText() == "Object names in the list";
        }));
        search(window, "telemetry"); // a word that stands nowhere, but means the page
        EXPECT_EQ(std::vector<std::string>{"Usage data"}, listed(window));
        search(window, "no such words");
        EXPECT_TRUE(listed(window).empty());
        commondlg3::from_xrc<wxSearchCtrl>(window, "m_search")->SetFocus();
        test::press(WXK_ESCAPE);
        EXPECT_TRUE(test::wait_for([&] { return listed(window) == all; }));
        EXPECT_TRUE(window->IsShown()) << "Escape ended the search, not the dialog";
        test::press(WXK_ESCAPE);
    });
    const gallery::search_words_t words("straße  ÉT");
    EXPECT_TRUE(words.are_in("été STRASSE"));
    EXPECT_FALSE(words.are_in("STRASSE"));
}

TEST_F(PreferencesPages, AChangedFeatureAsksForARestartOnceItIsWritten)
{
    for (const bool restarts : {false, true}) { // switched on first, and off again
        preferences_dialog_t dialog;
        const auto answer = [&](wxTopLevelWindow* message) {
            const auto* headline = commondlg3::from_xrc<wxStaticText>(message, "m_main_instructions");
            EXPECT_EQ("Restart Vorbex Performance Studio now?", headline->GetLabelText());
            EXPECT_EQ(restarts, files().find("VORBEX_LIST_OBJECT_NAMES") == std::string::npos);
            test::press(restarts ? WXK_RETURN : WXK_ESCAPE);
        };
        EXPECT_EQ(wxID_OK, run(dialog, [&](wxTopLevelWindow* window) {
                      commondlg3::from_xrc<wxSearchCtrl>(window, "m_search")->SetFocus();
                      test::type("object names");
                      test::press(WXK_RETURN); // goes to the setting
                      test::press(WXK_SPACE);
                      auto* apply = commondlg3::from_xrc<wxButton>(window, "m_btn_apply");
                      ASSERT_TRUE(test::wait_for([&] { return apply->IsEnabled(); }));
                      const auto press_ok = [&] {
                          test::click(window, "m_btn_ok");
                          return 0;
                      };
                      test::run_modal(press_ok, answer);
                  }));
        EXPECT_EQ(restarts, dialog.wants_restart());
    }
}

TEST_F(PreferencesPages, TheUsageRecordIsLeftOnlyWithConsent)
{
    const std::string file = m_dir.path() + "/config/usage_data.json";
    gallery::count_opened("dlg.counted");
    gallery::report_usage();
    EXPECT_FALSE(std::filesystem::exists(file));
    ASSERT_TRUE(gallery::save_consent(gallery::opt_in_pp_t::user_consent_t::given).succeeded());
    gallery::report_usage();
    EXPECT_EQ(gallery::get_usage_record() + "\n", test::read_file(file));
    EXPECT_NE(std::string::npos, test::read_file(file).find("\"dlg.counted\": 1"));
    preferences_dialog_t dialog;
    run(dialog, [&](wxTopLevelWindow* window) {
        refuse(window);
        auto* apply = commondlg3::from_xrc<wxButton>(window, "m_btn_apply");
        apply->SetFocus();
        ASSERT_TRUE(test::wait_for([&] { return apply->HasFocus(); }));
        test::press(WXK_SPACE);
        EXPECT_TRUE(test::wait_for([&] { return !apply->IsEnabled(); }));
        EXPECT_FALSE(std::filesystem::exists(file)) << "whoever refuses need not wait for the end";
        gen_helpers2::error_code_t read;
        EXPECT_EQ(gallery::opt_in_pp_t::user_consent_t::refused, gallery::load_consent(read));
        test::press(WXK_ESCAPE); // heard also now that the button that had the focus cannot have it
    });
    gallery::report_usage();
    EXPECT_FALSE(std::filesystem::exists(file));
}

// In a damaged installation: what a page cannot show it must not overwrite either.
TEST_F(PreferencesPages, PagesWithoutTheirLayoutsAreEmptyAndLoseNothing)
{
    auto* frame = new wxFrame(test::main_window(), wxID_ANY, "host");
    gen_helpers2::error_code_t result;
    const auto dirs = FF_2_13::make_search_dir_container(
        cfgmgr2::open_property_storage(m_dir.path() + "/config/search_directories.xml", result));
    dirs->get_dirs(FF_2_13::category_sources)->add("/kept", true);
    ASSERT_TRUE(dirs->save().succeeded());
    commondlg3::active_features_config_impl_t active{gen_helpers2::path_t()};
    active.turn_on({"", "", "KEPT"});
    ASSERT_TRUE(active.save());
    ASSERT_TRUE(gallery::save_consent(gallery::opt_in_pp_t::user_consent_t::refused).succeeded());
    const test::temp_dir_t nothing;
    const test::product_guard_t no_layouts(nothing.path(), LOCALE_DIR, m_dir.path() + "/config");
    for (const auto& page : gallery::make_preferences_pages()) {
        SCOPED_TRACE(page->get_object());
        EXPECT_TRUE(page->load().succeeded());
        auto* window = page->create(frame);
        EXPECT_TRUE(window->GetChildren().empty());
        window->on_update_ui_settings();
        window->save_settings();
        EXPECT_FALSE(page->is_changed());
        EXPECT_TRUE(page->apply().succeeded());
        EXPECT_EQ(page->get_object() == "pref.editor", !test::take_assertions().empty())
            << "tells what it misses";
    }
    for (const char* kept : {">KEPT<", "<int name=\"consent\">2<", "+/kept"})
        EXPECT_NE(std::string::npos, files().find(kept)) << kept;
    frame->Destroy();
}

// What stands in a window, as far as it can be seen.
void collect_shown(wxWindow* window, std::vector<wxWindow*>& shown)
{
    for (wxWindow* child : window->GetChildren()) {
        if (!child->IsShown() || child->IsTopLevel())
            continue;
        shown.push_back(child);
        collect_shown(child, shown);
    }
}

// At larger fonts a page may need more width than its host has: what it then must not do is give up.
TEST_F(PreferencesPages, APageIsLaidOutHoweverNarrowItsHostIs)
{
    auto* frame = new wxFrame(test::main_window(), wxID_ANY, "host", wxDefaultPosition, wxSize(220, 200));
    frame->Show();
    for (const auto& page : gallery::make_preferences_pages()) {
        SCOPED_TRACE(page->get_object());
        EXPECT_TRUE(page->load().succeeded());
        auto* host = new wxPanel(frame, wxID_ANY, wxPoint(0, 0), wxSize(120, 100));
        auto* window = page->create(host);
        window->SetSize(120, 100);
        test::settle();
        std::vector<wxWindow*> shown;
        collect_shown(window, shown);
        EXPECT_GT(shown.size(), 3U);
        for (const wxWindow* one : shown)
            for (const wxWindow* other : shown) {
                const bool are_neighbours = one < other && one->GetParent() == other->GetParent();
                EXPECT_FALSE(are_neighbours && one->GetRect().Intersects(other->GetRect()))
                    << wx_helpers1::from_wx(one->GetName() + " " + other->GetName());
            }
        host->Destroy();
    }
    frame->Destroy();
}

} // namespace
