/// @file
/// Checking the text of path fields while it is typed and on OK.
#pragma once

#include "commondlg3/export.h"
#include "commondlg3/path_messages.h"

#include <gen_helpers2/path.h>

#include <wx/textctrl.h>

#include <optional>
#include <string>
#include <vector>

namespace commondlg3 {

/// Takes forbidden characters out of a text field as they are typed, and marks the field: red with a tool tip
/// that lists the characters, or plain. Use it from a field's wxEVT_TEXT handler; for a verdict on the path,
/// use a page's check_file_or_folder(), which calls this.
///
///     validate_path(m_name, false, commondlg3::disabled_file_chars);
///
/// Caret and selection stay on the characters they were on. Putting the cleaned text back raises no event. An
/// empty field is acceptable, and marked nevertheless. Without a field, or without the message catalog,
/// nothing happens. GUI thread.
///
/// @param check_path whether the text must be a path that the system would take
/// @param disabled_chars ASCII, see name_chars.h
/// @return whether the text is acceptable; removed characters do not make it unacceptable
template <class Ctrl>
bool validate_path(Ctrl* ctrl, bool check_path, const std::string& disabled_chars);

extern template COMMONDLG3_EXPORT bool validate_path<wxTextCtrl>(wxTextCtrl* ctrl, bool check_path,
                                                                 const std::string& disabled_chars);

/// The colour of a path field whose text cannot be used: the toolkit's red as it is, in every theme. It never
/// stands alone: the field's tool tip and description say what is wrong.
COMMONDLG3_EXPORT wxColour get_path_error_colour();

/// The tool tip that lists the characters of a set that cannot be used.
COMMONDLG3_EXPORT std::string get_restricted_chars_text(const std::string& chars);

// What the page's checks decide, without a window. Any thread.

/// Full path of a file by its name in the first of these folders that has it; folders that are no absolute
/// path are passed over. A name that is an absolute path is looked for itself. Empty when there is none.
COMMONDLG3_EXPORT std::string find_in_folders(const std::string& name,
                                              const std::vector<std::string>& folders);

/// Whether a path can be used. @return why not; nothing when it can
COMMONDLG3_EXPORT std::optional<path_message_t> check_path(gen_helpers2::path_t path, bool must_exist);

} // namespace commondlg3
