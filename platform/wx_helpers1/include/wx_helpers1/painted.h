/// @file
/// Learning when a window is really on the screen: for scripts that drive a program, pictures, and
/// measurements. GUI thread.
#pragma once

#include "wx_helpers1/export.h"

#include <wx/gdicmn.h>
#include <wx/image.h>

#include <functional>
#include <string>

class wxTopLevelWindow;

namespace wx_helpers1 {

/// Calls back once, with the next top-level window that opens after this call, when it has been painted and
/// nothing else is left to do. A window opened before, and menus and tool tips, do not count.
WX_HELPERS1_EXPORT void when_next_window_is_painted(std::function<void(wxTopLevelWindow*)> callback);

/// What the screen shows in a rectangle of it; not valid where the desktop does not tell. At a window scale
/// of 2 the picture is twice as large as the rectangle.
/// @since 3.1
WX_HELPERS1_EXPORT wxImage get_screen_pixels(const wxRect& rect);

/// Writes what the screen shows where the window is, frame included, as a PNG file; under Wayland, what the
/// window draws. False when it cannot.
WX_HELPERS1_EXPORT bool save_picture(const wxTopLevelWindow& window, const std::string& file);

} // namespace wx_helpers1
