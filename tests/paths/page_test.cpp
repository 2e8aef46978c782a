#include "tools.h"

#include <commondlg3/path_validation.h>
#include <commondlg3/resources.h>
#include <commondlg3/result_saving_pp.h>
#include <commondlg3/text_utils.h>
#include <gen_helpers2/stdpaths.h>
#include <rdmgr2/result_directory_manager.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/checkbox.h>
#include <wx/radiobut.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace {

using commondlg3::result_saving_data_t;
using commondlg3::result_saving_pp_t;
using commondlg3::translate_message;
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
        wxCommandEvent event(wxEVT_RADIOBUTTON, button->GetId());
        event.SetEventObject(button);
        button->ProcessWindowEvent(event);
    }

    const test::temp_dir_t m_dir;
    wxFrame* m_frame = nullptr;
    result_saving_pp_t* m_page = nullptr;
};

TEST_F(ResultPage, OkMakesBadInputUsableAndWarnsOnce)
{
    const std::string temp = gen_helpers2::stdpaths::get_temp_dir().as_string();
    const std::string good = m_dir.path() + "/r";
    const auto title = [](const char* key) { return translate_message(key, {}); };
    const std::string bad_name = title("pref.result_saving.wrong_result_templ");
    const std::string bad_folder = title("pref.result_saving.wrong_result_dir");
    const struct
    {
        std::string name, folder;
        unsigned flags;
        std::string stored_name, stored_folder, warning;
    } cases[] = {{"n@@", good + "  ", 7, "n@@", good, ""},
                 {"", good, 7, "result_@@@", good, bad_name},
                 {"a*@b@", good, 7, "a@b", good, bad_name},
                 {"n@@", "relative", 7, "n@@", temp, bad_folder},
                 {"n@@", "", 7, "n@@", temp, bad_folder},
                 {"none", "relative", 7, "result_@@@", temp, bad_name},
                 {"n@@", "relative/* ", 5, "n@@", "relative/*", ""},
                 {"n@@", "~/r", 7, "n@@", temp, bad_folder},
                 {"n@@", good + "/$HOME", 7, "n@@", good + "/$HOME", ""},
                 {"n@@", "$HOME", 5, "n@@", "$HOME", ""},
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
            EXPECT_NE(std::string::npos, messages.shown[0].second.find("\n\nTo choose something else"));
        }
        EXPECT_EQ(result_saving_data_t::temp_storing_t::to_folder, m_page->get_data().get_temp_storing());
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
    commondlg3::from_xrc<wxCheckBox>(m_page, "m_checkBox7")->SetValue(false);
    test::messages_t messages;
    m_page->on_ok();
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ("relative", m_page->get_data().get_folder());
    EXPECT_EQ(project::to_project_directory, m_page->get_data().get_proj_storing());
    EXPECT_FALSE(m_page->get_data().get_vs_accessibility());
    choose("m_radioBtn13");
    EXPECT_TRUE(folder()->IsEnabled());
    EXPECT_NE("", from_wx(folder()->GetToolTipText()));
}

TEST_F(ResultPage, TypingInTheTemplateOnlyColoursAndExplains)
{
    open("n@", m_dir.path());
    const wxColour error = wx_helpers1::ui_settings_t::get()->get_colour(wx_helpers1::ui_colour::error);
    const struct
    {
        const char* text;
        std::vector<std::string> findings;
    } cases[] = {{"a*@", {commondlg3::get_restricted_chars_text("\\/:*?\"<>|")}},
                 {"a@b@", {translate_message("pref.result_saving.restricted_ats_message")}},
                 {"plain", {translate_message("result_directory.no_number")}},
                 {"COM@", {translate_message("result_directory.reserved_name")}},
                 {"n?@@", {commondlg3::get_restricted_chars_text("\\/:*?\"<>|")}}};
    for (const auto& c : cases) {
        name()->SetValue(c.text);
        EXPECT_EQ(c.text, name()->GetValue()) << "stays until OK";
        EXPECT_EQ(c.findings[0], from_wx(name()->GetToolTipText()));
        EXPECT_EQ(error, name()->GetForegroundColour());
        EXPECT_NE(std::string::npos, label("m_example").find(c.findings[0].substr(0, 30)));
    }
    name()->SetValue("fine_@@");
    EXPECT_EQ("", from_wx(name()->GetToolTipText()));
    EXPECT_NE(error, name()->GetForegroundColour());
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
    std::filesystem::create_directory(m_dir.path() + "/closed");
    std::filesystem::permissions(m_dir.path() + "/closed", std::filesystem::perms::none);
    open("n@", m_dir.path());
    const std::pair<std::string, const char*> cases[] = {
        {"/file/x", "pref.result_saving.folder_is_file"},
        {"/link/x", "pref.result_saving.folder_is_broken_link"},
        {"/closed/x", "pref.result_saving.folder_not_writable"}};
    for (const auto& [below, key] : cases) {
        const test::ordinary_user_t user;
        folder()->SetValue(to_wx(m_dir.path() + below));
        const std::string said = translate_message(key);
        EXPECT_EQ(said, from_wx(folder()->GetToolTipText()));
        EXPECT_EQ(said, label("m_folder_note"));
        EXPECT_EQ(commondlg3::get_path_error_colour(), folder()->GetForegroundColour());
    }
    folder()->SetValue(to_wx(m_dir.path()));
    EXPECT_EQ("", label("m_folder_note"));
}

TEST_F(ResultPage, FlagsDecideWhatIsShownAndLimitsAreNamed)
{
    open("n@", "relative", 0);
    for (const char* hidden : {"m_radioBtn13", "m_radioBtn14", "m_text_proj_default_folder", "m_checkBox7"})
        EXPECT_FALSE(m_page->FindWindow(XRCID(hidden))->IsShown()) << hidden;
    EXPECT_EQ("", from_wx(folder()->GetToolTipText())) << "not checked";
    EXPECT_EQ("name template", m_page->gen_max_len_options(name()).field_name);
    EXPECT_EQ(10000, m_page->gen_max_len_options(folder()).effective_max_length());
}

} // namespace
