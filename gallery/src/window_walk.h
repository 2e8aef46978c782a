#pragma once

#include <nlohmann/json.hpp>

#include <functional>
#include <string>
#include <vector>

class wxTopLevelWindow;
class wxWindow;

namespace gallery {

/// A window on the way through all of them.
struct walk_step_t
{
    std::string name;
    std::function<int()> open; ///< returns when the window has ended; null: the main window, which stays open
};

/// The main window and each entry.
std::vector<walk_step_t> walk_of_entries();

/// Waits for something that a window is to be visited after, and then calls `go_on`.
using walk_wait_t = std::function<void(const std::string& name, std::function<void()> go_on)>;

/// Opens each, calls `visit` once it is painted and at rest, and after `until` where that is given, and
/// closes it again; then calls `done`. Returns at once; runs in the event loop.
void walk_windows(std::vector<walk_step_t> steps,
                  std::function<void(const std::string& name, wxTopLevelWindow& window)> visit,
                  std::function<void()> done, walk_wait_t until = nullptr);

} // namespace gallery
