#include "tools.h"

#include <commondlg3/editor_pp.h>
#include <commondlg3/resources.h>
#include <commondlg3/text_utils.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/filedlg.h>
#include <wx/listbox.h>
#include <wx/uiaction.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace {

using commondlg3::editor_data_t;
using commondlg3::editor_pp_t;
using commondlg3::language_info;
using commondlg3::translate_message;
using gen_helpers2::system_editor_t;
using wx_helpers1::from_wx;
using wx_helpers1::to_wx;

constexpr auto cpp = language_info::cpp;
constexpr auto fortran = language_info::fortran;
constexpr unsigned all_flags = 1 | 8 | 16;

editor_data_t three_editors()
{
    editor_data_t data;
    editor_data_t::editor_t system({"s", "Twin", "/bin/sh", "/bin/sh -s"});
    system.is_system = true;
    data.add_editor_ex(cpp, system);
    data.add_editor(cpp, {"a", "Twin", "/bin/sh", "/bin/sh \t -a 'b c'"});
    data.add_editor(cpp, {"b", "Twin" + translate_message("pref.editor.system_default_suffix", {}), "/bin/sh",
                          "/bin/sh"});
    gen_helpers2::variant_bag_t bag;
    auto& language = bag.add_child("language");
    language.put("language_name", language_info::get_localized_name(cpp));
    language.put("system_default_editor", "s");
    data.load(bag);
    data.add_editor(fortran, {"f", "F", "/bin/sh", "/bin/sh"});
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
        send(wxEVT_LISTBOX, list(), index);
    }
    void activate_browse_entry()
    {
        list()->SetSelection(browse_entry());
        send(wxEVT_LISTBOX_DCLICK, list(), browse_entry());
        test::settle();
    }
    static void send(wxEventType type, wxWindow* window, int number = 0)
    {
        wxCommandEvent event(type, window->GetId());
        event.SetEventObject(window);
        event.SetInt(number);
        window->ProcessWindowEvent(event);
    }
    void choose_language(const char* key)
    {
        languages()->SetStringSelection(to_wx(translate_message(key, {})));
        send(wxEVT_CHOICE, languages());
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
    const std::string suffix = translate_message("pref.editor.system_default_suffix", {});
    ASSERT_EQ(4U, list()->GetCount());
    EXPECT_EQ("Twin" + suffix, from_wx(list()->GetString(0)));
    EXPECT_EQ("Twin", from_wx(list()->GetString(1)));
    EXPECT_EQ(list()->GetString(0), list()->GetString(2));
    EXPECT_EQ(translate_message("pref.editor.browse", {}), from_wx(list()->GetString(3)));
    EXPECT_EQ("s", m_page->get_selected_editor_name()) << "what the desktop would take";
    EXPECT_FALSE(m_page->is_changed()) << "nobody chose it";
    const std::pair<const char*, const char*> expected[] = {{"s", "-s"}, {"a", "-a 'b c'"}, {"b", ""}};
    for (int i = 0; i < 3; ++i) {
        select(i);
        EXPECT_EQ(expected[i].first, m_page->get_selected_editor_name());
        EXPECT_EQ(expected[i].first, m_page->get_data().get_selected_editor_name(cpp));
        EXPECT_EQ(expected[i].second, from_wx(arguments()->GetValue()));
        EXPECT_EQ("\n", info());
    }
    EXPECT_TRUE(m_page->is_changed());
}

TEST_F(EditorPage, LanguagesHaveTheirOwnListsAndChoices)
{
    editor_data_t data = three_editors();
    data.set_selected_language(fortran);
    data.set_selected_editor_name(cpp, "b");
    open(data);
    EXPECT_EQ(3U, languages()->GetCount());
    EXPECT_EQ(translate_message("pref.editor.language_fortran", {}),
              from_wx(languages()->GetStringSelection()));
    EXPECT_EQ("f", m_page->get_selected_editor_name());
    choose_language("pref.editor.language_cpp");
    EXPECT_EQ("b", m_page->get_selected_editor_name()) << "also where its entry looks like another's";
    EXPECT_EQ(2, list()->GetSelection());
    choose_language("pref.editor.language_other");
    EXPECT_EQ(1U, list()->GetCount());
    EXPECT_EQ("", m_page->get_selected_editor_name());
    EXPECT_FALSE(arguments()->IsEnabled());
    EXPECT_FALSE(default_button()->IsEnabled());
    EXPECT_EQ("\n", info());
    EXPECT_EQ(language_info::other, m_page->get_data().get_selected_language());
    m_page->update_state_for_language(cpp); // of which nothing is selected: neither is another's
    EXPECT_EQ("b", m_page->get_selected_editor_name());
    EXPECT_EQ("", m_page->get_data().get_selected_editor_name(language_info::other));
    EXPECT_TRUE(arguments()->IsEnabled() && default_button()->IsEnabled());
}

TEST_F(EditorPage, TheDefaultIsSetOnce)
{
    open(three_editors());
    select(1);
    EXPECT_TRUE(default_button()->IsEnabled());
    default_button()->SetFocus();
    ASSERT_TRUE(test::wait_for([this] { return default_button()->HasFocus(); }));
    test::press(WXK_SPACE);
    EXPECT_TRUE(test::wait_for([this] { return !default_button()->IsEnabled(); }));
    EXPECT_TRUE(list()->HasFocus()) << "or no key would be heard any more";
    EXPECT_EQ("a", m_page->get_data().get_default_editor_name(cpp));
    select(0);
    EXPECT_TRUE(default_button()->IsEnabled());
    select(1);
    EXPECT_FALSE(default_button()->IsEnabled());
    EXPECT_TRUE(m_page->is_changed());
    m_page->set_unchanged();
    EXPECT_FALSE(m_page->is_changed());
}

TEST_F(EditorPage, BrowsedProgramsGetFreeNamesUpToAHundred)
{
    const std::string leaf = "v&m \xC3\xA4 \xFF";
    const std::string path = m_dir.path() + "/" + leaf;
    test::make_file(path); // that cannot be run
    editor_data_t data = three_editors();
    for (int i = 3; i < 100; ++i)
        data.add_editor(cpp, {leaf + " (" + std::to_string(i) + ")", "", "/bin/sh", "/bin/sh"});
    open(data);
    int told = 0;
    m_frame->Bind(wxEVT_LISTBOX, [&](wxCommandEvent&) { ++told; });
    browse(path);
    EXPECT_EQ(leaf, m_page->get_selected_editor_name());
    EXPECT_EQ(browse_entry() - 1, list()->GetSelection());
    EXPECT_EQ("v&m \xC3\xA4 \xEF\xBF\xBD", from_wx(list()->GetStringSelection()));
    EXPECT_EQ(system_editor_t(leaf, leaf, path, path), m_page->get_data().get_editor(cpp, leaf));
    EXPECT_EQ(editor_data_t::editor_type_custom, m_page->get_data().get_editor_type(cpp, leaf));
    EXPECT_EQ("\n", info());
    EXPECT_TRUE(commondlg3::from_xrc<wxStaticText>(m_page, "m_missing_program")->IsShown());
    browse(path);
    EXPECT_EQ(leaf + " (2)", m_page->get_selected_editor_name());
    browse(path);
    EXPECT_EQ(leaf + " (100)", m_page->get_selected_editor_name());
    EXPECT_EQ(3, told) << "the host learns of each";

    const editor_data_t before = m_page->get_data();
    test::messages_t messages;
    browse(path);
    ASSERT_EQ(1U, messages.shown.size());
    EXPECT_EQ(translate_message("pref.editor.warning", {}), messages.shown[0].first);
    EXPECT_EQ(0U, messages.shown[0].second.find("There are 100 editors of this name already."));
    EXPECT_EQ(before, m_page->get_data());
    EXPECT_EQ(leaf + " (100)", m_page->get_selected_editor_name()) << "the selection is back where it was";
    choose_language("pref.editor.language_fortran");
    browse(path);
    EXPECT_EQ(leaf, m_page->get_selected_editor_name()) << "names are free language by language";
}

TEST_F(EditorPage, CancelAndNoNameChangeNothing)
{
    open(three_editors());
    const editor_data_t before = m_page->get_data();
    std::string title;
    int code = wxID_CANCEL;
    const test::chooser_answer_t answer([&](wxDialog* shown) {
        if (auto* dialog = wxDynamicCast(shown, wxFileDialog))
            title = from_wx(dialog->GetMessage());
        return code;
    });
    for (const int ending : {wxID_CANCEL, wxID_OK}) { // OK, and no file
        code = ending;
        activate_browse_entry();
        EXPECT_EQ(translate_message("pref.editor.open_editor_dlg", {}), title);
        EXPECT_EQ(before, m_page->get_data());
        EXPECT_EQ("s", m_page->get_selected_editor_name());
        EXPECT_EQ(4U, list()->GetCount());
    }
}

TEST_F(EditorPage, ArgumentsAreWhatFollowsTheExecutable)
{
    const auto arguments_of = [](const std::string& executable, const std::string& command_line) {
        return editor_pp_t::get_cmd_line_args({"n", "N", executable, command_line});
    };
    EXPECT_EQ("-nw", arguments_of("/usr/bin/emacs", "/usr/bin/emacs -nw"));
    EXPECT_EQ("a\n", arguments_of("/my ed", "/my ed \r\n\ta\n"));
    EXPECT_EQ("", arguments_of("/ed", "/ed \t\n"));
    EXPECT_EQ("", arguments_of("", ""));
    EXPECT_TRUE(test::take_assertions().empty());
    EXPECT_EQ("", arguments_of("/usr/bin/emacs", "emacs -nw"));
    EXPECT_EQ("", arguments_of("/usr/bin/emacs", ""));
    EXPECT_EQ(2U, test::take_assertions().size());
    open(three_editors());
    select(0);
    arguments()->SetValue(" --new  x");
    EXPECT_EQ("/bin/sh  --new  x", m_page->get_data().get_editor(cpp, "s").command_line);
    EXPECT_EQ(editor_data_t::editor_type_system, m_page->get_data().get_editor_type(cpp, "s"));
}

TEST_F(EditorPage, AnEditorThatIsNotThereIsToldWhenItIsChosen)
{
    const test::variable_guard_t visual("VISUAL", nullptr);
    const test::variable_guard_t variable("EDITOR", nullptr);
    editor_data_t data;
    editor_data_t::editor_t system({"s", "S", "/gone/s", "/gone/s"});
    system.is_system = true;
    data.add_editor_ex(cpp, system);
    editor_data_t::editor_t environment;
    editor_data_t::fill_env_var_editor(environment);
    data.add_editor_ex(cpp, environment);
    data.add_editor(cpp, {"c", "C", "/gone/c", "/gone/c -x"});
    data.add_editor(cpp, {"e", "E", "", ""});
    data.add_editor(cpp, {"q", "Q", "sh", "sh -c 'x y'"});
    open(data);
    const auto gone = [](const char* program) {
        return translate_message("pref.editor.program_not_found", {{"program", program}});
    };
    const std::pair<std::string, std::string> expected[] = {
        {"\n", gone("/gone/s")},
        {translate_message("pref.editor.editor_not_found_env_var", {}), ""},
        {"\n", gone("/gone/c")},
        {translate_message("pref.editor.editor_not_found_custom", {}), ""},
        {"\n", ""}};
    auto* missing = commondlg3::from_xrc<wxStaticText>(m_page, "m_missing_program");
    for (int i = 0; i < 5; ++i) {
        select(i);
        EXPECT_EQ(expected[i].first, info());
        EXPECT_EQ(expected[i].second, from_wx(missing->GetLabelText()));
        EXPECT_EQ(!expected[i].second.empty(), missing->IsShown());
    }
    EXPECT_NE(std::string::npos,
              from_wx(list()->GetToolTipText()).find("sh -c 'x y' +<line> <path to file>"));
    m_page->fill_info_message(cpp, {"nobody", "N", "", ""});
    EXPECT_EQ(std::vector<std::string>{"false"}, test::take_assertions());
    EXPECT_EQ("\n", info());
}

TEST_F(EditorPage, FlagsDecideWhatIsShown)
{
    const struct
    {
        unsigned flags;
        bool choice, button, information;
    } cases[] = {{0, false, false, false}, {1, true, false, false}, {2, false, false, false},
                 {3, false, false, false}, {8, false, true, false}, {16 + 4, false, false, true},
                 {25, true, true, true},   {27, false, true, true}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.flags);
        open(three_editors(), c.flags);
        const auto is_shown = [&](const char* name) { return m_page->FindWindow(XRCID(name))->IsShown(); };
        EXPECT_EQ(c.choice, is_shown("m_language"));
        EXPECT_EQ(c.choice, is_shown("m_language_gap"));
        EXPECT_NE(c.choice, is_shown("m_language_text"));
        EXPECT_EQ(c.button, is_shown("m_default"));
        EXPECT_EQ(c.information, is_shown("m_info_text"));
        EXPECT_FALSE(is_shown("m_command_line"));
        EXPECT_FALSE(is_shown("m_static_text_cmd_line"));
        m_frame->Destroy();
        m_frame = nullptr;
    }
}

TEST_F(EditorPage, AMissingControlIsNamedAndThePageStays)
{
    open(three_editors());
    default_button()->Destroy();
    const editor_data_t before = m_page->get_data();
    m_page->on_init_dialog();
    EXPECT_EQ(std::vector<std::string>{"m_default"}, test::take_assertions());
    m_page->load_settings();
    m_page->update_state_for_language(fortran);
    m_page->update_shown_controls();
    m_page->fill_info_message(cpp, {});
    EXPECT_EQ(before, m_page->get_data());
}

// Passing over an entry must not open a window.
TEST_F(EditorPage, KeyboardReachesEverythingAndArrowsPassOverTheBrowseEntry)
{
    open(three_editors());
    ASSERT_TRUE(test::wait_for([&] { return m_frame->IsActive(); }));
    int choosers = 0;
    const test::chooser_answer_t answer([&](wxDialog* shown) {
        choosers += wxDynamicCast(shown, wxFileDialog) ? 1 : 0;
        return static_cast<int>(wxID_CANCEL);
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
    EXPECT_EQ("a", m_page->get_data().get_selected_editor_name(cpp));
    test::press(WXK_END);
    EXPECT_EQ(browse_entry(), list()->GetSelection());
    EXPECT_EQ(0, choosers);
    EXPECT_EQ("a", m_page->get_data().get_selected_editor_name(cpp));
    EXPECT_FALSE(default_button()->IsEnabled());
    test::press(WXK_RETURN);
    EXPECT_EQ(1, choosers);
    EXPECT_EQ("a", m_page->get_selected_editor_name());
    test::press(WXK_END);
    test::press(WXK_SPACE);
    EXPECT_EQ(2, choosers);
    EXPECT_TRUE(list()->HasFocus());
    test::press(WXK_TAB);
    EXPECT_TRUE(default_button()->HasFocus());
    test::press(WXK_SPACE);
    EXPECT_EQ("a", m_page->get_data().get_default_editor_name(cpp));
    EXPECT_TRUE(list()->HasFocus()) << "not on a button that cannot be pressed";
    EXPECT_NE("", wx_helpers1::get_accessible_name(list()));
    EXPECT_NE("", wx_helpers1::get_accessible_name(languages()));
}

TEST_F(EditorPage, AClickOnTheBrowseEntryOpensTheChooserOnce)
{
    open(three_editors());
    ASSERT_TRUE(test::wait_for([&] { return m_frame->IsActive(); }));
    int choosers = 0;
    const test::chooser_answer_t answer([&](wxDialog* shown) {
        choosers += wxDynamicCast(shown, wxFileDialog) ? 1 : 0;
        return static_cast<int>(wxID_CANCEL);
    });
    int row = 0;
    while (list()->HitTest(wxPoint(20, row)) != browse_entry() && row < 300)
        ++row;
    wxUIActionSimulator mouse;
    mouse.MouseMove(list()->ClientToScreen(wxPoint(20, row + 5)));
    mouse.MouseClick();
    EXPECT_TRUE(test::wait_for([&] { return choosers > 0; }));
    test::settle();
    EXPECT_EQ(1, choosers);
    EXPECT_EQ("s", m_page->get_selected_editor_name());
}

} // namespace
