#include "tools.h"

#include <commondlg3/path_validation.h>
#include <commondlg3/resources.h>
#include <commondlg3/result_saving_pp.h>
#include <gen_helpers2/stdpaths.h>
#include <rdmgr2/result_directory_manager.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/radiobut.h>

#include <filesystem>
#include <string>
#include <utility>

namespace {

using commondlg3::result_saving_data_t;
using commondlg3::result_saving_pp_t;
using wx_helpers1::from_wx;
using wx_helpers1::to_wx;
using project = result_saving_data_t::project_storing_t;

class ResultPage : public testing::Test
{
protected:
    void open(const std::string& name_template, const std::string& folder, unsigned flags = 7,
              project storing = project::to_folder)
    {
        result_saving_data_t data(result_saving_data_t::temp_storing_t::to_folder, storing, true,
                                  name_template, folder);
        data.set_proj_default_folder(m_dir.path());
        m_frame = new wxFrame(test::main_window(), wxID_ANY, "host", wxDefaultPosition, wxSize(600, 500));
        m_page = new result_saving_pp_t(data, flags);
        m_page->create(m_frame);
        m_frame->Show();
        test::settle();
    }
    void TearDown() override
    {
        if (m_frame)
            m_frame->Destroy();
    }
    wxTextCtrl* name() { return commondlg3::from_xrc<wxTextCtrl>(m_page, "m_textCtrl14"); }
    wxTextCtrl* folder() { return commondlg3::from_xrc<wxTextCtrl>(m_page, "m_textCtrl16"); }
    std::string label(const char* label_name)
    {
        return from_wx(commondlg3::from_xrc<wxStaticText>(m_page, label_name)->GetLabelText());
    }
    void choose(const char* radio)
    {
        auto* button = commondlg3::from_xrc<wxRadioButton>(m_page, radio);
        button->SetValue(true);
        test::send(wxEVT_RADIOBUTTON, button);
    }

    const test::temp_dir_t m_dir;
    wxFrame* m_frame = nullptr;
    result_saving_pp_t* m_page = nullptr;
};

TEST_F(ResultPage, OkMakesBadInputUsableAndWarnsOnce)
{
    const std::string temp = gen_helpers2::stdpaths::get_temp_dir().as_string();
    const std::string good = m_dir.path() + "/r";
    const std::string bad_name = "The name template was changed";
    const std::string bad_folder = "The folder for results was changed";
    const struct
    {
        std::string name, folder;
        unsigned flags;
        std::string stored_name, stored_folder, warning;
    } cases[] = {{"n@@", good + "  ", 7, "n@@", good, ""},
                 {"", good, 7, "result_@@@", good, bad_name},
                 {"a*@b@", good, 7, "a@b", good, bad_name},
                 {"n@@", "relative", 7, "n@@", temp, bad_folder},
                 {"none", "relative", 7, "result_@@@", temp, bad_name},
                 {"n@@", "relative/* ", 5, "n@@", "relative/*", ""},
                 {"n@@", "~/r", 7, "n@@", temp, bad_folder},
                 {"n@@", good + "/$HOME", 7, "n@@", good + "/$HOME", ""},
                 {"n@@", good + "/\xFF", 7, "n@@", good + "/\xFF", ""}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name + " in " + c.folder);
        open("x@", "/x", c.flags);
        EXPECT_FALSE(m_page->is_changed());
        name()->ChangeValue(to_wx(c.name));
        folder()->ChangeValue(to_wx(c.folder));
        EXPECT_TRUE(m_page->is_changed());
        test::messages_t messages;
        m_page->on_ok();
        EXPECT_EQ(c.stored_name, m_page->get_data().get_name_template());
        EXPECT_EQ(c.stored_folder, m_page->get_data().get_folder());
        ASSERT_EQ(c.warning.empty() ? 0U : 1U, messages.shown.size());
        if (!c.warning.empty()) {
            EXPECT_EQ(c.warning, messages.shown[0].first);
            const std::string& details = messages.shown[0].second;
            EXPECT_NE(std::string::npos, details.find("\n\nTo choose something else"));
            for (const auto& [entered, used] :
                 {std::pair(c.name, c.stored_name), std::pair(c.folder, c.stored_folder)}) {
                const bool replaced = entered != used && used != good;
                const std::string told =
                    (entered.empty() ? "nothing. “" : "“" + entered + "”. “") + used + "” is used";
                EXPECT_EQ(replaced, details.find("You entered " + told) != std::string::npos) << details;
            }
        }
        m_frame->Destroy();
        m_frame = nullptr;
    }
}

TEST_F(ResultPage, OpeningItIsNoChangeWhateverTheRecordHolds)
{
    for (const char* folder_text : {"/a*b<c", "  /x  ", "\xFF*", "~", ""}) {
        open("a*@b@", folder_text);
        EXPECT_FALSE(m_page->is_changed()) << folder_text;
        EXPECT_EQ(folder_text, from_wx(folder()->GetValue())) << "it is marked, but not cleaned";
        m_page->on_update_ui_settings();
        EXPECT_FALSE(m_page->is_changed()) << folder_text;
        m_frame->Destroy();
        m_frame = nullptr;
    }
    open("n@", "/a*b");
    EXPECT_EQ(commondlg3::get_path_error_colour(), folder()->GetForegroundColour());
    folder()->AppendText("c");
    EXPECT_EQ("/abc", folder()->GetValue());
}

TEST_F(ResultPage, ProjectsDirectoryTakesTheFolderOutOfTheGame)
{
    open("n@", "relative");
    EXPECT_NE("", from_wx(folder()->GetToolTipText()));
    choose("m_radioBtn14");
    EXPECT_FALSE(folder()->IsEnabled());
    EXPECT_EQ("", from_wx(folder()->GetToolTipText())) << "what is not used is not wrong";
    std::filesystem::create_directory(m_dir.path() + "/n4");
    choose("m_radioBtn14");
    EXPECT_NE(std::string::npos, label("m_example").find("n5"));
    test::messages_t messages;
    m_page->on_ok();
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ("relative", m_page->get_data().get_folder());
    EXPECT_EQ(project::to_project_directory, m_page->get_data().get_proj_storing());
    choose("m_radioBtn13");
    EXPECT_TRUE(folder()->IsEnabled());
    EXPECT_TRUE(test::wait_for([&] { return !folder()->GetToolTipText().empty(); }));
}

TEST_F(ResultPage, TypingInTheTemplateOnlyColoursAndExplains)
{
    open("n@", m_dir.path());
    const wxColour error = wx_helpers1::ui_settings_t::get()->get_colour(wx_helpers1::ui_colour::error);
    const std::pair<std::string, std::string> cases[] = {
        // and what the explanation begins with
        {"a*@", "Names and paths cannot contain any of these characters:"},
        {"a@b@", "Only one group of @ can stand for the number"},
        {"@@@@@@@@@", "Only one group of @ can stand for the number"},
        {"", "The template is empty"},
        {"plain", "The template has no place for the number"},
        {"COM@", "The template gives a name that some systems keep for devices"},
        {std::string(255, 'x') + "@", "The template gives a name that is too long for a folder"}};
    for (const auto& [text, explanation] : cases) {
        name()->SetValue(text);
        EXPECT_EQ(text, name()->GetValue()) << "stays until OK";
        EXPECT_EQ(0U, from_wx(name()->GetToolTipText()).find(explanation)) << name()->GetToolTipText();
        EXPECT_EQ(error, name()->GetForegroundColour());
        EXPECT_EQ(0U, label("m_template_note").find("Error: " + explanation.substr(0, 30)));
    }
    for (const std::string good : {"@", "COM1_@", "a b@@@@@@@@c", ".@"}) {
        name()->SetValue(good);
        EXPECT_EQ("", from_wx(name()->GetToolTipText()) + label("m_template_note"));
        EXPECT_NE(error, name()->GetForegroundColour());
    }
}

// The example must not promise another name than the product then uses.
TEST_F(ResultPage, ExampleIsTheNameThatTheNextResultGets)
{
    open("n@", "/");
    folder()->SetValue(to_wx(m_dir.path() + "/deep/er"));
    const char* const templates[] = {"run_@@", "run_@@", "x*y@@@z@"};
    for (const char* typed : templates) {
        name()->SetValue(typed);
        std::string used = typed;
        result_saving_pp_t::filter_result_template(used);
        const std::string example = label("m_example");
        gen_helpers2::path_t made;
        EXPECT_EQ(0, rdmgr2::ResultDirectoryManager::createResultDirectory(
                         used, from_wx(folder()->GetValue()), made));
        EXPECT_NE(std::string::npos,
                  example.find(made.get_leaf() + ", opened by " + made.get_leaf() + ".vbx"))
            << example;
    }
}

TEST_F(ResultPage, WhatWouldGoWrongLaterIsToldWhileTheFolderIsTyped)
{
    std::filesystem::permissions(m_dir.path(), std::filesystem::perms::all);
    test::make_file(m_dir.path() + "/file");
    std::filesystem::create_symlink("nowhere", m_dir.path() + "/link");
    std::filesystem::create_symlink("loop", m_dir.path() + "/loop");
    std::filesystem::create_directory(m_dir.path() + "/closed");
    std::filesystem::permissions(m_dir.path() + "/closed", std::filesystem::perms::none);
    open("n@", m_dir.path());
    const std::string file = "This path leads to or through a file";
    const std::string link = "This path contains a link that leads nowhere";
    const std::string closed = "You have no permission to write into this folder";
    const std::pair<std::string, std::string> cases[] = {
        {"/file", file}, {"/file/x", file}, {"/link/x", link}, {"/loop/x", link}, {"/closed/x", closed}};
    for (const auto& [below, said] : cases) {
        const test::ordinary_user_t user;
        folder()->SetValue(to_wx(m_dir.path() + below));
        EXPECT_EQ(0U, label("m_folder_note").find("Error: " + said))
            << below << ": " << label("m_folder_note");
        EXPECT_EQ(label("m_folder_note"), "Error: " + from_wx(folder()->GetToolTipText()));
        EXPECT_EQ(commondlg3::get_path_error_colour(), folder()->GetForegroundColour());
    }
    for (const char* usable : {"", "/x/y/z"}) {
        folder()->SetValue(to_wx(m_dir.path() + usable));
        EXPECT_EQ("", label("m_folder_note"));
    }
}

} // namespace
