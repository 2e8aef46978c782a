#include "editor_command.h"

#include "commondlg3/editor_data.h"
#include "paths/disk_question.h"

#include <gen_helpers2/environment.h>
#include <gen_helpers2/program.h>
#include <gen_helpers2/stdpaths.h>

#include <algorithm>
#include <filesystem>
#include <initializer_list>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace commondlg3 {
namespace {

using gen_helpers2::system_editor_t;
using reason_t = editor_failure_t::reason_t;
using words_t = std::vector<std::string>;

enum class line_style_t
{
    plus,        // +N FILE
    colon,       // FILE:N
    goto_colon,  // --goto FILE:N
    line_option, // --line N FILE
    jump_option, // --jump=N FILE
    goto_option  // -goto:N FILE
};

enum class place_t
{
    window,
    terminal,
    either // a terminal unless an argument asks for a window, or the other way round
};

struct known_editor_t
{
    const char* program;
    line_style_t style;
    place_t place;
};

// Only what differs from the usual: a window, and the line as +N.
constexpr known_editor_t known_editors[] = {
    {"vi", line_style_t::plus, place_t::terminal},
    {"vim", line_style_t::plus, place_t::either},
    {"vim.basic", line_style_t::plus, place_t::terminal},
    {"vim.tiny", line_style_t::plus, place_t::terminal},
    {"vim.nox", line_style_t::plus, place_t::terminal},
    {"vim.gtk3", line_style_t::plus, place_t::either},
    {"nvi", line_style_t::plus, place_t::terminal},
    {"nvim", line_style_t::plus, place_t::terminal},
    {"view", line_style_t::plus, place_t::terminal},
    {"gvim", line_style_t::plus, place_t::window}, // links to vim.gtk3 usually
    {"gview", line_style_t::plus, place_t::window},
    {"evim", line_style_t::plus, place_t::window},
    {"nano", line_style_t::plus, place_t::terminal},
    {"pico", line_style_t::plus, place_t::terminal},
    {"joe", line_style_t::plus, place_t::terminal},
    {"jmacs", line_style_t::plus, place_t::terminal},
    {"jstar", line_style_t::plus, place_t::terminal},
    {"mcedit", line_style_t::plus, place_t::terminal},
    {"mg", line_style_t::plus, place_t::terminal},
    {"zile", line_style_t::plus, place_t::terminal},
    {"ne", line_style_t::plus, place_t::terminal},
    {"micro", line_style_t::plus, place_t::terminal},
    {"kak", line_style_t::plus, place_t::terminal},
    {"hx", line_style_t::colon, place_t::terminal},
    {"helix", line_style_t::colon, place_t::terminal},
    {"emacs", line_style_t::plus, place_t::either},
    {"emacs-nox", line_style_t::plus, place_t::terminal},
    {"emacsclient", line_style_t::plus, place_t::either},
    {"code", line_style_t::goto_colon, place_t::window},
    {"code-insiders", line_style_t::goto_colon, place_t::window},
    {"code-oss", line_style_t::goto_colon, place_t::window},
    {"codium", line_style_t::goto_colon, place_t::window},
    {"vscodium", line_style_t::goto_colon, place_t::window},
    {"cursor", line_style_t::goto_colon, place_t::window},
    {"subl", line_style_t::colon, place_t::window},
    {"sublime_text", line_style_t::colon, place_t::window},
    {"zed", line_style_t::colon, place_t::window},
    {"zeditor", line_style_t::colon, place_t::window},
    {"qtcreator", line_style_t::colon, place_t::window},
    {"kate", line_style_t::line_option, place_t::window},
    {"kwrite", line_style_t::line_option, place_t::window},
    {"mousepad", line_style_t::line_option, place_t::window},
    {"clion", line_style_t::line_option, place_t::window},
    {"idea", line_style_t::line_option, place_t::window},
    {"l3afpad", line_style_t::jump_option, place_t::window},
    {"leafpad", line_style_t::jump_option, place_t::window},
    {"scite", line_style_t::goto_option, place_t::window},
};

struct terminal_t
{
    const char* program;
    words_t before_command;
};

const known_editor_t* find_known(const std::string& leaf)
{
    const auto* found = std::find_if(std::begin(known_editors), std::end(known_editors),
                                     [&](const known_editor_t& editor) { return leaf == editor.program; });
    return found == std::end(known_editors) ? nullptr : found;
}

// Known by the name it was asked for with, or by what that links to ("editor", "vi").
known_editor_t known_by(const std::string& program)
{
    const std::filesystem::path path(program);
    const known_editor_t* known = find_known(path.filename().native());
    std::error_code error;
    if (!known)
        known = find_known(std::filesystem::canonical(path, error).filename().native());
    return known ? *known : known_editor_t{"", line_style_t::plus, place_t::window};
}

bool has_any(const words_t& words, std::initializer_list<const char*> wanted)
{
    return std::any_of(words.begin() + 1, words.end(), [&](const std::string& word) {
        return std::find(wanted.begin(), wanted.end(), word) != wanted.end();
    });
}

bool runs_in_terminal(const system_editor_t& editor, const known_editor_t& known, const words_t& words)
{
    const std::string leaf = std::filesystem::path(words.front()).filename().native();
    if (known.place == place_t::either) {
        const bool is_vi = std::string(known.program).rfind("vim", 0) == 0;
        return is_vi ? !has_any(words, {"-g", "--gui"})
                     : has_any(words, {"-nw", "--no-window-system", "-t", "--tty"});
    }
    return known.place == place_t::terminal || gen_helpers2::system_editor_needs_terminal(editor.name);
}

words_t words_for_file(line_style_t style, const std::string& file, const std::string& line)
{
    switch (style) {
    case line_style_t::plus:
        break;
    case line_style_t::colon:
        return {file + ":" + line};
    case line_style_t::goto_colon:
        return {"--goto", file + ":" + line};
    case line_style_t::line_option:
        return {"--line", line, file};
    case line_style_t::jump_option:
        return {"--jump=" + line, file};
    case line_style_t::goto_option:
        return {"-goto:" + line, file};
    }
    return {"+" + line, file};
}

std::string find_program_asking(const std::string& name, const asked_place_t& at)
{
    if (at && name.find('/') == std::string::npos)
        touch_folders_of_path(at);
    else if (at)
        at(gen_helpers2::path_t(name).parent().as_string());
    std::string found = gen_helpers2::find_program(name);
    if (at)
        at(std::string());
    return found;
}

bool add_terminal(words_t& words)
{
    // The desktop's own choice first.
    static const terminal_t terminals[] = {
        {"x-terminal-emulator", {"-e"}},
        {"xdg-terminal-exec", {}},
        {"gnome-terminal", {"--"}},
        {"kgx", {"--"}},
        {"konsole", {"-e"}},
        {"xfce4-terminal", {"-x"}},
        {"mate-terminal", {"-x"}},
        {"lxterminal", {"-e"}},
        {"terminator", {"-x"}},
        {"alacritty", {"-e"}},
        {"kitty", {}},
        {"foot", {}},
        {"urxvt", {"-e"}},
        {"xterm", {"-e"}},
        {"st", {"-e"}},
    };
    for (const terminal_t& terminal : terminals) {
        const std::string program = gen_helpers2::find_program(terminal.program);
        if (program.empty())
            continue;
        words.insert(words.begin(), terminal.before_command.begin(), terminal.before_command.end());
        words.insert(words.begin(), program);
        return true;
    }
    return false;
}

// What follows the program in the command line; false when that does not begin with it.
bool rest_after(const std::string& executable, const std::string& command_line, std::string& rest)
{
    constexpr char blanks[] = " \n\r\t";
    if (executable.empty() || command_line.compare(0, executable.size(), executable) != 0)
        return false;
    rest = command_line.substr(executable.size());
    if (!rest.empty() && rest.find_first_of(blanks) != 0)
        return false;
    rest.erase(0, std::min(rest.find_first_not_of(blanks), rest.size()));
    return true;
}

// A program is taken as it stands, blanks and all: split at a blank, the path of one that is gone may lead to
// another program. Only a variable's command, which people write as they would type it, is read by the rules
// of quoting where it is no program as it stands.
bool take_apart(const system_editor_t& editor, words_t& words, editor_failure_t& failure,
                const asked_place_t& at)
{
    const auto fail = [&](reason_t reason) {
        failure.reason = reason;
        return false;
    };
    failure.program = editor.executable;
    if (editor.command_line.find_first_not_of(" \n\r\t") == std::string::npos)
        return fail(reason_t::no_command);
    std::string arguments;
    std::string program;
    if (rest_after(editor.executable, editor.command_line, arguments))
        program = find_program_asking(editor.executable, at);
    if (!program.empty()) {
        words.clear();
        if (!arguments.empty() && !gen_helpers2::split_command_line(arguments, words))
            return fail(reason_t::bad_quotes);
        words.insert(words.begin(), program);
        return true;
    }
    if (editor.name != editor_data_t::env_var_editor_name) {
        if (failure.program.empty())
            failure.program = editor.command_line;
        return fail(reason_t::not_found);
    }
    if (!gen_helpers2::split_command_line(editor.command_line, words))
        return fail(reason_t::bad_quotes);
    failure.program = words.front();
    program = find_program_asking(words.front(), at);
    if (program.empty())
        return fail(reason_t::not_found);
    words.front() = program;
    return true;
}

struct command_t
{
    words_t words;
    editor_failure_t failure;
    bool is_whole = false;
};

} // namespace

void touch_folders_of_path(const asked_place_t& at)
{
    const std::string path = gen_helpers2::get_environ_value("PATH");
    for (std::size_t start = 0; start <= path.size();) {
        const std::size_t end = std::min(path.find(':', start), path.size());
        const gen_helpers2::path_t folder(path.substr(start, end - start));
        at(folder.as_string());
        static_cast<void>(folder.exists());
        start = end + 1;
    }
    at(std::string());
}

bool find_editor_program(const system_editor_t& editor, std::vector<std::string>& words,
                         editor_failure_t& failure, const asked_place_t& at)
{
    return take_apart(editor, words, failure, at);
}

std::string describe_editor_command(const system_editor_t& editor, const std::string& file,
                                    const std::string& line, editor_failure_t& failure,
                                    const asked_place_t& at)
{
    words_t words;
    if (!take_apart(editor, words, failure, at))
        return std::string();
    const known_editor_t known = known_by(words.front());
    if (runs_in_terminal(editor, known, words) && !add_terminal(words))
        failure.reason = reason_t::no_terminal;
    std::string command = gen_helpers2::join_command_line(words);
    for (const std::string& word : words_for_file(known.style, file, line))
        command += " " + word;
    return command;
}

bool compose_editor_command(const system_editor_t& editor, const gen_helpers2::path_t& file, int line,
                            std::vector<std::string>& words, editor_failure_t& failure,
                            const asked_place_t& at)
{
    if (!take_apart(editor, words, failure, at))
        return false;
    const auto full_path = gen_helpers2::stdpaths::get_working_dir() / file;
    const known_editor_t known = known_by(words.front());
    const bool in_terminal = runs_in_terminal(editor, known, words);
    const words_t last = line < 1 ? words_t{full_path.as_string()}
                                  : words_for_file(known.style, full_path.as_string(), std::to_string(line));
    words.insert(words.end(), last.begin(), last.end());
    failure.command = gen_helpers2::join_command_line(words);
    if (!file.exists()) {
        failure.reason = reason_t::no_file;
        return false;
    }
    if (in_terminal && !add_terminal(words)) {
        failure.reason = reason_t::no_terminal;
        return false;
    }
    failure.command = gen_helpers2::join_command_line(words);
    return true;
}

// Folders of PATH may hang, and so may those of the file and the program.

bool is_editor_installed(const system_editor_t& editor)
{
    const auto command = std::make_shared<command_t>();
    const bool answered =
        ask_disk([=] { command->is_whole = take_apart(editor, command->words, command->failure, {}); },
                 patience_with_path);
    return !answered || command->is_whole;
}

bool get_editor_command(const system_editor_t& editor, const gen_helpers2::path_t& file, int line,
                        words_t& words, editor_failure_t& failure)
{
    failure = editor_failure_t();
    failure.editor = editor.display_name;
    failure.file = file.as_string();
    const auto command = std::make_shared<command_t>();
    command->failure = failure;
    const bool answered = ask_disk(
        [=] {
            command->is_whole = compose_editor_command(editor, file, line, command->words, command->failure);
        },
        patience_on_ok);
    if (!answered) {
        failure.reason = reason_t::no_answer;
        failure.program = editor.executable;
        return false;
    }
    words = std::move(command->words);
    failure = std::move(command->failure);
    return command->is_whole;
}

} // namespace commondlg3
