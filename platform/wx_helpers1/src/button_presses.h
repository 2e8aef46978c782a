#pragma once

namespace wx_helpers1 {

/// A button that the keyboard presses looks pressed for a quarter of a second and acts only then, also when
/// its window has ended by other means meanwhile: it would answer the next message that the same window
/// shows. From here on a button that is hidden forgets that it was pressed.
void forget_presses_of_hidden_buttons();

} // namespace wx_helpers1
