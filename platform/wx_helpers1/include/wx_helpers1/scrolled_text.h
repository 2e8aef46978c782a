/// @file
/// What the toolkit lacks for texts that are read and may scroll. GUI thread; null does nothing.
#pragma once

#include "wx_helpers1/export.h"

class wxTextCtrl;
class wxWindow;

namespace wx_helpers1 {

/// Shows that a window has the keyboard by a frame around it, drawn by its parent: three pixels of that
/// around the window must be free. Once a window.
/// @since 3.1
WX_HELPERS1_EXPORT void show_focus_frame(wxWindow* window);

/// Keeps a text of several lines that are wrapped from scrolling sideways for the sake of a blank at the end
/// of one.
/// @since 3.1
WX_HELPERS1_EXPORT void scroll_only_down(wxTextCtrl* text);

} // namespace wx_helpers1
