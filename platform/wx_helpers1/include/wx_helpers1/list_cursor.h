#pragma once

#include "wx_helpers1/export.h"

class wxWindow;

namespace wx_helpers1 {

/// Has the arrow keys of a native list or tree go on from the row that is selected, and scrolls to it. The
/// toolkit's own way of selecting leaves the keys where they were. Not while the list tells of a selection: it
/// would set its own cursor afterwards. GUI thread.
/// @since 3.1
WX_HELPERS1_EXPORT void move_cursor_to_selection(wxWindow* list);

} // namespace wx_helpers1
