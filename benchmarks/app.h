#pragma once

#include <functional>

class wxFrame;

namespace bench {

/// Runs `work` inside the toolkit with a main window that is on the screen, and returns what it returns.
int run_in_app(int argc, char** argv, std::function<int(wxFrame*)> work);

/// Lets the event loop turn until it has had nothing to do for that long.
void wait_until_quiet(int milliseconds);

} // namespace bench
