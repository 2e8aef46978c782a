#pragma once

#include <nlohmann/json.hpp>

#include <memory>
#include <string>

class wxWindow;

namespace commondlg3 {
class preferences_frame_t;
}

namespace gallery {

constexpr char preferences_object[] = "dlg.preferences";

/// The product's preferences, to be shown. @param first_page its name; empty: the one that was seen last
std::unique_ptr<commondlg3::preferences_frame_t> make_preferences(const std::string& first_page = {});

/// Opens the product's preferences, with {"page": name} at that page, and reports by JSON lines.
int open_preferences(const nlohmann::json& data, wxWindow* parent);

} // namespace gallery
