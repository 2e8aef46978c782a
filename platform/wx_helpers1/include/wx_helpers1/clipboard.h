#pragma once

#include "wx_helpers1/export.h"

#include <string>

namespace wx_helpers1 {

/// Puts a text on the clipboard. False when another program holds it; the clipboard is then as it was. GUI
/// thread.
WX_HELPERS1_EXPORT bool copy_to_clipboard(const std::string& text);

} // namespace wx_helpers1
