#pragma once

#include "wx_helpers1/export.h"

#include <string>

class wxDirDialog;
class wxFileDialog;

namespace wx_helpers1 {

/// The bytes of the path that the user chose, after the dialog ended with OK: the toolkit's own answer is
/// empty for a name that is not UTF-8. GUI thread.
[[nodiscard]] WX_HELPERS1_EXPORT std::string get_chosen_path(const wxFileDialog& dialog);
[[nodiscard]] WX_HELPERS1_EXPORT std::string get_chosen_path(const wxDirDialog& dialog);

/// Lets a chooser of folders that is accepted while no folder is selected end as a cancelled one: the toolkit
/// would take the first of none. Before it is shown; for one showing. GUI thread.
/// @since 3.1
WX_HELPERS1_EXPORT void cancel_empty_choice(wxDirDialog& dialog);

} // namespace wx_helpers1
