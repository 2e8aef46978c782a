/// @file
/// Characters that names of files and folders must not have, because file systems or shells give them a
/// meaning.
///
///     if (commondlg3::replace_disabled_chars(name)) // removed, nothing stands in for them
///         tell("Some characters were left out");
///
/// Whoever holds a full path hands over its last name: a text is looked at as a whole. Sets are ASCII
/// characters; texts are bytes of any encoding that keeps ASCII, UTF-8 as a rule. Nothing here fails. Any
/// thread.
#pragma once

#include "commondlg3/export.h"

#include <string>

namespace commondlg3 {

/// What names of files must not have: what some system refuses.
inline constexpr char disabled_file_chars[] = "\\/:*?\"<>|";
/// The smaller set on purpose: a folder is typed as a path.
inline constexpr char disabled_folder_chars[] = "*\"<>|";
/// What must not stand in a text that is typed for a shell.
inline constexpr char disabled_shell_chars[] = "\"<>|";

/// False for a name that is empty or no path; otherwise whether it has none of these characters (true when
/// there are none to look for).
COMMONDLG3_EXPORT bool check_file_name_for_chars(const std::string& name, const std::string& chars);
/// The same with the characters that folders must not have.
COMMONDLG3_EXPORT bool check_folder_name_for_chars(const std::string& name);
/// The same for any text: the empty one is accepted.
COMMONDLG3_EXPORT bool check_string_for_disabled_symbols(const std::string& text, const std::string& chars);

/// The character at a position of the set, as a text, for messages that list them all; empty beyond the set.
COMMONDLG3_EXPORT std::string create_disabled_char_string(int index);
COMMONDLG3_EXPORT std::string create_disabled_char_string(const std::string& chars, int index);
/// The same of the set for folders.
COMMONDLG3_EXPORT std::string create_disabled_folder_char_string(int index);

/// Removes these characters wherever they stand; true when there was one.
COMMONDLG3_EXPORT bool replace_disabled_chars(std::string& text, const std::string& chars);
COMMONDLG3_EXPORT bool replace_disabled_chars(std::string& text);
/// The same with the characters that folders must not have.
COMMONDLG3_EXPORT bool replace_disabled_chars_in_folder(std::string& text);

} // namespace commondlg3
