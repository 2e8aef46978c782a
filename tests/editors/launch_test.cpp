#include "support.h"
#include "tools.h"

#include <commondlg3/editor_launch.h>
#include <commondlg3/message_window.h>
#include <gen_helpers2/program.h>
#include <gen_helpers2/system_editor.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace {

using commondlg3::editor_failure_t;
using gen_helpers2::system_editor_t;
using reason_t = editor_failure_t::reason_t;
using words_t = std::vector<std::string>;

/// A folder that stands alone in "PATH", for programs and the file that they open.
class EditorLaunch : public testing::Test
{
protected:
    void SetUp() override { test::make_file(m_file); }

    std::string make_program(const std::string& name, const std::string& script = "exit 0")
    {
        const std::string path = m_dir.path() + "/" + name;
        test::make_file(path, "#!/bin/sh\n" + script + "\n");
        chmod(path.c_str(), 0755);
        return path;
    }
    // One that notes its arguments, a line each.
    std::string make_recorder(const std::string& name)
    {
        return make_program(name, "printf '%s\\n' \"$@\" > '" + m_note + ".part'; /bin/mv '" + m_note +
                                      ".part' '" + m_note + "'");
    }
    std::string recorded()
    {
        EXPECT_TRUE(test::wait_for([&] { return std::filesystem::exists(m_note); }));
        const std::string text = test::read_file(m_note);
        std::filesystem::remove(m_note);
        return text;
    }
    words_t command(const system_editor_t& editor, int line = 7)
    {
        words_t words;
        editor_failure_t failure;
        EXPECT_TRUE(commondlg3::get_editor_command(editor, m_file, line, words, failure))
            << failure.get_text();
        return words;
    }
    static system_editor_t by_variable(const std::string& value)
    {
        return {"vorbex_env_var_editor_name", "variable", value, value};
    }

    const test::temp_dir_t m_dir;
    const test::variable_guard_t m_path{"PATH", m_dir.path().c_str()};
    const std::string m_file = m_dir.path() + "/a b \"c\".cpp";
    const std::string m_note = m_dir.path() + "/note";
};

TEST_F(EditorLaunch, EachEditorIsToldTheLineInItsWay)
{
    const std::string at = m_file + ":7";
    const std::pair<const char*, words_t> cases[] = {
        {"some-editor", {"+7", m_file}},   {"code", {"--goto", at}},          {"subl", {at}},
        {"l3afpad", {"--jump=7", m_file}}, {"kate", {"--line", "7", m_file}}, {"scite", {"-goto:7", m_file}}};
    for (const auto& [name, arguments] : cases) {
        words_t expected{make_program(name), "-x"};
        const system_editor_t editor(name, name, expected[0], expected[0] + " -x");
        EXPECT_EQ(words_t({expected[0], "-x", m_file}), command(editor, 0)) << name;
        expected.insert(expected.end(), arguments.begin(), arguments.end());
        EXPECT_EQ(expected, command(editor)) << name;
    }
}

TEST_F(EditorLaunch, CommandsOfVariablesAreReadAsAShellWould)
{
    const std::string code = make_program("code");
    std::filesystem::create_directory(m_dir.path() + "/my ed");
    const std::string blank = make_program("my ed/ed");
    EXPECT_EQ((words_t{code, "--wait", "--goto", m_file + ":7"}), command(by_variable("code --wait")));
    EXPECT_EQ((words_t{blank, "-n", "+7", m_file}), command(by_variable("\"" + blank + "\" -n")));
    EXPECT_EQ((words_t{blank, "+7", m_file}), command(by_variable(blank))) << "a path as it stands";
    EXPECT_EQ((words_t{code, ";", "$X", "`id`", "*", "", "it's", "c d", "\xFF", "--goto", m_file + ":7"}),
              command(by_variable("code ; $X\t`id` * '' \"it's\" c\\ d \xFF ")));
    EXPECT_EQ((words_t{blank, "a b", "+7", m_file}), command({"x", "x", blank, blank + "\t'a b'"}));
}

TEST_F(EditorLaunch, EditorsOfATerminalStartInOne)
{
    const std::string terminal = make_program("xterm");
    const std::string vim = make_program("vim");
    const std::string emacs = make_program("emacs");
    std::filesystem::create_symlink("vim", m_dir.path() + "/editor");
    const std::string link = m_dir.path() + "/editor";
    EXPECT_EQ((words_t{terminal, "-e", vim, "+7", m_file}), command(by_variable("vim")));
    EXPECT_EQ((words_t{terminal, "-e", link, "+7", m_file}), command(by_variable("editor")))
        << "what it links to";
    EXPECT_EQ((words_t{vim, "-g", "+7", m_file}), command(by_variable("vim -g")));
    EXPECT_EQ((words_t{terminal, "-e", emacs, "-nw", "+7", m_file}), command(by_variable("emacs -nw")));
    const std::string unknown = make_program("unknown");
    // What the desktop has registered as wanting one; it notices new entries after a while.
    const gen_helpers2::path_t entries = gen_helpers2::path_t(std::getenv("XDG_DATA_HOME")) / "applications";
    std::filesystem::create_directories(entries.as_filesystem_path());
    std::ofstream((entries / "in_terminal.desktop").as_string())
        << "[Desktop Entry]\nType=Application\nName=x\nExec=" << unknown << " %F\nTerminal=true\n";
    EXPECT_TRUE(
        test::wait_for([] { return gen_helpers2::system_editor_needs_terminal("in_terminal.desktop"); }));
    EXPECT_EQ((words_t{terminal, "-e", unknown, "+7", m_file}),
              command({"in_terminal.desktop", "as the registry says", unknown, unknown}));
    const std::string wrapper = make_program("x-terminal-emulator");
    EXPECT_EQ(wrapper, command(by_variable("vim")).front()) << "the user's own choice";
}

TEST_F(EditorLaunch, WhatCannotStartIsToldAtOnceWithItsReason)
{
    const std::string ed = make_program("ed");
    make_program("vim");
    make_program("my"); // what a program with a blank in its path must not be cut down to
    const std::string gone = m_dir.path() + "/my editor/ed";
    test::make_file(m_dir.path() + "/no program");
    const struct
    {
        system_editor_t editor;
        std::string file;
        reason_t reason;
        std::string names; // what the text must name
    } cases[] = {
        {by_variable(""), m_file, reason_t::no_command, "variable"},
        {by_variable(" \n"), m_file, reason_t::no_command, "variable"},
        {by_variable("ed \"x"), m_file, reason_t::bad_quotes, "variable"},
        {{"c", "Mine", ed, ed + " 'x"}, m_file, reason_t::bad_quotes, "Mine"},
        {by_variable("/gone/ed -n"), m_file, reason_t::not_found, "/gone/ed w"},
        {{"c", "Mine", gone, gone + " -n"}, m_file, reason_t::not_found, gone + " w"},
        {{"c", "Mine", gone, "my editor"}, m_file, reason_t::not_found, gone + " w"},
        {{"c", "Mine", "", "my editor"}, m_file, reason_t::not_found, "my editor w"},
        {by_variable("'" + m_dir.path() + "/no program'"), m_file, reason_t::not_found, "no program"},
        {by_variable("vim"), m_file, reason_t::no_terminal, "vim runs"},
        {by_variable("ed"), m_dir.path() + "/gone.cpp", reason_t::no_file, "gone.cpp"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.editor.command_line);
        int told = 0;
        EXPECT_FALSE(commondlg3::open_in_editor(c.editor, c.file, 1, [&](const editor_failure_t& failure) {
            ++told;
            EXPECT_EQ(c.reason, failure.reason);
            EXPECT_NE(std::string::npos, failure.get_text().find(c.names)) << failure.get_text();
        }));
        EXPECT_EQ(1, told);
        const bool can_start = c.reason == reason_t::no_terminal || c.reason == reason_t::no_file;
        EXPECT_EQ(can_start, commondlg3::is_editor_installed(c.editor));
    }
    EXPECT_FALSE(commondlg3::open_in_editor(by_variable("gone"), m_file, 1, nullptr));
}

TEST_F(EditorLaunch, StartsAtTheRightLineAndSaysHowItEndedWhenThatIsSoon)
{
    std::vector<editor_failure_t> failures;
    const auto tell = [&](const editor_failure_t& failure) { failures.push_back(failure); };
    make_recorder("recorder");
    EXPECT_TRUE(commondlg3::open_in_editor(by_variable("recorder --wait 'a  b'"), m_file, 42, tell));
    EXPECT_EQ("--wait\na  b\n+42\n" + m_file + "\n", recorded());

    make_program("failing", "exit 3");
    make_program("killed", "kill -9 $$");
    EXPECT_TRUE(commondlg3::open_in_editor(by_variable("failing -n"), m_file, 1, tell));
    EXPECT_TRUE(test::wait_for([&] { return failures.size() == 1; }));
    EXPECT_TRUE(commondlg3::open_in_editor(by_variable("killed"), m_file, 1, tell));
    EXPECT_TRUE(test::wait_for([&] { return failures.size() == 2; }));
    ASSERT_EQ(2U, failures.size()) << "and none for the one that succeeded";
    EXPECT_EQ(3, failures[0].exit_code);
    EXPECT_EQ(m_dir.path() + "/failing -n +1 '" + m_file + "'", failures[0].command);
    EXPECT_EQ(9, failures[1].signal);

    test::messages_t messages;
    commondlg3::show_editor_failure(failures[0], test::main_window());
    ASSERT_EQ(1U, messages.shown.size());
    EXPECT_EQ("The editor did not open the file", messages.shown[0].first);
    EXPECT_NE(std::string::npos, messages.shown[0].second.find("exit code 3"));
}

} // namespace
