/// @file
/// Length limits of text controls that hold however a text comes in: typed, pasted, dropped, or written by
/// the program. The toolkit refuses a text that is too long for a single line as a whole, and lets any
/// through where there are several. GUI thread.
#pragma once

#include "wx_helpers1/export.h"

#include <functional>

class wxSearchCtrl;
class wxTextCtrl;

namespace wx_helpers1 {

/// Makes a control of a single line keep what fits of a text that does not fit, and raise wxEVT_TEXT_MAXLEN
/// once the insertion has ended, from the event loop. The limit is the one that SetMaxLength() was given.
/// @since 3.1
WX_HELPERS1_EXPORT void keep_what_fits(wxTextCtrl* ctrl);

/// Lets cut_text() be called from the control's own text events. For controls of several lines.
/// @since 3.1
WX_HELPERS1_EXPORT void follow_insertions(wxTextCtrl* ctrl);

/// Cuts the control's text to its first `length` characters and calls `done`.
///
/// Whoever inserts a text holds on to its place in the control, which may not change under it: during an
/// insertion the cut is made as it ends, still before the call that inserts returns, and `done` comes from
/// the event loop. Otherwise both are done at once.
/// @since 3.1
WX_HELPERS1_EXPORT void cut_text(wxTextCtrl* ctrl, long length, std::function<void()> done);

/// Ends what the toolkit does for the control together with it. A paste waits for the program that owns the
/// clipboard; when the answer comes after the control went, the toolkit would still tell it.
/// @since 3.1
WX_HELPERS1_EXPORT void hear_nothing_when_gone(wxTextCtrl* ctrl);

/// Lets a search field keep the first 1000 characters of what is put into it: more than anybody looks for, and
/// few enough to be shaped anew at each key, which takes the toolkit 40 ms where there are 15,000.
/// @since 3.1
WX_HELPERS1_EXPORT void limit_search(wxSearchCtrl* field);

} // namespace wx_helpers1
