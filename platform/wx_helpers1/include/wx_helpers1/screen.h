#pragma once

#include "wx_helpers1/export.h"

class wxPoint;
class wxTopLevelWindow;
class wxWindow;

namespace wx_helpers1 {

/// The index of the display that a window is on, or will be: the one of the nearest of its parents that is
/// shown, 0 when none is. Unlike the toolkit's own answer it costs no question to the display. GUI thread.
WX_HELPERS1_EXPORT unsigned display_near(const wxWindow* window);

/// Puts a window where it is to be when it is shown next. The toolkit's own way is forgotten by one that was
/// shown before and is hidden now: it would come back where it was.
/// @since 3.1
WX_HELPERS1_EXPORT void place_window(wxTopLevelWindow* window, const wxPoint& position);

} // namespace wx_helpers1
