#pragma once

#include <string>

class wxTextCtrl;

namespace commondlg3 {

/// validate_path() of a path, without marking the field: for a caller that knows more and marks it once.
/// @return whether the text can be a path
bool clean_path_field(wxTextCtrl* ctrl, const std::string& disabled_chars);

} // namespace commondlg3
