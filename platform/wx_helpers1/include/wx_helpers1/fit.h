#pragma once

#include "wx_helpers1/export.h"

class wxTopLevelWindow;

namespace wx_helpers1 {

/// Gives a window the size that its sizer wants, and makes that its smallest.
///
/// Use it instead of wxSizer::SetSizeHints() for a window whose controls have just been made: the toolkit measures
/// text fields too low before their style is known. A window without a sizer stays as it is. GUI thread.
WX_HELPERS1_EXPORT void fit_to_contents(wxTopLevelWindow* window);

} // namespace wx_helpers1
