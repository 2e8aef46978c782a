#pragma once

#include "gen_helpers2/error_code.h"
#include "gen_helpers2/export.h"

#include <chrono>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace gen_helpers2 {

/// Takes a command line apart by the shell's rules of quoting, without a shell: blanks separate, quotes and
/// backslashes protect; variables, patterns and operators mean nothing.
///
/// @return false, leaving `words` as it was, if a quote is not closed or there is no word at all
GEN_HELPERS2_EXPORT bool split_command_line(const std::string& text, std::vector<std::string>& words);

/// The way back; words are quoted only where they must be.
GEN_HELPERS2_EXPORT std::string join_command_line(const std::vector<std::string>& words);

/// The full path of a program by its name (looked for in "PATH") or path; empty if there is none that may be
/// run.
GEN_HELPERS2_EXPORT std::string find_program(const std::string& name);

/// How a program ended.
struct program_end_t
{
    int exit_code = 0; ///< when no signal ended it
    int signal = 0;    ///< 0: none
    std::chrono::milliseconds lived{0};

    /// Whether it ended by itself, with 0.
    bool succeeded() const { return exit_code == 0 && signal == 0; }
};

/// Starts a program and does not wait for it. It gets no input, its output is dropped, what it says on
/// standard error goes where ours does; it belongs to a session of its own, so that it outlives the terminal
/// that we may have been started from.
///
///     result = start_program({"/usr/bin/ed", "--line", "3"}, [](const program_end_t& end) { ... });
///
/// @param words the program and its arguments; not to be read by any shell
/// @param ended called once, in the thread that called this one while it runs its event loop; may be empty.
/// The program leaves nothing behind whether or not the loop runs.
/// @return why it could not be started
GEN_HELPERS2_EXPORT error_code_t start_program(const std::vector<std::string>& words,
                                               std::function<void(const program_end_t&)> ended);

/// Where a program says something.
/// @since 3.1
enum class program_output_t
{
    standard,
    error
};

/// Whether a program is to be stopped.
/// @since 3.1
enum class stop_t
{
    no,
    ask,
    force
};

/// Runs a program and gives what it says to the caller, until it has ended and nobody it started says
/// anything any more. Blocks: for workers.
///
///     result = watch_program({"/bin/sh", "-c", "make"}, folder,
///                            [](program_output_t from, std::string_view bytes) { ... },
///                            [&] { return canceled.load() ? stop_t::ask : stop_t::no; }, end);
///
/// It gets no input, no file that is open here, and a session of its own: to stop it is to stop all that it
/// has started, as far as that did not leave the session.
///
/// @param folder where it runs; empty: where we do
/// @param read called with some bytes as they come, which end anywhere
/// @param stop asked ten times a second and more. `ask` lets it end by itself within two seconds, `force`
/// within a fraction of one; then it is killed
/// @return why it could not be started
/// @since 3.1
GEN_HELPERS2_EXPORT error_code_t
watch_program(const std::vector<std::string>& words, const std::string& folder,
              const std::function<void(program_output_t, std::string_view)>& read,
              const std::function<stop_t()>& stop, program_end_t& end);

} // namespace gen_helpers2

namespace gh2 = gen_helpers2;
