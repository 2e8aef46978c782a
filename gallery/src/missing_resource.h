#pragma once

#include <string>

class wxWindow;

namespace gallery {

/// The name of the host's own catalog.
inline constexpr char catalog_name[] = "gallery";
/// The library's: a language that it has can be shown.
inline constexpr char language_catalog[] = "commondlg";

/// The full name of the host's own resource file.
std::string resource_file();

/// The text of a key in the host's own catalog.
std::string text(const std::string& key);

/// Whether the library's message windows can be loaded. Where they cannot, what they were to say goes to the
/// log.
bool can_show_messages();

/// True when the object can be loaded. Otherwise tells the user, in a message window, what is missing and
/// where it was looked for, and a script, in a JSON line.
bool check_resource(const std::string& resource_file, const std::string& object, wxWindow* parent);

} // namespace gallery
