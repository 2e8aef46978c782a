/// What is started for an editor, and what is in the way of that. Any thread; the disk is asked.
#pragma once

#include "commondlg3/editor_launch.h"

#include <functional>
#include <string>
#include <vector>

namespace commondlg3 {

/// Is told which folder is asked, before it is asked; empty: none that may hang.
using asked_place_t = std::function<void(const std::string& folder)>;

/// get_editor_command(), waiting for the disk.
bool compose_editor_command(const gen_helpers2::system_editor_t& editor, const gen_helpers2::path_t& file,
                            int line, std::vector<std::string>& words, editor_failure_t& failure,
                            const asked_place_t& at = {});

/// Whether there is a program for it.
bool find_editor_program(const gen_helpers2::system_editor_t& editor, std::vector<std::string>& words,
                         editor_failure_t& failure, const asked_place_t& at = {});

/// The command with words in place of the file and the line, as people read it; empty without a program.
std::string describe_editor_command(const gen_helpers2::system_editor_t& editor, const std::string& file,
                                    const std::string& line, editor_failure_t& failure,
                                    const asked_place_t& at = {});

/// Looks at the folders of PATH one by one, for `at` to know of one that hangs.
void touch_folders_of_path(const asked_place_t& at);

} // namespace commondlg3
