/// What the gallery tells a script: one line of JSON on standard output for each event, flushed at once.
#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace gallery {

/// {"object": ..., "event": "opened"}
void report_opened(const std::string& object);
/// {"object": ..., "event": "result", "result": ..., "data": {...}}
void report_result(const std::string& object, int result, const nlohmann::json& data);
/// {"object": ..., "event": "signal", "name": ..., "value": ...}
void report_signal(const std::string& object, const std::string& name, const nlohmann::json& value);
/// {"object": ..., "event": "error", "message": ...}
void report_error(const std::string& object, const std::string& message);

/// {"object": ..., "event": "places", "places": [[name, [x, y, width, height]], ...]}
void report_window_places(const std::string& object, const nlohmann::json& places);

/// {"object": ..., "event": "finding", ...}
void report_finding(nlohmann::json finding);

/// The string under that name, or the default when there is none or it is of another type.
std::string get_string(const nlohmann::json& data, const char* name, const std::string& otherwise);
int get_int(const nlohmann::json& data, const char* name, int otherwise);
bool get_bool(const nlohmann::json& data, const char* name, bool otherwise);

} // namespace gallery
