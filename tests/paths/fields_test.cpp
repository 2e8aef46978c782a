#include "probe.h"
#include "tools.h"

#include <commondlg3/path_validation.h>
#include <wx_helpers1/text.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using commondlg3::validate_path;
using wx_helpers1::from_wx;
using wx_helpers1::to_wx;

class PathFields : public testing::Test
{
protected:
    void SetUp() override
    {
        m_frame = new wxFrame(test::main_window(), wxID_ANY, "host");
        m_page = new test::probe_page_t("pref.example");
        m_page->create(m_frame);
        m_ctrl = commondlg3::from_xrc<wxTextCtrl>(m_page, "m_name");
        m_ctrl->UnsetToolTip();
        m_frame->Show();
        test::settle();
    }
    void TearDown() override
    {
        m_frame->Destroy();
        std::filesystem::current_path(m_working_dir);
    }

    bool is_red() const
    {
        const wxColour colour = m_ctrl->GetForegroundColour();
        return colour.Red() > 2 * std::max(colour.Green(), colour.Blue());
    }
    std::string tooltip() const { return from_wx(m_ctrl->GetToolTipText()); }
    std::string description() const
    {
        const char* text =
            atk_object_get_description(gtk_widget_get_accessible(GTK_WIDGET(m_ctrl->GetHandle())));
        return text ? text : "";
    }
    bool check(const std::string& text, bool must_exist = false, bool environment = false)
    {
        m_ctrl->ChangeValue(to_wx(text));
        return m_page->check_file_or_folder(m_ctrl, must_exist, true, environment);
    }

    const std::filesystem::path m_working_dir = std::filesystem::current_path();
    wxFrame* m_frame;
    test::probe_page_t* m_page;
    wxTextCtrl* m_ctrl;
};

// A control that is filled from its own text event easily moves the caret, or raises the event for ever.
TEST_F(PathFields, TypedForbiddenCharactersGoAndTheCaretStaysOnItsCharacter)
{
    int events = 0;
    m_ctrl->Bind(wxEVT_TEXT, [&](wxCommandEvent&) {
        ++events;
        validate_path(m_ctrl, false, "*|");
    });
    m_frame->Raise();
    m_ctrl->SetFocus();
    ASSERT_TRUE(test::wait_for([this] { return m_frame->IsActive() && m_ctrl->HasFocus(); }));
    m_ctrl->ChangeValue(to_wx("\xC3\xA4\xE6\x97\xA5z"));
    m_ctrl->SetInsertionPoint(2);
    test::settle();
    test::type("*");
    EXPECT_EQ("\xC3\xA4\xE6\x97\xA5z", from_wx(m_ctrl->GetValue()));
    EXPECT_EQ(2, m_ctrl->GetInsertionPoint());
    EXPECT_EQ(1, events);
    EXPECT_TRUE(is_red());
    EXPECT_NE(std::string::npos, tooltip().find("*  |"));
    EXPECT_EQ(tooltip(), description());
    test::type("q");
    EXPECT_EQ("\xC3\xA4\xE6\x97\xA5qz", from_wx(m_ctrl->GetValue()));
    EXPECT_FALSE(is_red());
    EXPECT_EQ("", tooltip() + description());

    m_ctrl->ChangeValue("a*bc|de");
    m_ctrl->SetSelection(3, 6);
    validate_path(m_ctrl, false, "*|");
    EXPECT_EQ("abcde", m_ctrl->GetValue());
    EXPECT_EQ("cd", m_ctrl->GetStringSelection()) << "of what was selected, what is left";
}

TEST_F(PathFields, CleaningAndSyntaxAreToldTogether)
{
    const std::string empty = "Nothing usable has been entered here. Enter a name or a full path.";
    const std::string cleaned = "Names and paths cannot contain any of these characters:";
    const std::string bytes = "/a\xFF\xC3\x28/\xF0\x9F\x98\x80";
    const struct
    {
        std::string text, kept, explanation;
        bool usable;
    } cases[] = {{"", "", empty, true}, // accepted, but marked
                 {"*", "", empty + "\n\n" + cleaned, false},
                 {"*x", "x", cleaned, true},
                 {bytes + "*", bytes, cleaned, true}};
    for (const auto& c : cases) {
        m_ctrl->ChangeValue(to_wx(c.text));
        EXPECT_EQ(c.usable, validate_path(m_ctrl, true, "*")) << c.text;
        EXPECT_EQ(c.kept, from_wx(m_ctrl->GetValue()));
        EXPECT_EQ(0U, tooltip().find(c.explanation)) << tooltip();
        EXPECT_TRUE(is_red());
    }
    const test::temp_dir_t nothing_here;
    const test::product_guard_t no_catalog(nothing_here.path(), nothing_here.path());
    m_ctrl->ChangeValue("a*");
    EXPECT_TRUE(validate_path(m_ctrl, true, "*"));
    EXPECT_EQ("a*", m_ctrl->GetValue());
}

TEST_F(PathFields, EachVerdictColoursAndExplains)
{
    const test::temp_dir_t dir;
    test::make_file(dir.path() + "/file");
    EXPECT_TRUE(check(dir.path() + "/file", true));
    EXPECT_TRUE(check(dir.path() + "/x/y/" + std::string(255, 'z') + "/"));
    EXPECT_EQ("", tooltip());
    EXPECT_FALSE(is_red());
    const std::string incomplete = "The path is empty or incomplete";
    const struct
    {
        std::string text;
        bool must_exist;
        std::string explanation; // its beginning
        bool red;
    } refused[] = {
        {dir.path() + "/x", true, "This path does not exist", true},
        {dir.path() + "/con/x", false, "The folder that this path leads into does not exist", true},
        {"a/b", false, incomplete, true},
        {".", true, incomplete, true}, // even where it exists
        {"   ", false, incomplete, true},
        {"", false, incomplete, false},
        {"*", false, incomplete, false},
        {"/" + std::string(256, 'x'), false, incomplete, true}};
    for (const auto& c : refused) {
        EXPECT_FALSE(check(c.text, c.must_exist)) << c.text.substr(0, 60);
        EXPECT_EQ(0U, tooltip().find(c.explanation)) << tooltip();
        EXPECT_NE(std::string::npos, tooltip().find(" This is not a valid path. Enter the full path"));
        EXPECT_EQ(tooltip(), description());
        EXPECT_EQ(c.red, is_red()) << c.text.substr(0, 60);
    }
}

// A tool tip that is set again starts waiting again, and would never show to somebody who types.
TEST_F(PathFields, ToolTipIsSetOnlyWhenItsTextChanges)
{
    int set = 0;
    g_signal_connect_swapped(m_ctrl->GetHandle(), "notify::tooltip-text",
                             G_CALLBACK(+[](int* count) { ++*count; }), &set);
    check("a");
    const int once = set;
    EXPECT_GT(once, 0);
    check("ab");
    check("ab*");
    EXPECT_EQ(once, set);
}

TEST_F(PathFields, BareNamesAreFoundInPathThenInTheSearchPaths)
{
    const test::temp_dir_t one;
    const test::temp_dir_t two;
    test::make_file(one.path() + "/tool");
    test::make_file(two.path() + "/tool");
    test::make_file(two.path() + "/other");
    std::filesystem::current_path(two.path());
    m_page->set_search_paths({"relative", two.path()});
    std::vector<bool> told;
    m_page->get_path_checked_signal().connect([&](bool usable) { told.push_back(usable); });
    {
        const test::variable_guard_t path("PATH", ("bin:.::" + one.path() + ":").c_str());
        EXPECT_EQ(one.path() + "/tool", m_page->find_in_environment("tool"));
        std::filesystem::create_directory("bin");
        test::make_file("bin/tool_of_bin");
        test::make_file("tool_of_here");
        EXPECT_EQ("",
                  m_page->find_in_environment("tool_of_bin") + m_page->find_in_environment("tool_of_here"))
            << "neither relative nor empty entries count";
        EXPECT_TRUE(check("tool", true, true));
        EXPECT_TRUE(check("other", true, true));
        m_page->tell_path_checks(true);
        EXPECT_FALSE(check("tool", true, false));
    }
    const test::variable_guard_t none("PATH", nullptr);
    EXPECT_EQ("", m_page->find_in_environment("tool"));
    EXPECT_EQ(two.path() + "/tool", m_page->find_in_search_paths("tool"));
    EXPECT_TRUE(check("other", true, true));
    EXPECT_EQ(std::vector<bool>({false, true}), told);
}

} // namespace
