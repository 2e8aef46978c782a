#pragma once

#include "commondlg3/message_options.h"

class wxWindow;

namespace commondlg3 {

/// Runs a message window and returns the identifier that ended it; 0 when it could not be loaded, or went
/// with its parent. The text of one that could not be loaded is in the program's log.
///
/// The window is kept, hidden, and shows the next message of the same parent as well: a window that is there
/// already opens in half the time of a new one. It goes with its parent. A message that comes while another
/// is being shown gets a window of its own. GUI thread.
int run_message_window(const message_window_t& window, const message_options_t& options, wxWindow* parent);

} // namespace commondlg3
