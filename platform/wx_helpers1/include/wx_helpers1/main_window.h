#pragma once

#include "wx_helpers1/export.h"

class wxWindow;

namespace wx_helpers1 {

/// The application's main window, or null when there is no application or it has none (yet, or any more).
/// GUI thread; the window stays the toolkit's.
WX_HELPERS1_EXPORT wxWindow* get_main_window();

} // namespace wx_helpers1
