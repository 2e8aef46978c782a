#pragma once

#include "wx_helpers1/export.h"

class wxTopLevelWindow;
class wxWindow;

namespace wx_helpers1 {

/// Moves a window into another parent, shown or hidden. The toolkit would show it only when it is idle:
/// keys that come before that would be lost, and for what is hidden no room is made; and the focus inside it
/// would be lost. Sizers are the caller's affair. GUI thread.
/// @since 3.1
WX_HELPERS1_EXPORT void move_window(wxWindow* window, wxWindow* parent, bool shown);

/// Lets Tab pass through the window's parents to it, once it is shown there. A panel without controls takes
/// the keyboard itself, and keeps it from what is in it; the toolkit looks for controls when one is added,
/// and counts only those that are shown then: what is hidden while it is added is never reached. GUI
/// thread.
/// @since 3.1
WX_HELPERS1_EXPORT void let_keys_into(wxWindow* child);

/// Lets the window become smaller than its inside was told to be. SetClientSize() of a window that the user
/// cannot resize gives that size to the inside, where SetSize() leaves it: what is fitted by the one way and
/// then by the other would stay as high as before. Call it before SetSize(). GUI thread.
/// @since 3.1
WX_HELPERS1_EXPORT void forget_client_size(wxTopLevelWindow* window);

} // namespace wx_helpers1
