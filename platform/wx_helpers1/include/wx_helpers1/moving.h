#pragma once

#include "wx_helpers1/export.h"

class wxWindow;

namespace wx_helpers1 {

/// Moves a window into another parent, shown or hidden. The toolkit would show it only when it is idle, and
/// keys that come before that would be lost. Sizers are the caller's affair. GUI thread.
WX_HELPERS1_EXPORT void move_window(wxWindow* window, wxWindow* parent, bool shown);

} // namespace wx_helpers1
