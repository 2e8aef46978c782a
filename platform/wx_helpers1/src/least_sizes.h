#pragma once

namespace wx_helpers1 {

/// The toolkit gives its widgets whatever room there is, also less than they need: while a window is built,
/// and in one made tiny. GTK's scroll bars, check boxes, spin buttons, notebooks and menu bars then compute
/// with negative sizes and complain. From here on each is measured and laid out in its least size at least;
/// what does not fit is clipped.
void keep_least_sizes();

} // namespace wx_helpers1
