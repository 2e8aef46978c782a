/// The library's two small dialogs, as a script opens them.
#pragma once

#include <nlohmann/json.hpp>

class wxWindow;

namespace gallery {

constexpr char ask_object[] = "dlg.ask";
constexpr char clipboard_object[] = "dlg.clipboard";

/// {"filename": ...}
int open_ask_dialog(const nlohmann::json& data, wxWindow* parent);
int open_clipboard_dialog(const nlohmann::json& data, wxWindow* parent);

} // namespace gallery
