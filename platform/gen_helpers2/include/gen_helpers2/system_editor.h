#pragma once

#include "gen_helpers2/export.h"
#include "gen_helpers2/generic_iterator.h"
#include "gen_helpers2/path.h"

#include <string>
#include <utility>

namespace gen_helpers2 {

/// A program that opens files of some kind: what a user sees under "Open with". Bytes; texts are UTF-8
/// usually.
struct system_editor_t
{
    system_editor_t() = default;
    system_editor_t(std::string name_of_editor, std::string shown_name, std::string program,
                    std::string command)
        : name(std::move(name_of_editor)),
          display_name(std::move(shown_name)),
          executable(std::move(program)),
          command_line(std::move(command))
    {
    }

    std::string name;         ///< tells it from all others: of a registered one its identifier
    std::string display_name; ///< for people
    std::string executable;   ///< a full path where one is known, not quoted
    std::string
        command_line; ///< the executable as it stands above, then arguments as a shell would read them

    friend bool operator==(const system_editor_t& a, const system_editor_t& b)
    {
        return a.name == b.name && a.display_name == b.display_name && a.executable == b.executable &&
               a.command_line == b.command_line;
    }
    friend bool operator!=(const system_editor_t& a, const system_editor_t& b) { return !(a == b); }
};

/// Which editors are asked for.
enum system_editors_t : int
{
    default_system_editor = 0, ///< the one that opens such a file when nothing else is said
    all_system_editors = 1     ///< all that are registered, the best ones first
};

/// What became of the question. Anything above `none` means that it could not be answered.
enum system_editors_status_t : unsigned
{
    system_editors_found = 0, ///< there are some
    system_editors_none = 1,  ///< nothing is registered for such a file
    system_editors_failed = 2 ///< no path, or an unknown type of question
};

/// The applications that the user's desktop has registered for files such as this one. The kind of a file is
/// told by its name, and by its beginning where the name says nothing; it need not exist. Entries that are
/// damaged, or whose program is not installed, are none. Never throws; any thread.
GEN_HELPERS2_EXPORT system_editors_status_t get_system_editors(const path_t& file,
                                                               generic_iterator_t<system_editor_t>& editors,
                                                               int type);

/// Whether the desktop says that the registered application of that name wants a terminal to run in.
GEN_HELPERS2_EXPORT bool system_editor_needs_terminal(const std::string& name);

/// The icon of the registered application of that name, as the desktop writes it: a name for the theme, or a
/// path; empty when there is none. Any thread; asks the disk.
/// @since 3.1
GEN_HELPERS2_EXPORT std::string get_system_editor_icon(const std::string& name);

} // namespace gen_helpers2

namespace gh2 = gen_helpers2;
