/// @file
/// Opening a source file at a line, in the editor that the user chose.
///
///     open_in_editor(data.get_editor(language, name), file, line, [this](const editor_failure_t& failure) {
///         show_editor_failure(failure, this);
///     });
///
/// An editor's executable is taken as it stands, its arguments are read by the shell's rules of quoting, but
/// by no shell: `;` and `$` do nothing. The variable's editor is read so as a whole where it is no program as
/// it stands: `code --wait` and `"/opt/my editor/ed" -n` do what they say. Editors of a terminal get one. How
/// an editor wants to be told the line is known by its program; one that is not known gets `+<line>` before
/// the file. GUI thread.
#pragma once

#include "commondlg3/export.h"

#include <gen_helpers2/path.h>
#include <gen_helpers2/system_editor.h>

#include <functional>
#include <string>
#include <vector>

class wxWindow;

namespace commondlg3 {

/// Why an editor did not open a file.
struct COMMONDLG3_EXPORT editor_failure_t
{
    /// What went wrong.
    enum class reason_t
    {
        no_command,  ///< the editor has none
        bad_quotes,  ///< a quotation mark in its command lacks its counterpart
        not_found,   ///< its program is not there, or must not be run
        no_terminal, ///< it needs one, and none was found
        no_file,     ///< the file is not there
        not_started, ///< the system refused; see `details`
        ended,       ///< it ended at once, by `signal` or with `exit_code`
        no_answer    ///< a folder in which it is looked for does not answer @since 3.1
    };

    reason_t reason = reason_t::no_command;
    std::string editor;  ///< its display name
    std::string program; ///< what it starts, as far as that is known
    std::string
        command; ///< all that was to be run, as it would be typed in a shell; empty before it is known
    std::string file;
    std::string details;
    int exit_code = 0;
    int signal = 0;

    /// One or two translated sentences: what happened and what to do.
    std::string get_text() const;
};

/// The command that opens the file at the line, terminal included: program and arguments.
/// @param line from 1; below 1 none is told
/// @return false, with `failure` saying why, if there can be no such command
COMMONDLG3_EXPORT bool get_editor_command(const gen_helpers2::system_editor_t& editor,
                                          const gen_helpers2::path_t& file, int line,
                                          std::vector<std::string>& words, editor_failure_t& failure);

/// Starts the editor and does not wait for it.
/// @param failed called at most once: before this returns, or later if the editor ends with an error within
/// ten seconds; after that, ending is the user's affair. May be empty. Takes care that what it uses is alive.
/// @return whether the editor was started
COMMONDLG3_EXPORT bool open_in_editor(const gen_helpers2::system_editor_t& editor,
                                      const gen_helpers2::path_t& file, int line,
                                      std::function<void(const editor_failure_t&)> failed);

/// Whether the editor's program can be found now; true when the disk does not answer. An editor without a
/// command has none.
COMMONDLG3_EXPORT bool is_editor_installed(const gen_helpers2::system_editor_t& editor);

/// A message window: what happened, and the command.
COMMONDLG3_EXPORT void show_editor_failure(const editor_failure_t& failure, wxWindow* parent);

} // namespace commondlg3
