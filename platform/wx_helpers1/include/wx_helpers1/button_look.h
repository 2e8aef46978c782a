#pragma once

#include "wx_helpers1/export.h"

class wxButton;
class wxTopLevelWindow;

namespace wx_helpers1 {

/// Has a button look as the theme has those look that take something away for good; or as any other again.
/// For answers like "Delete", and only where the window says what is at stake. GUI thread.
/// @since 3.1
WX_HELPERS1_EXPORT void set_destructive_look(wxButton* button, bool destructive);

/// From now on Return presses no button of the window unless it has the focus. The toolkit's
/// SetDefaultItem(nullptr) forgets the button itself, but the display still presses it. GUI thread.
/// @since 3.1
WX_HELPERS1_EXPORT void clear_default_button(wxTopLevelWindow* window);

} // namespace wx_helpers1
