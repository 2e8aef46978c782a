/// @file
/// Tool tips. GUI thread; a null window does nothing.
#pragma once

#include "wx_helpers1/export.h"

#include <string>

class wxWindow;

namespace wx_helpers1 {

/// Sets the window's tool tip. Setting a tool tip restarts the toolkit's hover timer, so that one set at
/// every key press would never show: with `only_when_changed` an unchanged text is left alone.
///
/// @param max_width in pixels; the text is wrapped to it, -1 leaves it as it is
WX_HELPERS1_EXPORT void SetTooltip(wxWindow* window, const std::string& text, int max_width = -1,
                                   bool only_when_changed = true);

/// How long a tool tip stays while the pointer rests.
class WX_HELPERS1_EXPORT wxCustomTooltip
{
public:
    /// @param milliseconds 0 lets the tool tip stay as long as the pointer does, which is also how a window
    /// begins
    static void SetHideDelay(wxWindow* window, int milliseconds);
    static int GetHideDelay(wxWindow* window);
};

} // namespace wx_helpers1
