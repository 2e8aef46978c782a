#include "tools.h"

#include <cfgmgr2/message_catalog.h>
#include <commondlg3/caption_panel.h>
#include <commondlg3/dir_checker.h>
#include <commondlg3/resources.h>
#include <commondlg3/search_dirs_tab.h>
#include <commondlg3/text_utils.h>
#include <wx_helpers1/clipboard.h>
#include <wx_helpers1/text.h>

#include <wx/bmpbuttn.h>
#include <wx/dirdlg.h>
#include <wx/sizer.h>

#include <condition_variable>
#include <filesystem>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace {

using namespace commondlg3;
using namespace FF_2_13;
using texts_t = std::vector<std::string>;

texts_t dirs_of(const search_dirs_tab_t::container_t& container, int category)
{
    texts_t dirs;
    for (const auto at = container->get_dirs(static_cast<search_category_t>(category)); !at->at_end();
         at->next())
        dirs.push_back(at->get_path());
    return dirs;
}

class SearchDirsTab : public testing::Test
{
protected:
    void open(const texts_t& dirs, search_category_t category = category_sources, bool with_container = true)
    {
        close();
        if (with_container) {
            m_container = make_search_dir_container(nullptr);
            const auto at = m_container->get_dirs(category);
            for (const std::string& dir : dirs)
                at->add(dir, false);
        }
        m_frame = new wxFrame(test::main_window(), wxID_ANY, "host", wxPoint(100, 100), wxSize(640, 480));
        m_tab = new search_dirs_tab_t(m_container, category);
        m_tab->create(m_frame);
        m_frame->Show();
        m_grid = m_tab->get_grid();
        settle();
    }
    void close()
    {
        if (m_frame)
            m_frame->Destroy();
        m_frame = nullptr;
    }
    void TearDown() override { close(); }

    // What the checker has to say has been said.
    void settle()
    {
        test::settle();
        test::wait_for([] { return false; }, 60);
        test::settle();
    }
    texts_t rows() const
    {
        texts_t texts;
        for (const auto& row : m_grid->get_rows())
            texts.push_back(row.text);
        return texts;
    }
    texts_t messages() const
    {
        texts_t texts;
        for (int i = 0; i < m_tab->get_caption_panel()->get_message_count(); ++i)
            texts.push_back(
                m_tab->get_caption_panel()->get_message(m_tab->get_caption_panel()->get_message_id(i)).text);
        return texts;
    }
    static std::string missing(const std::string& dir)
    {
        return translate_message("panel.search_dirs.error_dir_nonexistent", {{"dir", dir}});
    }
    static std::string no_dir(const std::string& dir)
    {
        return translate_message("panel.search_dirs.error_not_a_dir", {{"dir", dir}});
    }
    wxBitmapButton* button(const char* name) { return from_xrc<wxBitmapButton>(m_tab, name); }
    void click(const char* name)
    {
        wxCommandEvent event(wxEVT_BUTTON, button(name)->GetId());
        event.SetEventObject(button(name));
        button(name)->ProcessWindowEvent(event);
    }

    const test::temp_dir_t m_dir;
    search_dirs_tab_t::container_t m_container;
    wxFrame* m_frame = nullptr;
    search_dirs_tab_t* m_tab = nullptr;
    vdxpropgrid2::property_grid_t* m_grid = nullptr;
};

TEST_F(SearchDirsTab, EachBadRowHasOneMessageThatFollowsWhatBecomesOfIt)
{
    test::make_file(m_dir.path() + "/file");
    open({"/none/1", m_dir.path(), m_dir.path() + "/file"});
    EXPECT_EQ(texts_t({missing("/none/1"), no_dir(m_dir.path() + "/file")}), messages());
    EXPECT_EQ(caption_panel_t::severity_t::warning, m_tab->get_caption_panel()->get_message(0).severity);
    EXPECT_EQ("Missing", m_grid->get_mark(0).word);
    EXPECT_EQ("Not a directory", m_grid->get_mark(2).word);
    const auto key = m_grid->get_key(0);
    const int id = m_tab->get_message_id(key);

    m_grid->move_row(0, 2);
    m_grid->set_text(2, "/none/2");
    settle();
    EXPECT_EQ(id, m_tab->get_message_id(key)) << "edited in place, wherever the row is";
    EXPECT_EQ(texts_t({missing("/none/2"), no_dir(m_dir.path() + "/file")}), messages());
    m_grid->set_text(2, "/");
    settle();
    EXPECT_EQ(texts_t({no_dir(m_dir.path() + "/file")}), messages());
    EXPECT_EQ("", m_grid->get_mark(2).word);
    m_tab->remove_row(1);
    EXPECT_TRUE(messages().empty());
    m_grid->undo();
    settle();
    EXPECT_EQ(texts_t({no_dir(m_dir.path() + "/file")}), messages()) << "with the row";
    m_grid->insert_rows(0, {"/none/3"});
    settle();
    EXPECT_EQ(2U, messages().size());
    m_grid->undo();
    settle();
    EXPECT_EQ(1U, messages().size());
}

TEST_F(SearchDirsTab, ValidatingAnswersAndTellsAtOnceUnlessSilenced)
{
    test::make_file(m_dir.path() + "/file");
    open({m_dir.path(), "/"});
    EXPECT_TRUE(m_tab->validate_dir(path_info_t(m_dir.path()), 0));
    EXPECT_FALSE(m_tab->validate_dir(path_info_t("/a*b"), 0));
    EXPECT_FALSE(m_tab->validate_dir(path_info_t(m_dir.path() + "/file"), 0));
    EXPECT_EQ(texts_t({no_dir(m_dir.path() + "/file")}), messages()) << "one a row, the latest";
    EXPECT_FALSE(m_tab->validate_dir(path_info_t(""), 1));
    EXPECT_EQ(2U, messages().size());
    EXPECT_TRUE(m_tab->validate_dir(path_info_t("/"), 0));
    EXPECT_EQ(texts_t({missing("")}), messages());
    m_tab->set_dir_error_mode(0);
    EXPECT_TRUE(messages().empty());
    EXPECT_FALSE(m_tab->validate_dir(path_info_t("/none"), 0));
    m_tab->push_message("text", 0);
    EXPECT_TRUE(messages().empty());
    m_grid->set_text(0, "/none");
    settle();
    EXPECT_TRUE(messages().empty());
    EXPECT_EQ("Missing", m_grid->get_mark(0).word) << "silent, not blind";
    m_tab->set_dir_error_mode(1);
    EXPECT_EQ(texts_t({missing("/none")}), messages());
    m_tab->push_message("beyond", 2); // the input row
    m_tab->push_message("beyond", -1);
    EXPECT_EQ(1U, messages().size());
    m_tab->remove_messages();
    EXPECT_TRUE(messages().empty());
    EXPECT_EQ(missing("/x"), m_tab->get_directory_error_msg(5, "/x"));
    const test::temp_dir_t nothing;
    const test::product_guard_t no_catalog(nothing.path(), nothing.path());
    EXPECT_EQ("", m_tab->get_directory_error_msg(0, "/x"));
}

TEST_F(SearchDirsTab, ButtonsKeepTheInputRowOutAndTheRowCurrent)
{
    open({"/1", "/2", "/3"});
    m_grid->set_current_row(0);
    click("m_btn_up");
    EXPECT_FALSE(button("m_btn_up")->IsEnabled());
    click("m_btn_down");
    EXPECT_EQ(texts_t({"/2", "/1", "/3"}), rows());
    EXPECT_EQ(1, m_grid->get_current_row());
    EXPECT_TRUE(button("m_btn_up")->IsEnabled());
    click("m_btn_down");
    click("m_btn_down");
    EXPECT_EQ(texts_t({"/2", "/3", "/1"}), rows());
    EXPECT_EQ(2, m_grid->get_current_row());
    EXPECT_FALSE(button("m_btn_down")->IsEnabled());
    m_grid->set_current_row(3);
    for (const char* name : {"m_btn_up", "m_btn_down", "m_btn_remove"}) {
        click(name);
        EXPECT_FALSE(button(name)->IsEnabled()) << name;
    }
    m_tab->remove_row(3);
    m_tab->remove_row(-1);
    EXPECT_EQ(3U, rows().size());
    m_grid->set_current_row(2);
    click("m_btn_remove");
    EXPECT_EQ(1, m_grid->get_current_row());
    m_grid->set_current_row(0);
    click("m_btn_remove");
    EXPECT_EQ(texts_t({"/3"}), rows());
    EXPECT_EQ(0, m_grid->get_current_row());
    click("m_btn_remove");
    EXPECT_EQ(1, m_grid->row_count());
    EXPECT_EQ(0, m_grid->get_current_row()) << "the input row";
}

TEST_F(SearchDirsTab, SavingWritesTheRowsInOrderToEachCategoryThatBelongsTogether)
{
    for (const auto category : {category_binaries, category_symbols, category_sources, category_others}) {
        SCOPED_TRACE(category);
        open({"/1"}, category);
        for (int other = 1; other <= 4; ++other)
            if (other != category)
                m_container->get_dirs(static_cast<search_category_t>(other))->add("/old", false);
        EXPECT_FALSE(m_tab->is_changed());
        m_grid->insert_rows(0, {"/2"});
        m_frame->Raise();
        m_grid->SetFocus();
        m_grid->edit(2); // the input row, still being typed in
        ASSERT_TRUE(test::wait_for([this] { return m_frame->IsActive(); }));
        test::type("/3//x/");
        EXPECT_TRUE(m_tab->is_changed());
        m_tab->save_settings();
        EXPECT_FALSE(m_tab->is_changed());
        EXPECT_EQ(texts_t({"/2", "/1", "/3/x"}), rows());
        const bool pair = category <= 2;
        for (int other = 1; other <= 4; ++other) {
            const bool written = other == category || (pair && other <= 2);
            EXPECT_EQ(written ? rows() : texts_t({"/old"}), dirs_of(m_container, other)) << other;
        }
    }
    m_container = nullptr;
    open({}, category_sources, false);
    m_grid->insert_rows(0, {"/kept"});
    m_tab->save_settings();
    EXPECT_EQ(texts_t({"/kept"}), rows()) << "without a container";
}

TEST_F(SearchDirsTab, TheMoreButtonFillsItsRowAndMakesOneOfTheInputRow)
{
    open({"/usr"});
    std::string title;
    int code = wxID_CANCEL;
    const test::chooser_answer_t answer([&](wxDialog* shown) {
        auto* dialog = wxDynamicCast(shown, wxDirDialog);
        EXPECT_TRUE(dialog);
        title = wx_helpers1::from_wx(dialog->GetMessage());
        return code;
    });
    m_tab->on_more_button_clicked({0, m_grid->get_key(0), "/usr"});
    EXPECT_EQ(texts_t({"/usr"}), rows());
    EXPECT_EQ(translate_message("panel.search_dirs.choose"), title);
    code = wxID_NONE; // shown for real
    std::string start;
    test::answer_for_real(m_dir.path(), start);
    m_tab->on_more_button_clicked({1, vdxpropgrid2::no_key, "/usr"});
    EXPECT_EQ(texts_t({"/usr", m_dir.path()}), rows());
    test::answer_for_real(m_dir.path(), start);
    m_tab->on_more_button_clicked({7, 12345, "/usr"}); // a row that is no longer there
    EXPECT_EQ(2U, rows().size());
}

TEST_F(SearchDirsTab, KeyboardAloneAddsPastesSortsAndLeaves)
{
    open({"/usr"});
    auto* after = new wxButton(m_frame, wxID_ANY, "after");
    m_frame->Raise();
    m_tab->SetFocus();
    m_grid->SetFocus();
    ASSERT_TRUE(test::wait_for([this] { return m_frame->IsActive(); }));
    m_grid->set_current_row(0);
    test::press(WXK_DOWN);
    test::type("/bin");
    test::press(WXK_RETURN);
    ASSERT_TRUE(wx_helpers1::copy_to_clipboard("/etc:~/x"));
    test::press('V', wxMOD_CONTROL);
    ASSERT_TRUE(test::wait_for([this] { return m_grid->row_count() == 5; }));
    EXPECT_EQ("/etc", rows()[2]);
    EXPECT_EQ("~/x", rows()[3]) << "as it was written";
    test::press(WXK_UP, wxMOD_ALT);
    EXPECT_EQ("/etc", rows()[3]);
    test::press(WXK_DELETE);
    EXPECT_EQ(3U, rows().size());
    test::press('Z', wxMOD_CONTROL);
    EXPECT_EQ(4U, rows().size());
    test::press(WXK_F2); // emptied: gone
    test::press(WXK_DELETE);
    test::press(WXK_RETURN);
    EXPECT_EQ(3U, rows().size());
    for (int i = 0; i < 6 && !after->HasFocus(); ++i)
        test::press(WXK_TAB);
    EXPECT_TRUE(after->HasFocus());
}

TEST_F(SearchDirsTab, AButtonThatCannotBePressedAnyMoreGivesTheFocusOn)
{
    open({"/1", "/2", "/3"});
    m_frame->Raise();
    ASSERT_TRUE(test::wait_for([this] { return m_frame->IsActive(); }));
    m_grid->set_current_row(2);
    button("m_btn_up")->SetFocus();
    ASSERT_TRUE(test::wait_for([this] { return button("m_btn_up")->HasFocus(); }));
    for (const int row : {1, 0}) {
        test::press(WXK_SPACE);
        ASSERT_TRUE(test::wait_for([&] { return m_grid->get_current_row() == row; }));
    }
    EXPECT_EQ(texts_t({"/3", "/1", "/2"}), rows());
    EXPECT_TRUE(test::wait_for([this] { return button("m_btn_down")->HasFocus(); }));
    button("m_btn_remove")->SetFocus();
    for (int left = 3; left > 0; --left) {
        ASSERT_TRUE(test::wait_for([this] { return button("m_btn_remove")->HasFocus(); }));
        test::press(WXK_SPACE);
        ASSERT_TRUE(test::wait_for([&] { return m_grid->row_count() == left; }));
    }
    EXPECT_TRUE(test::wait_for([this] {
        const wxWindow* focus = wxWindow::FindFocus();
        return focus && (focus == m_grid || focus->GetParent() == m_grid);
    })) << "none of the buttons can have it";
}

TEST_F(SearchDirsTab, SourcesHaveTheirOwnHeadingAndALayoutThatFailsIsSurvived)
{
    open({}, category_others);
    EXPECT_TRUE(m_tab->FindWindow(m_tab->get_caption_panel()->GetId()));
    const wxSize least = m_tab->GetMinSize();
    EXPECT_GT(least.x, 200);
    m_tab->push_message("x", 0);
    const test::temp_dir_t nothing;
    const test::product_guard_t no_layout(nothing.path(), LOCALE_DIR);
    search_dirs_tab_t broken(nullptr, category_sources);
    auto* page = new search_dirs_tab_t(make_search_dir_container(nullptr), category_sources);
    page->create(m_frame);
    EXPECT_EQ(nullptr, page->get_grid());
    page->save_settings();
    page->load_settings();
    page->set_dir_error_mode(0);
    page->remove_row(0);
    page->remove_messages();
    EXPECT_FALSE(page->is_changed());
    EXPECT_FALSE(page->validate_dir(path_info_t("/none"), 0));
}

// A page that puts ten thousand messages into its heading at once would not answer for seconds.
TEST_F(SearchDirsTab, ManyMissingDirectoriesLeaveTheWindowAlive)
{
    constexpr int count = 10000;
    texts_t dirs;
    for (int i = 0; i < count; ++i)
        dirs.push_back("/none/" + std::to_string(i % (count / 2)));
    open({});
    m_container = make_search_dir_container(nullptr);
    const auto at = m_container->get_dirs(category_others);
    for (const std::string& dir : dirs)
        at->add(dir, false);
    int ticks = 0;
    wxTimer timer;
    timer.Bind(wxEVT_TIMER, [&](wxTimerEvent&) { ++ticks; });
    m_tab->set_data(m_container, category_others);
    timer.Start(5);
    const auto* caption = m_tab->get_caption_panel();
    ASSERT_TRUE(test::wait_for([&] { return caption->get_message_count() == count; }, 60000));
    timer.Stop();
    EXPECT_GE(ticks, 10) << "timers, and with them keys and painting, came in between";
    EXPECT_TRUE(test::wait_for([&] { return m_grid->get_mark(count - 1).word == "Missing"; }));
    m_tab->remove_row(count - 1);
    m_grid->move_row(count - 2, 0);
    EXPECT_EQ(count - 1, caption->get_message_count());
    EXPECT_EQ("Missing", m_grid->get_mark(0).word);
    m_tab->set_data(nullptr, category_sources);
    EXPECT_EQ(0, caption->get_message_count());
    EXPECT_EQ(1, m_grid->row_count());
}

// The examiner that does not come back stands for a network folder.
TEST(DirCheckerThreads, AFolderThatDoesNotAnswerKeepsNobodyWaiting)
{
    auto mutex = std::make_shared<std::mutex>();
    auto answered = std::make_shared<bool>(false);
    auto* frame = new wxFrame(test::main_window(), wxID_ANY, "host");
    auto* grid = new vdxpropgrid2::property_grid_t(frame, {});
    grid->set_rows({{"/net/hangs"}, {"/none"}, {"/"}});
    {
        dir_checker_t checker(grid, [=](const std::string& path) {
            while (path == "/net/hangs") {
                {
                    const std::lock_guard<std::mutex> lock(*mutex);
                    if (*answered)
                        break;
                }
                wxMilliSleep(5);
            }
            return examine_dir(path);
        });
        std::vector<int> verdicts;
        checker.get_verdict_signal().connect([&](int row, dir_state_t) { verdicts.push_back(row); });
        EXPECT_TRUE(test::wait_for([&] { return verdicts.size() == 2; }));
        EXPECT_TRUE(test::wait_for([&] { return grid->get_mark(1).word == "Missing"; }));
        EXPECT_EQ("", grid->get_mark(0).word) << "not at once";
        EXPECT_TRUE(test::wait_for([&] { return grid->get_mark(0).word == "Checking…"; }));
        grid->set_text(0, "/none/2"); // what the old text leads to no longer matters
        EXPECT_TRUE(test::wait_for([&] { return grid->get_mark(0).word == "Missing"; }));
        checker.finish(1);
        EXPECT_TRUE(checker.is_waiting());
        grid->set_text(0, "/net/hangs");
        test::settle();
    }
    {
        const std::lock_guard<std::mutex> lock(*mutex);
        *answered = true; // both come back to a checker that is gone
    }
    test::wait_for([] { return false; }, 50);
    frame->Destroy();
}

} // namespace
