#pragma once

#include "wx_helpers1/export.h"

namespace wx_helpers1 {

/// The direction of windows that are made from now on: right to left mirrors their layout. GUI thread.
WX_HELPERS1_EXPORT void set_right_to_left(bool right_to_left);

} // namespace wx_helpers1
