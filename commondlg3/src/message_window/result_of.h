#pragma once

#include "commondlg3/message_window.h"

namespace commondlg3 {

/// The answer that a message's window gives when it ended with this identifier.
int result_of(int id, message_window_t::button_type_t button_type);

} // namespace commondlg3
