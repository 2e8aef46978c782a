#pragma once

#include <functional>
#include <string>

namespace gallery {

/// Writes a picture of the main window and of each entry's window into the folder, each closed again after
/// its picture, then calls `done` with the number of pictures that failed. Returns at once; runs in the event
/// loop.
void take_pictures(const std::string& folder, std::function<void(int failed)> done);

} // namespace gallery
