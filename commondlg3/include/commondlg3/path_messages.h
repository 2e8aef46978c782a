#pragma once

namespace commondlg3 {

/// Positions in the list of path messages that every dialog, panel and page has.
enum class path_message_t
{
    nonexisting,
    nonexisting_parent_dir,
    empty_relative,
    enter_valid_path,
    invalid_file,
    invalid_directory
};

} // namespace commondlg3
