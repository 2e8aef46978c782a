#include "tools.h"

#include <commondlg3/editor_pp.h>
#include <commondlg3/resources.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/filedlg.h>
#include <wx/listbox.h>
#include <wx/uiaction.h>

#include <gtk/gtk.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

namespace {

using commondlg3::editor_data_t;
using commondlg3::editor_pp_t;
using commondlg3::language_info;
using gen_helpers2::system_editor_t;
using wx_helpers1::from_wx;

constexpr unsigned all_flags = 1 | 8 | 16;

editor_data_t three_editors()
{
    editor_data_t data;
    editor_data_t::editor_t system({"s", "Twin", "/bin/sh", "/bin/sh -s"});
    system.is_system = true;
    data.add_editor_ex(language_info::cpp, system);
    data.add_editor(language_info::cpp, {"a", "Twin", "/bin/sh", "/bin/sh \t -a 'b c'"});
    data.add_editor(language_info::cpp, {"b", "Twin (system default)", "/bin/sh", "/bin/sh"});
    gen_helpers2::variant_bag_t bag;
    auto& language = bag.add_child("language");
    language.put("language_name", "C/C++");
    language.put("system_default_editor", "s");
    data.load(bag);
    data.add_editor(language_info::fortran, {"f", "F", "/bin/sh", "/bin/sh"});
    return data;
}

class EditorPage : public testing::Test
{
protected:
    void open(const editor_data_t& data, unsigned flags = all_flags)
    {
        m_frame = new wxFrame(test::main_window(), wxID_ANY, "host", wxDefaultPosition, wxSize(560, 460));
        m_page = new editor_pp_t(data, flags);
        m_page->create(m_frame);
        m_frame->Show();
        m_frame->Raise();
        test::settle();
    }
    void TearDown() override
    {
        if (m_frame)
            m_frame->Destroy();
    }
    wxListBox* list() { return commondlg3::from_xrc<wxListBox>(m_page, "m_editor_list"); }
    wxTextCtrl* arguments() { return commondlg3::from_xrc<wxTextCtrl>(m_page, "m_command_line"); }
    wxButton* default_button() { return commondlg3::from_xrc<wxButton>(m_page, "m_default"); }
    wxChoice* languages() { return commondlg3::from_xrc<wxChoice>(m_page, "m_language"); }
    std::string info()
    {
        return from_wx(commondlg3::from_xrc<wxStaticText>(m_page, "m_info_text")->GetLabelText());
    }
    int browse_entry() { return static_cast<int>(list()->GetCount()) - 1; }
    // What the toolkit does when an entry is selected.
    void select(int index)
    {
        list()->SetSelection(index);
        test::send(wxEVT_LISTBOX, list(), index);
    }
    void activate_browse_entry()
    {
        list()->SetSelection(browse_entry());
        test::send(wxEVT_LISTBOX_DCLICK, list(), browse_entry());
        test::settle();
    }
    void choose_language(const char* language)
    {
        languages()->SetStringSelection(language);
        test::send(wxEVT_CHOICE, languages());
    }
    // Chooses a program in the real chooser.
    void browse(const std::string& path)
    {
        std::string start;
        test::answer_for_real(path, start);
        activate_browse_entry();
        EXPECT_EQ(std::filesystem::current_path().native(), start);
    }

    wxFrame* m_frame = nullptr;
    editor_pp_t* m_page = nullptr;
    const test::temp_dir_t m_dir;
};

// Display names are for people: they lead nowhere, and must not lead to the wrong editor.
TEST_F(EditorPage, EntriesLeadToTheirEditorsWhateverTheyAreCalled)
{
    open(three_editors());
    std::vector<std::string> entries;
    for (const wxString& entry : list()->GetStrings())
        entries.push_back(from_wx(entry));
    ASSERT_EQ((std::vector<std::string>{"Twin (system default)", "Twin", "Twin (system default)", "Browse…"}),
              entries);
    EXPECT_EQ("s", m_page->get_selected_editor_name()) << "what the desktop would take";
    EXPECT_FALSE(m_page->is_changed()) << "nobody chose it";
    const std::pair<const char*, const char*> expected[] = {{"s", "-s"}, {"a", "-a 'b c'"}, {"b", ""}};
    for (int i = 0; i < 3; ++i) {
        select(i);
        EXPECT_EQ(expected[i].first, m_page->get_selected_editor_name());
        EXPECT_EQ(expected[i].first, m_page->get_data().get_selected_editor_name(language_info::cpp));
        EXPECT_EQ(expected[i].second, from_wx(arguments()->GetValue()));
    }
    EXPECT_TRUE(m_page->is_changed());
}

TEST_F(EditorPage, LanguagesHaveTheirOwnListsAndChoices)
{
    editor_data_t data = three_editors();
    data.set_selected_language(language_info::fortran);
    data.set_selected_editor_name(language_info::cpp, "b");
    open(data);
    EXPECT_EQ(3U, languages()->GetCount());
    EXPECT_EQ("Fortran", languages()->GetStringSelection());
    EXPECT_EQ("f", m_page->get_selected_editor_name());
    choose_language("C/C++");
    EXPECT_EQ("b", m_page->get_selected_editor_name()) << "also where its entry looks like another's";
    EXPECT_EQ(2, list()->GetSelection());
    choose_language("Other");
    EXPECT_EQ(1U, list()->GetCount());
    EXPECT_EQ("", m_page->get_selected_editor_name());
    EXPECT_FALSE(arguments()->IsEnabled());
    EXPECT_FALSE(default_button()->IsEnabled());
    EXPECT_EQ(language_info::other, m_page->get_data().get_selected_language());
    choose_language("C/C++");
    EXPECT_TRUE(arguments()->IsEnabled() && default_button()->IsEnabled());
}

TEST_F(EditorPage, BrowsedProgramsGetFreeNamesUpToAHundred)
{
    const std::string leaf = "v&m \xC3\xA4 \xFF";
    const std::string path = m_dir.path() + "/" + leaf;
    test::make_file(path); // that cannot be run
    editor_data_t data = three_editors();
    for (int i = 3; i < 100; ++i)
        data.add_editor(language_info::cpp,
                        {leaf + " (" + std::to_string(i) + ")", "", "/bin/sh", "/bin/sh"});
    open(data);
    browse(path);
    EXPECT_EQ(leaf, m_page->get_selected_editor_name());
    EXPECT_EQ(browse_entry() - 1, list()->GetSelection());
    EXPECT_EQ("v&m \xC3\xA4 \xEF\xBF\xBD", from_wx(list()->GetStringSelection()));
    EXPECT_EQ(system_editor_t(leaf, leaf, path, path),
              m_page->get_data().get_editor(language_info::cpp, leaf));
    EXPECT_EQ(editor_data_t::editor_type_custom,
              m_page->get_data().get_editor_type(language_info::cpp, leaf));
    EXPECT_TRUE(test::wait_for(
        [&] { return commondlg3::from_xrc<wxStaticText>(m_page, "m_missing_program")->IsShown(); }));
    browse(path);
    EXPECT_EQ(leaf + " (2)", m_page->get_selected_editor_name());
    browse(path);
    EXPECT_EQ(leaf + " (100)", m_page->get_selected_editor_name());
    const editor_data_t before = m_page->get_data();
    test::messages_t messages;
    browse(path);
    ASSERT_EQ(1U, messages.shown.size());
    EXPECT_EQ("The editor was not added", messages.shown[0].first);
    EXPECT_EQ(0U, messages.shown[0].second.find("There are 100 editors of this name already."));
    EXPECT_EQ(before, m_page->get_data());
    EXPECT_EQ(leaf + " (100)", m_page->get_selected_editor_name()) << "the selection is back where it was";
    choose_language("Fortran");
    browse(path);
    EXPECT_EQ(leaf, m_page->get_selected_editor_name()) << "names are free language by language";
}

TEST_F(EditorPage, ArgumentsAreWhatFollowsTheExecutable)
{
    const auto arguments_of = [](const std::string& executable, const std::string& command_line) {
        return editor_pp_t::get_cmd_line_args({"n", "N", executable, command_line});
    };
    EXPECT_EQ("-nw", arguments_of("/usr/bin/emacs", "/usr/bin/emacs -nw"));
    EXPECT_EQ("a\n", arguments_of("/my ed", "/my ed \r\n\ta\n"));
    EXPECT_EQ("", arguments_of("/ed", "/ed \t\n"));
    EXPECT_EQ("", arguments_of("/usr/bin/emacs", "emacs -nw"));
    EXPECT_EQ(1U, test::take_assertions().size());
    open(three_editors());
    select(0);
    arguments()->SetValue(" --new  x");
    EXPECT_EQ("/bin/sh  --new  x", m_page->get_data().get_editor(language_info::cpp, "s").command_line);
    EXPECT_EQ(editor_data_t::editor_type_system, m_page->get_data().get_editor_type(language_info::cpp, "s"));
}

TEST_F(EditorPage, AnEditorThatIsNotThereIsToldWhenItIsChosen)
{
    const test::variable_guard_t visual("VISUAL", nullptr);
    const test::variable_guard_t variable("EDITOR", nullptr);
    editor_data_t data;
    editor_data_t::editor_t system({"s", "S", "/gone/s", "/gone/s"});
    system.is_system = true;
    data.add_editor_ex(language_info::cpp, system);
    editor_data_t::editor_t environment;
    editor_data_t::fill_env_var_editor(environment);
    data.add_editor_ex(language_info::cpp, environment);
    data.add_editor(language_info::cpp, {"c", "C", "/gone/c", "/gone/c -x"});
    data.add_editor(language_info::cpp, {"e", "E", "", ""});
    data.add_editor(language_info::cpp, {"q", "Q", "sh", "sh -c 'x y'"});
    open(data);
    const std::string gone = " is not there any more. Choose another editor, or install it again.";
    const std::pair<const char*, std::string> expected[] = {
        // what the information begins with
        {"\n", "Warning: The program /gone/s" + gone},
        {"The variables VISUAL and EDITOR name no editor that is installed.", ""},
        {"\n", "Warning: The program /gone/c" + gone},
        {"The program of this editor is not there any more.", ""},
        {"\n", ""}};
    auto* missing = commondlg3::from_xrc<wxStaticText>(m_page, "m_missing_program");
    for (int i = 0; i < 5; ++i) {
        select(i);
        EXPECT_EQ(0U, info().find(expected[i].first)) << info();
        EXPECT_TRUE(test::wait_for([&] { return from_wx(missing->GetLabelText()) == expected[i].second; }))
            << from_wx(missing->GetLabelText());
        EXPECT_EQ(!expected[i].second.empty(), missing->IsShown());
    }
    EXPECT_NE(std::string::npos,
              from_wx(list()->GetToolTipText()).find("sh -c 'x y' +<line> <path to file>"));
}

TEST_F(EditorPage, FlagsDecideWhatIsShown)
{
    const std::pair<unsigned, const char*> cases[] = {{0, "text "},
                                                      {1, "choice "},
                                                      {2, "text "},
                                                      {3, "text "},
                                                      {8, "text default "},
                                                      {16 + 4, "text information "},
                                                      {25, "choice default information "},
                                                      {27, "text default information "}};
    for (const auto& [flags, expected] : cases) {
        open(three_editors(), flags);
        std::string shown;
        for (const auto& [name, word] : {std::pair{"m_language", "choice "},
                                         {"m_language_text", "text "},
                                         {"m_default", "default "},
                                         {"m_info_text", "information "},
                                         {"m_command_line", "never"}})
            shown += m_page->FindWindow(XRCID(name))->IsShown() ? word : "";
        EXPECT_EQ(expected, shown) << flags;
        m_frame->Destroy();
        m_frame = nullptr;
    }
}

// Passing over an entry must not open a window.
TEST_F(EditorPage, KeysAndAClickReachEverythingAndArrowsPassOverTheBrowseEntry)
{
    open(three_editors());
    ASSERT_TRUE(test::wait_for([&] { return m_frame->IsActive(); }));
    int choosers = 0;
    const test::chooser_answer_t answer([&](wxDialog* shown) {
        const auto* chooser = wxDynamicCast(shown, wxFileDialog);
        EXPECT_TRUE(chooser && from_wx(chooser->GetMessage()) == "Choose a program");
        ++choosers;
        return choosers == 1 ? wxID_OK : wxID_CANCEL; // OK, and no file
    });
    languages()->SetFocus();
    test::settle();
    test::press(WXK_TAB);
    EXPECT_TRUE(list()->HasFocus());
    test::press('L', wxMOD_ALT);
    EXPECT_FALSE(list()->HasFocus());
    test::press('E', wxMOD_ALT);
    EXPECT_TRUE(list()->HasFocus()) << "by the letter of its label";
    test::press(WXK_DOWN);
    EXPECT_EQ("a", m_page->get_data().get_selected_editor_name(language_info::cpp));
    test::press(WXK_END);
    EXPECT_EQ(browse_entry(), list()->GetSelection());
    EXPECT_EQ(0, choosers);
    EXPECT_EQ("a", m_page->get_data().get_selected_editor_name(language_info::cpp));
    EXPECT_FALSE(default_button()->IsEnabled());
    test::press(WXK_RETURN);
    EXPECT_EQ(1, choosers);
    EXPECT_EQ("a", m_page->get_selected_editor_name());
    test::press(WXK_END);
    test::press(WXK_SPACE);
    EXPECT_EQ(2, choosers);
    EXPECT_EQ(4U, list()->GetCount());
    EXPECT_TRUE(list()->HasFocus());
    test::press(WXK_TAB);
    EXPECT_TRUE(default_button()->HasFocus());
    test::press(WXK_SPACE);
    EXPECT_EQ("a", m_page->get_data().get_default_editor_name(language_info::cpp));
    EXPECT_TRUE(list()->HasFocus()) << "not on a button that cannot be pressed";
    for (const int row : {0, 1}) {
        select(row);
        EXPECT_EQ(row == 0, default_button()->IsEnabled()) << "not of what is the default already";
    }

    int y = 0;
    while (list()->HitTest(wxPoint(20, y)) != browse_entry() && y < 300)
        ++y;
    wxUIActionSimulator mouse;
    mouse.MouseMove(list()->ClientToScreen(wxPoint(20, y + 5)));
    mouse.MouseClick();
    EXPECT_TRUE(test::wait_for([&] { return choosers > 2; }));
    test::settle();
    EXPECT_EQ(3, choosers) << "once for a click";
    EXPECT_EQ("a", m_page->get_selected_editor_name());
}

// What was tried must be told as it went, and an editor that is removed must leave no choice behind.
TEST_F(EditorPage, CustomEditorsAreTriedRenamedAndRemoved)
{
    const std::string script = m_dir.path() + "/failing";
    std::ofstream(script) << "#!/bin/sh\nexit 3\n";
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    editor_data_t data = three_editors();
    data.add_editor(language_info::cpp, {"x", "X", script, script});
    data.set_selected_editor_name(language_info::cpp, "x");
    data.set_default_editor_name(language_info::cpp, "x");
    open(data, all_flags | editor_pp_t::show_details | editor_pp_t::show_actions);
    const auto says = [&](const std::string& text) {
        return test::wait_for([&] {
            for (const wxWindow* child : m_page->GetChildren())
                if (child->IsShown() && from_wx(child->GetLabel()).find(text) != std::string::npos)
                    return true;
            return false;
        });
    };
    const auto press = [&](const char* name) {
        test::send(wxEVT_BUTTON, wxWindow::FindWindowByName(name, m_page));
    };
    EXPECT_TRUE(says("Command: " + script + " +<line> <path to file>"));
    press("m_try");
    EXPECT_TRUE(says("It ended at once, with exit code 3."));
    test::run_modal([&] { return press("m_rename"), 0; },
                    [](wxTopLevelWindow* dialog) {
                        commondlg3::from_xrc<wxTextCtrl>(dialog, "m_name")->SetValue(" New ");
                        test::click(dialog, "m_btn_ok");
                    });
    EXPECT_EQ("New", from_wx(list()->GetStringSelection()));
    EXPECT_EQ(system_editor_t("x", "New", script, script),
              m_page->get_data().get_editor(language_info::cpp, "x"));
    press("m_remove");
    EXPECT_EQ("b", m_page->get_selected_editor_name()) << "the one before, as it was the last";
    EXPECT_EQ("", m_page->get_data().get_default_editor_name(language_info::cpp));
    EXPECT_EQ(editor_data_t::editor_type_none, m_page->get_data().get_editor_type(language_info::cpp, "x"));
    select(0);
    EXPECT_FALSE(wxWindow::FindWindowByName("m_remove", m_page)->IsEnabled()) << "the desktop's";
}

// A row that begins with a Latin name ran from left to right, what belongs behind the name in front of it.
TEST_F(EditorPage, RowOfTheDefaultRunsInTheLanguagesDirection)
{
    for (const std::string language : {"en", "ar"}) {
        const test::language_guard_t guard(language);
        open(three_editors());
        const std::string row = from_wx(list()->GetString(0));
        PangoLayout* layout = gtk_widget_create_pango_layout(GTK_WIDGET(list()->GetHandle()), row.c_str());
        EXPECT_EQ(language == "ar" ? PANGO_DIRECTION_RTL : PANGO_DIRECTION_LTR,
                  pango_layout_get_direction(layout, 0))
            << row;
        g_object_unref(layout);
        m_frame->Destroy();
        m_frame = nullptr;
    }
}

} // namespace
