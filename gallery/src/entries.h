#pragma once

#include <nlohmann/json.hpp>

#include <functional>
#include <string>
#include <vector>

class wxWindow;

namespace gallery {

/// One window or page that the gallery can open.
struct entry_t
{
    std::string id;       ///< names the entry's texts in the catalog, and its picture
    std::string category; ///< catalog key
    std::string object;   ///< resource object, or class where there is none
    std::string source;   ///< file of the gallery's sources that opens it
    nlohmann::json data;  ///< what it is opened with from the list, and when a script gives nothing else
    /// Opens it over the parent (null: over nothing) and returns when it has ended.
    std::function<int(const nlohmann::json& data, wxWindow* parent)> open;
};

/// With sample texts in the present language; they stay as long as the program.
const std::vector<entry_t>& entries();

/// Opens the object or entry with this data, or where that is null with that of its first entry, over the
/// parent. False when there is no such object.
bool open_object(const std::string& object, const nlohmann::json& data, wxWindow* parent = nullptr);

} // namespace gallery
