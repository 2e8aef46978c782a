/// @file
/// Lists of directories as data: what was found where a directory should be, and what is to be said about a
/// row. Without a window; any thread.
#pragma once

#include "commondlg3/export.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace commondlg3 {

/// What is where a path leads.
struct dir_state_t
{
    /// What was found there.
    enum class kind_t
    {
        unknown,   ///< nobody has looked yet
        directory, ///< it is one
        file,      ///< something that is no directory
        missing    ///< nothing, a dead link, or no path at all
    };
    kind_t kind = kind_t::unknown;
    // Both together are the same for every name of the same directory.
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
};

/// Looks at the disk, and waits for it: a network folder may take its time. Relative paths begin at the
/// process's own directory.
COMMONDLG3_EXPORT dir_state_t examine_dir(const std::string& path);

/// A row as mark_dirs() sees it.
struct listed_dir_t
{
    std::string_view path; ///< in its normal form
    bool recursive = false;
    dir_state_t state;
    /// Nobody looks into it: it is not marked, and no other because of it.
    /// @since 3.1
    bool skipped = false;
};

/// What is to be said about a row.
struct dir_mark_t
{
    /// The first that holds counts.
    enum class kind_t
    {
        none,            ///< nothing is to be said
        not_a_directory, ///< it leads to something else
        missing,         ///< it leads nowhere
        duplicate,       ///< the same path stands further up
        shadowed,        ///< what it leads to is searched already because of a row further up
        relative,        ///< depends on where the program was started
        waiting          ///< not looked at yet
    };
    kind_t kind = kind_t::none;
    std::size_t other = 0; ///< the row further up

    friend bool operator==(const dir_mark_t& a, const dir_mark_t& b)
    {
        return a.kind == b.kind && a.other == b.other;
    }
};

/// What is to be said about each row. A search goes through the list from its beginning, so that of several
/// rows for one place only the first is of use: another name of the same directory, and a directory below one
/// that is searched with all folders below it, find nothing more.
COMMONDLG3_EXPORT std::vector<dir_mark_t> mark_dirs(const std::vector<listed_dir_t>& dirs);

/// The directories in a text that was pasted: one a line, or several between colons as in the variable PATH.
/// A colon that no path follows belongs to a name. Blanks around and addresses ("file:///usr") are
/// understood.
COMMONDLG3_EXPORT std::vector<std::string> split_dirs(const std::string& text);

/// What is kept of a typed directory: without blanks around it, a path in its normal form. "~" and "$NAME"
/// are characters like others.
COMMONDLG3_EXPORT std::string typed_dir(const std::string& text);

} // namespace commondlg3
