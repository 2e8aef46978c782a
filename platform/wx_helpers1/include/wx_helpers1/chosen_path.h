#pragma once

#include "wx_helpers1/export.h"

#include <string>

class wxFileDialog;

namespace wx_helpers1 {

/// The bytes of the path that the user chose, after the dialog ended with OK: the toolkit's own answer is
/// empty for a name that is not UTF-8. GUI thread.
WX_HELPERS1_EXPORT std::string get_chosen_path(const wxFileDialog& dialog);

} // namespace wx_helpers1
