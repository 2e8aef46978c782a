/// Starting the product anew.
#pragma once

namespace gallery {

/// Closes the main window, after what is going on, and has main() start the program again.
void request_restart();
bool is_restart_requested();

} // namespace gallery
