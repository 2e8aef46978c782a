#include "dirs.h"
#include "tools.h"

#include <commondlg3/file_finder_pp.h>
#include <commondlg3/resources.h>
#include <commondlg3/search_dirs_panel.h>

#include <wx/choice.h>

#include <filesystem>
#include <string>

namespace {

using namespace commondlg3;
using namespace FF_2_13;
using test::dirs_of;
using test::dirs_t;
using test::open_dirs;

class SearchDirsPanel : public testing::Test
{
protected:
    void SetUp() override
    {
        m_container = open_dirs(m_dir.path() + "/config/dirs.xml");
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
    test::container_t m_container;
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
    test::send(wxEVT_CHOICE, types, 2);
    EXPECT_EQ("/usr/src", m_panel->get_grid()->get_text(0));
    m_panel->get_grid()->set_checked(0, true);
    m_page->on_ok();
    EXPECT_FALSE(m_page->is_changed());
    const auto stored = open_dirs(m_dir.path() + "/config/dirs.xml");
    EXPECT_EQ(dirs_t({{"/usr/bin", false}, {"/bin", false}}), dirs_of(stored, category_binaries));
    EXPECT_EQ(dirs_t({{"/usr/src", true}}), dirs_of(stored, category_sources));
    m_panel->select_type(0);
    m_panel->remove_row(2); // the input row
    EXPECT_FALSE(m_page->is_changed());
    m_panel->remove_row(1);
    EXPECT_EQ(0, m_panel->get_grid()->get_current_row());
    EXPECT_TRUE(m_page->is_changed());
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
    EXPECT_EQ("“" + m_dir.path() + "/one” is not a directory", messages.shown[0].first);
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
        EXPECT_EQ("The directories could not be saved", messages.shown[0].first);
    }
    EXPECT_TRUE(m_page->is_changed());
    std::filesystem::remove(m_dir.path() + "/config");
    test::messages_t messages;
    m_page->save_settings();
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_FALSE(m_page->is_changed());
    EXPECT_EQ(dirs_t({{"/new", false}, {"/usr/bin", true}}),
              dirs_of(open_dirs(m_dir.path() + "/config/dirs.xml"), category_binaries));
}

} // namespace
