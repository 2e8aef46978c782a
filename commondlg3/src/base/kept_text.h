#pragma once

#include <string>

namespace commondlg3 {

/// A catalog text without arguments that is translated once a language and kept: for what is asked for at
/// every key press. GUI thread.
const std::string& kept_text(const char* key);

} // namespace commondlg3
