#pragma once

#include <commondlg3/silenced_messages_pp.h>

#include <nlohmann/json.hpp>

class wxWindow;

namespace gallery {

inline constexpr char silenced_object[] = "pref.silenced_messages";

/// What the user has silenced, in the preferences' file.
commondlg3::silenced_messages_t load_silenced_messages();

/// Opens the page alone and reports by JSON lines; OK writes what was brought back. With {"messages": [...]}
/// these are listed, and nothing is written.
int open_silenced_page(const nlohmann::json& data, wxWindow* parent);

} // namespace gallery
