#include "tools.h"

#include <cfgmgr2/product_locations.h>
#include <commondlg3/file_finder_pp.h>
#include <commondlg3/resources.h>
#include <commondlg3/search_dirs_panel.h>
#include <commondlg3/search_dirs_tab.h>
#include <commondlg3/text_utils.h>
#include <missing_resource.h>
#include <preferences_dialog.h>
#include <wx_helpers1/text.h>

#include <wx/choice.h>
#include <wx/listbox.h>

#include <filesystem>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace commondlg3;
using namespace FF_2_13;
using list_t = std::vector<std::pair<std::string, bool>>;

list_t dirs_of(const ObjectPtr<IEditableSearchDirContainer>& container, search_category_t category)
{
    list_t dirs;
    for (const auto at = container->get_dirs(category); !at->at_end(); at->next())
        dirs.emplace_back(at->get_path(), at->is_recursive());
    return dirs;
}

class SearchDirsPanel : public testing::Test
{
protected:
    void SetUp() override
    {
        gen_helpers2::error_code_t result;
        m_container = make_search_dir_container(
            cfgmgr2::open_property_storage(m_dir.path() + "/config/dirs.xml", result));
        m_container->get_dirs(category_binaries)->add("/usr/bin", true);
        m_container->get_dirs(category_sources)->add("/usr/src", false);
        m_frame = new wxFrame(test::main_window(), wxID_ANY, "host", wxPoint(100, 100), wxSize(640, 400));
        m_page = new file_finder_pp_t(m_container);
        m_page->create(m_frame);
        m_panel = m_page->get_panel();
        ASSERT_TRUE(m_panel);
        m_frame->Show();
        test::settle();
    }
    void TearDown() override { m_frame->Destroy(); }

    const test::temp_dir_t m_dir;
    ObjectPtr<IEditableSearchDirContainer> m_container;
    wxFrame* m_frame = nullptr;
    file_finder_pp_t* m_page = nullptr;
    search_dirs_panel_t* m_panel = nullptr;
};

TEST_F(SearchDirsPanel, EachTypeKeepsItsListAndAllAreSaved)
{
    auto* types = from_xrc<wxChoice>(m_panel, "m_comboBox4");
    EXPECT_EQ(4U, types->GetCount());
    EXPECT_FALSE(m_page->is_changed());
    m_panel->get_grid()->set_checked(0, false);
    m_panel->get_grid()->insert_rows(1, {"/bin"});
    EXPECT_TRUE(m_page->is_changed());
    types->SetSelection(2);
    wxCommandEvent event(wxEVT_CHOICE, types->GetId());
    event.SetInt(2);
    event.SetEventObject(types);
    types->ProcessWindowEvent(event);
    EXPECT_EQ("/usr/src", m_panel->get_grid()->get_text(0));
    m_panel->get_grid()->set_checked(0, true);
    m_panel->select_type(-1);
    m_panel->select_type(4);
    EXPECT_EQ(2, m_panel->get_type());
    m_page->on_ok();
    EXPECT_EQ(list_t({{"/usr/bin", false}, {"/bin", false}}), dirs_of(m_container, category_binaries));
    EXPECT_EQ(list_t({{"/usr/src", true}}), dirs_of(m_container, category_sources));
    EXPECT_FALSE(m_page->is_changed());
    m_panel->select_type(0);
    EXPECT_EQ("/bin", m_panel->get_grid()->get_text(1));
    m_panel->remove_row(2); // the input row
    m_panel->remove_row(1);
    EXPECT_EQ(0, m_panel->get_grid()->get_current_row());
    EXPECT_TRUE(m_page->is_changed());
    gen_helpers2::error_code_t result;
    const auto again =
        make_search_dir_container(cfgmgr2::open_property_storage(m_dir.path() + "/config/dirs.xml", result));
    EXPECT_EQ(2U, again->count(category_binaries)) << "on the disk";
}

TEST_F(SearchDirsPanel, PathsThatAreNoDirectoriesAreSavedAndTold)
{
    test::make_file(m_dir.path() + "/one");
    test::make_file(m_dir.path() + "/two");
    m_panel->get_grid()->insert_rows(0, {m_dir.path() + "/one", "/missing/is/fine"});
    m_panel->select_type(3);
    m_panel->get_grid()->insert_rows(0, {m_dir.path() + "/two"});
    test::messages_t messages;
    m_page->save_settings();
    ASSERT_EQ(1U, messages.shown.size());
    EXPECT_EQ(translate_message("panel.search_dirs.main_not_a_dir", {{"dir", m_dir.path() + "/one"}}),
              messages.shown[0].first);
    EXPECT_NE(std::string::npos, messages.shown[0].second.find("1 other path"));
    EXPECT_EQ(3U, m_container->count(category_binaries));
    EXPECT_EQ(1U, m_container->count(category_others));
}

TEST_F(SearchDirsPanel, WhatCannotBeSavedIsToldAndStaysToBeSaved)
{
    test::make_file(m_dir.path() + "/config"); // where the folder should be
    m_panel->get_grid()->insert_rows(0, {"/new"});
    {
        test::messages_t messages;
        m_page->save_settings();
        ASSERT_EQ(1U, messages.shown.size());
        EXPECT_EQ(translate_message("panel.search_dirs.cannot_save"), messages.shown[0].first);
    }
    EXPECT_TRUE(m_page->is_changed());
    EXPECT_EQ("/new", m_panel->get_grid()->get_text(0));
    std::filesystem::remove(m_dir.path() + "/config");
    test::messages_t messages;
    m_page->save_settings();
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_FALSE(m_page->is_changed());
    EXPECT_NE("", test::read_file(m_dir.path() + "/config/dirs.xml"));
}

// The host's dialog, with the page of binaries in front.
class SearchDirsPreferences : public testing::Test
{
protected:
    static int run(const std::function<void(wxWindow*, search_dirs_tab_t*)>& act)
    {
        gallery::preferences_dialog_t dialog;
        return test::run_modal(
            [&] { return dialog.show_modal(test::main_window()); },
            [&](wxTopLevelWindow* window) {
                auto* list = from_xrc<wxListBox>(window, "m_pages");
                const int row = list->FindString(
                    wx_helpers1::to_wx(gallery::text("preferences.page.search_dirs.binaries")));
                list->SetSelection(row);
                wxCommandEvent event(wxEVT_LISTBOX, list->GetId());
                event.SetInt(row);
                event.SetEventObject(list);
                list->ProcessWindowEvent(event);
                test::settle();
                search_dirs_tab_t* tab = nullptr;
                for (wxWindow* child : from_xrc<wxWindow>(window, "m_page_area")->GetChildren())
                    tab = tab ? tab : dynamic_cast<search_dirs_tab_t*>(child);
                ASSERT_TRUE(tab);
                act(window, tab);
            });
    }
    static wxButton* button(wxWindow* window, const char* name) { return from_xrc<wxButton>(window, name); }
    static void click(wxWindow* window, const char* name)
    {
        wxCommandEvent event(wxEVT_BUTTON, button(window, name)->GetId());
        event.SetEventObject(button(window, name));
        button(window, name)->ProcessWindowEvent(event);
    }
    std::string file() const { return m_dir.path() + "/config/search_directories.xml"; }
    std::string stored() const { return test::read_file(file()); }

    const test::temp_dir_t m_dir;
    const test::config_guard_t m_config{m_dir.path() + "/config"};
};

TEST_F(SearchDirsPreferences, ApplyFollowsTheListAndCancelLeavesTheFile)
{
    EXPECT_EQ(wxID_OK, run([&](wxWindow* window, search_dirs_tab_t* tab) {
                  EXPECT_FALSE(button(window, "m_btn_apply")->IsEnabled());
                  tab->get_grid()->SetFocus();
                  tab->get_grid()->edit(0);
                  test::type("/typ");
                  EXPECT_TRUE(button(window, "m_btn_apply")->IsEnabled()) << "while it is typed";
                  test::type("ed");
                  click(window, "m_btn_apply");
                  EXPECT_FALSE(button(window, "m_btn_apply")->IsEnabled());
                  EXPECT_NE(std::string::npos, stored().find("/typed"));
                  tab->get_grid()->insert_rows(0, {"/second"});
                  click(window, "m_btn_ok");
              }));
    const std::string before = stored();
    EXPECT_NE(std::string::npos, before.find("/second"));
    EXPECT_EQ(wxID_CANCEL, run([&](wxWindow*, search_dirs_tab_t* tab) {
                  EXPECT_EQ("/typed", tab->get_grid()->get_text(1));
                  tab->remove_row(1);
                  test::press(WXK_ESCAPE);
              }));
    EXPECT_EQ(before, stored());
}

TEST_F(SearchDirsPreferences, AnotherProgramsListsStayAndAFailedWriteLosesNothing)
{
    const auto other_program = [&](search_category_t category, const char* dir) {
        gen_helpers2::error_code_t result;
        const auto lists = make_search_dir_container(cfgmgr2::open_property_storage(file(), result));
        lists->get_dirs(category)->add(dir, false);
        EXPECT_TRUE(lists->save().succeeded());
    };
    EXPECT_EQ(wxID_OK, run([&](wxWindow* window, search_dirs_tab_t* tab) {
                  other_program(category_sources, "/from/elsewhere");
                  tab->get_grid()->insert_rows(0, {"/mine"});
                  {
                      std::filesystem::rename(m_dir.path() + "/config", m_dir.path() + "/away");
                      test::make_file(m_dir.path() + "/config"); // where the folder should be
                      test::messages_t messages;
                      click(window, "m_btn_ok");
                      EXPECT_EQ(1U, messages.shown.size());
                  }
                  EXPECT_EQ("/mine", tab->get_grid()->get_text(0));
                  EXPECT_TRUE(button(window, "m_btn_apply")->IsEnabled());
                  std::filesystem::remove(m_dir.path() + "/config");
                  std::filesystem::rename(m_dir.path() + "/away", m_dir.path() + "/config");
                  click(window, "m_btn_ok");
              }));
    EXPECT_NE(std::string::npos, stored().find("/mine"));
    EXPECT_NE(std::string::npos, stored().find("/from/elsewhere"));
    test::make_file(file(), "<bag");
    test::messages_t messages;
    EXPECT_EQ(wxID_CANCEL, run([&](wxWindow*, search_dirs_tab_t* tab) {
                  EXPECT_TRUE(test::wait_for([&] { return !messages.shown.empty(); }));
                  EXPECT_EQ(1, tab->get_grid()->row_count());
                  test::press(WXK_ESCAPE);
              }));
    EXPECT_EQ(1U, messages.shown.size()) << "once, though three pages share the file";
    EXPECT_EQ("<bag", stored());
}

} // namespace
