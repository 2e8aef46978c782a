#pragma once

#include <nlohmann/json.hpp>

#include <functional>
#include <string>
#include <vector>

class wxTopLevelWindow;

namespace gallery {

/// Audits the main window, each entry's window and each page of the preferences, or the window of one
/// object alone, and prints a line of JSON for each finding; then calls `done` with their number. Returns
/// at once; runs in the event loop.
void audit(const std::string& object, const nlohmann::json& data, std::function<void(int findings)> done);

/// Audits this window as it is now, and prints a line of JSON for each finding. Returns their number.
int audit_once(wxTopLevelWindow& window);

/// Prints a line of JSON with the place of each control in each of these windows, and what an audit finds.
/// With `live`, says of each window that it is waiting, and looks at it once the desktop's look has changed.
void report_places(bool live, std::function<void()> done);

/// Runs this program once for each language, theme and text scale that the arguments leave open. Returns
/// the worst exit code.
int audit_everywhere(const std::vector<std::string>& arguments);

} // namespace gallery
