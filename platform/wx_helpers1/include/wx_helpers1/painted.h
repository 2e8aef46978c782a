/// Learning when a window is really on the screen: for scripts that drive a program, pictures, and
/// measurements. GUI thread.
#pragma once

#include "wx_helpers1/export.h"

#include <functional>
#include <string>

class wxTopLevelWindow;

namespace wx_helpers1 {

/// Calls back once, with the next top-level window that opens after this call, when it has been painted and
/// nothing else is left to do. A window opened before, and menus and tool tips, do not count.
WX_HELPERS1_EXPORT void when_next_window_is_painted(std::function<void(wxTopLevelWindow*)> callback);

/// Writes what the screen shows where the window is, frame included, as a PNG file. False when it cannot.
WX_HELPERS1_EXPORT bool save_picture(const wxTopLevelWindow& window, const std::string& file);

} // namespace wx_helpers1
