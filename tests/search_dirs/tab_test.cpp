#include "dirs.h"
#include "tools.h"

#include <commondlg3/caption_panel.h>
#include <commondlg3/dir_checker.h>
#include <commondlg3/resources.h>
#include <commondlg3/search_dirs_tab.h>
#include <wx_helpers1/clipboard.h>
#include <wx_helpers1/text.h>

#include <wx/bmpbuttn.h>
#include <wx/button.h>
#include <wx/dirdlg.h>

#include <atomic>
#include <memory>
#include <string>
#include <vector>

namespace {

using namespace commondlg3;
using namespace FF_2_13;
using texts_t = std::vector<std::string>;

class SearchDirsTab : public testing::Test
{
protected:
    void open(const texts_t& dirs, search_category_t category = category_sources, unsigned extras = 0)
    {
        close();
        m_container = make_search_dir_container(nullptr);
        const auto at = m_container->get_dirs(category);
        for (const std::string& dir : dirs)
            at->add(dir, false);
        m_frame = new wxFrame(test::main_window(), wxID_ANY, "host", wxPoint(100, 100), wxSize(640, 480));
        m_tab = new search_dirs_tab_t(m_container, category);
        m_tab->set_extras(extras);
        m_tab->create(m_frame);
        m_frame->Show();
        m_grid = m_tab->get_grid();
        test::settle();
    }
    void close()
    {
        if (m_frame)
            m_frame->Destroy();
        m_frame = nullptr;
    }
    void TearDown() override { close(); }

    // Directories are looked at in the background, and told of when that has been done.
    void expect_messages(const texts_t& expected)
    {
        test::wait_for([&] { return messages() == expected; });
        EXPECT_EQ(expected, messages());
    }
    void wait_for_mark(int row, const char* word)
    {
        EXPECT_TRUE(test::wait_for([&] { return m_grid->get_mark(row).word == word; })) << word;
    }
    texts_t rows() const
    {
        texts_t texts;
        for (const auto& row : m_grid->get_rows())
            texts.push_back(row.text);
        return texts;
    }
    // What they say first.
    texts_t messages() const
    {
        texts_t texts;
        const auto* caption = m_tab->get_caption_panel();
        for (int i = 0; i < caption->get_message_count(); ++i) {
            const std::string text = caption->get_message(caption->get_message_id(i)).text;
            texts.push_back(text.substr(0, text.find(". ")));
        }
        return texts;
    }
    static std::string missing(const std::string& dir) { return "“" + dir + "” does not exist"; }
    static std::string no_dir(const std::string& dir) { return "“" + dir + "” is a file, not a directory"; }
    wxBitmapButton* button(const char* name) { return from_xrc<wxBitmapButton>(m_tab, name); }

    const test::temp_dir_t m_dir;
    search_dirs_tab_t::container_t m_container;
    wxFrame* m_frame = nullptr;
    search_dirs_tab_t* m_tab = nullptr;
    vdxpropgrid2::property_grid_t* m_grid = nullptr;
};

// A directory of a disk that is away today stays in the list, with what people wrote about it.
TEST_F(SearchDirsTab, RowsAreSkippedAndKeepWhatTheyDoNotShow)
{
    for (const unsigned extras : {0U, unsigned(search_dirs_tab_t::can_skip)}) {
        open({}, category_sources, extras);
        m_container->get_dirs(category_sources)->add_entry({"/none/1", true, false, "why"});
        m_tab->load_settings();
        const bool box = extras != 0;
        EXPECT_TRUE(m_grid->get_rows()[0].checked) << "recursive, or skipped";
        expect_messages(box ? texts_t() : texts_t{missing("/none/1")});
        if (box)
            m_grid->set_checked(0, false);
        expect_messages({missing("/none/1")});
        if (box)
            m_grid->set_checked(0, true);
        m_grid->set_text(0, "/none/2");
        m_grid->insert_rows(1, {m_dir.path()});
        m_grid->move_row(0, 1);
        m_tab->save_settings();
        EXPECT_FALSE(m_tab->is_changed());
        std::string found;
        for (const auto at = m_container->get_dirs(category_sources); !at->at_end(); at->next())
            found += std::string(at->is_recursive() ? "+" : "-") + (at->is_enabled() ? "" : "off ") +
                     at->get_path() + at->get_comment() + ";";
        EXPECT_EQ("-" + m_dir.path() + ";+off /none/2why;", found);
    }
}

TEST_F(SearchDirsTab, AnotherListIsReplacedOnlyWhenTheUserSaysSo)
{
    for (const auto& [key, kept] : {std::pair{'Y', false}, {'N', true}}) {
        open({"/a", "/gone"}, category_binaries, search_dirs_tab_t::tell_sharing);
        for (const char* dir : {"/gone", "/a", "/only symbols"})
            m_container->get_dirs(category_symbols)->add(dir, false);
        m_tab->remove_row(1); // here and there: nothing to ask about
        test::run_modal([&] { return m_tab->save_settings(), 0; },
                        [answer = key](wxTopLevelWindow*) { test::press(answer, wxMOD_ALT); });
        const test::dirs_t expected =
            kept ? test::dirs_t{{"/a", false}, {"/only symbols", false}} : test::dirs_t{{"/a", false}};
        EXPECT_EQ(expected, test::dirs_of(m_container, category_symbols));
        EXPECT_EQ(expected, test::dirs_of(m_container, category_binaries));
        EXPECT_TRUE(m_tab->save_settings()) << "they are one now, and nothing is asked";
    }
}

TEST_F(SearchDirsTab, EachBadRowHasOneMessageThatFollowsWhatBecomesOfIt)
{
    const std::string file = m_dir.path() + "/file";
    test::make_file(file);
    open({"/none/1", m_dir.path(), file});
    expect_messages({missing("/none/1"), no_dir(file)});
    EXPECT_EQ(caption_panel_t::severity_t::warning, m_tab->get_caption_panel()->get_message(0).severity);
    wait_for_mark(0, "Missing");
    wait_for_mark(2, "Not a directory");
    const auto key = m_grid->get_key(0);
    const int id = m_tab->get_message_id(key);
    for (const int row : {0, 2}) { // whose messages they are; the second one is shown
        m_tab->get_caption_panel()->show_next_message();
        EXPECT_EQ(row, m_grid->get_current_row());
    }

    m_grid->move_row(0, 2);
    m_grid->set_text(2, "/none/2");
    expect_messages({missing("/none/2"), no_dir(file)});
    EXPECT_EQ(id, m_tab->get_message_id(key)) << "edited in place, wherever the row is";
    m_grid->set_text(2, "/");
    expect_messages({no_dir(file)});
    wait_for_mark(2, "");
    m_tab->remove_row(1);
    EXPECT_TRUE(messages().empty());
    m_grid->undo();
    expect_messages({no_dir(file)}); // with the row
    m_grid->insert_rows(0, {"/none/3"});
    expect_messages({no_dir(file), missing("/none/3")});
    m_grid->undo();
    expect_messages({no_dir(file)});
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
    EXPECT_TRUE(m_tab->validate_dir(path_info_t("/"), 0));
    EXPECT_EQ(texts_t({missing("")}), messages());
    m_tab->set_dir_error_mode(0);
    EXPECT_FALSE(m_tab->validate_dir(path_info_t("/none"), 0));
    m_tab->push_message("text", 0);
    EXPECT_TRUE(messages().empty());
    m_grid->set_text(0, "/none");
    wait_for_mark(0, "Missing"); // silent, not blind
    EXPECT_TRUE(messages().empty());
    m_tab->set_dir_error_mode(1);
    m_tab->push_message("beyond", 2); // the input row
    m_tab->push_message("beyond", -1);
    EXPECT_EQ(texts_t({missing("/none")}), messages());
    m_tab->remove_messages();
    EXPECT_TRUE(messages().empty());
    const test::temp_dir_t nothing;
    const test::product_guard_t no_catalog(nothing.path(), nothing.path());
    EXPECT_EQ("", m_tab->get_directory_error_msg(0, "/x"));
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
        const test::dirs_t edited = {{"/2", false}, {"/1", false}, {"/3/x", false}};
        const bool pair = category <= 2;
        for (int other = 1; other <= 4; ++other) {
            const bool written = other == category || (pair && other <= 2);
            EXPECT_EQ(written ? edited : test::dirs_t({{"/old", false}}), test::dirs_of(m_container, other));
        }
    }
}

TEST_F(SearchDirsTab, TheMoreButtonFillsItsRowAndMakesOneOfTheInputRow)
{
    open({"/etc", "/usr"});
    const auto key = m_grid->get_key(1);
    std::string title;
    int code = wxID_CANCEL;
    const test::chooser_answer_t answer([&](wxDialog* shown) {
        auto* dialog = wxDynamicCast(shown, wxDirDialog);
        EXPECT_TRUE(dialog);
        title = wx_helpers1::from_wx(dialog->GetMessage());
        return code;
    });
    m_tab->on_more_button_clicked({1, key, "/usr"});
    EXPECT_EQ(texts_t({"/etc", "/usr"}), rows());
    EXPECT_EQ("Choose a directory to search", title);
    code = wxID_NONE; // shown for real
    std::string start;
    const auto choose = [&](const std::string& dir, int row, vdxpropgrid2::row_key_t of, const char* text) {
        test::answer_for_real(dir, start);
        m_tab->on_more_button_clicked({row, of, text});
        EXPECT_EQ(text, start);
    };
    choose(m_dir.path(), 1, key, "/usr");
    EXPECT_EQ(texts_t({"/etc", m_dir.path()}), rows());
    choose("/usr", 2, vdxpropgrid2::no_key, "/bin");
    EXPECT_EQ(texts_t({"/etc", m_dir.path(), "/usr"}), rows());
    choose("/tmp", 0, 12345, "/etc"); // a row that is no longer there
    EXPECT_EQ(texts_t({"/etc", m_dir.path(), "/usr"}), rows());
}

TEST_F(SearchDirsTab, AListIsPastedARowIsEmptiedAndTheKeyboardLeaves)
{
    open({"/usr"});
    auto* after = new wxButton(m_frame, wxID_ANY, "after");
    m_frame->Raise();
    m_grid->SetFocus();
    ASSERT_TRUE(test::wait_for([this] { return m_frame->IsActive(); }));
    m_grid->set_current_row(1);
    ASSERT_TRUE(wx_helpers1::copy_to_clipboard("/etc:~/x"));
    test::press('V', wxMOD_CONTROL);
    ASSERT_TRUE(test::wait_for([this] { return m_grid->row_count() == 4; }));
    EXPECT_EQ(texts_t({"/usr", "/etc", "~/x"}), rows()) << "as it was written";
    m_grid->set_current_row(1);
    test::press(WXK_DELETE);
    EXPECT_EQ(texts_t({"/usr", "~/x"}), rows());
    test::press(WXK_F2); // emptied: gone
    test::press(WXK_DELETE);
    test::press(WXK_RETURN);
    EXPECT_EQ(1U, rows().size());
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
    EXPECT_FALSE(button("m_btn_up")->IsEnabled());
    EXPECT_TRUE(test::wait_for([this] { return button("m_btn_down")->HasFocus(); }));
    test::press(WXK_SPACE);
    ASSERT_TRUE(test::wait_for([this] { return m_grid->get_current_row() == 1; }));
    EXPECT_EQ(texts_t({"/1", "/3", "/2"}), rows());
    EXPECT_TRUE(button("m_btn_up")->IsEnabled());
    m_grid->set_current_row(3); // the input row
    for (const char* name : {"m_btn_up", "m_btn_down", "m_btn_remove"}) {
        test::click(m_tab, name);
        EXPECT_FALSE(button(name)->IsEnabled()) << name;
    }
    m_grid->set_current_row(2);
    EXPECT_FALSE(button("m_btn_down")->IsEnabled());
    button("m_btn_remove")->SetFocus();
    for (const int current : {1, 0, 0}) {
        ASSERT_TRUE(test::wait_for([this] { return button("m_btn_remove")->HasFocus(); }));
        const int count = m_grid->row_count();
        test::press(WXK_SPACE);
        ASSERT_TRUE(test::wait_for([&] { return m_grid->row_count() == count - 1; }));
        EXPECT_EQ(current, m_grid->get_current_row()) << "the row above, or at last the input row";
    }
    EXPECT_TRUE(test::wait_for([this] {
        const wxWindow* focus = wxWindow::FindFocus();
        return focus && (focus == m_grid || focus->GetParent() == m_grid);
    })) << "none of the buttons can have it";
}

// A page that puts ten thousand messages into its heading at once would not answer for seconds.
TEST_F(SearchDirsTab, ManyMissingDirectoriesLeaveTheWindowAlive)
{
    constexpr int count = 10000;
    open({});
    const auto at = m_container->get_dirs(category_others);
    for (int i = 0; i < count; ++i)
        at->add("/none/" + std::to_string(i % (count / 2)), false);
    int ticks = 0;
    wxTimer timer;
    timer.Bind(wxEVT_TIMER, [&](wxTimerEvent&) { ++ticks; });
    m_tab->set_data(m_container, category_others);
    timer.Start(5);
    const auto* caption = m_tab->get_caption_panel();
    ASSERT_TRUE(test::wait_for([&] { return caption->get_message_count() == count; }, 60000));
    timer.Stop();
    EXPECT_GE(ticks, 10) << "timers, and with them keys and painting, came in between";
    wait_for_mark(count - 1, "Missing");
    m_tab->remove_row(count - 1);
    EXPECT_EQ(count - 1, caption->get_message_count());
    m_tab->set_data(nullptr, category_sources);
    EXPECT_EQ(0, caption->get_message_count());
    EXPECT_EQ(1, m_grid->row_count());
}

// The examiner that does not come back stands for a network folder.
TEST(DirCheckerThreads, AFolderThatDoesNotAnswerKeepsNobodyWaiting)
{
    struct network_t
    {
        std::atomic<int> asked{0};
        std::atomic<int> returned{0};
        std::atomic<bool> answers{false};
    };
    const auto network = std::make_shared<network_t>();
    auto* frame = new wxFrame(test::main_window(), wxID_ANY, "host");
    auto* grid = new vdxpropgrid2::property_grid_t(frame, {});
    grid->set_rows({{"/net/hangs"}, {"/none"}, {"/"}});
    {
        dir_checker_t checker(grid, [network](const std::string& path) {
            if (path == "/net/hangs") {
                ++network->asked;
                while (!network->answers)
                    wxMilliSleep(5);
                ++network->returned;
            }
            return examine_dir(path);
        });
        std::vector<int> verdicts;
        checker.get_verdict_signal().connect([&](int row, dir_state_t) { verdicts.push_back(row); });
        const auto wait_for_mark = [&](int row, const char* word) {
            EXPECT_TRUE(test::wait_for([&] { return grid->get_mark(row).word == word; })) << word;
        };
        EXPECT_TRUE(test::wait_for([&] { return verdicts.size() == 2; }));
        wait_for_mark(1, "Missing");
        EXPECT_EQ("", grid->get_mark(0).word) << "not at once";
        wait_for_mark(0, "Checking…");
        grid->set_text(0, "/none/2"); // what the old text leads to no longer matters
        wait_for_mark(0, "Missing");
        grid->set_text(0, "/net/hangs");
        EXPECT_TRUE(test::wait_for([&] { return network->asked == 2; }));
        checker.finish(1);
        EXPECT_TRUE(checker.is_waiting());
    }
    network->answers = true; // both come back to a checker that is gone
    EXPECT_TRUE(test::wait_for([&] { return network->returned == 2; }));
    test::settle();
    frame->Destroy();
}

} // namespace
