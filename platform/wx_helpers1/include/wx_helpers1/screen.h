#pragma once

#include "wx_helpers1/export.h"

class wxWindow;

namespace wx_helpers1 {

/// The index of the display that a window is on, or will be: the one of the nearest of its parents that is
/// shown, 0 when none is. Unlike the toolkit's own answer it costs no question to the display. GUI thread.
WX_HELPERS1_EXPORT unsigned display_near(const wxWindow* window);

} // namespace wx_helpers1
