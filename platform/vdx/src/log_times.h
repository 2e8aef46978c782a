#pragma once

#include "vdx/event_log.h"

#include <cstdint>
#include <string>

namespace vdxcfrw7 {

/// Now, in milliseconds since 1970.
std::int64_t time_now();

/// What stands before a line: "09:05:07.250" or "+1:05:07.250"; empty for a time that nobody knows.
/// @param began when the line's entry did
std::string shown_time(std::int64_t time, CEventLog::times_t kind, std::int64_t began);
/// With its date and a blank behind, to be copied: "2026-03-01 09:05:07.250 "; empty where nobody knows it.
std::string copied_time(std::int64_t time);
/// As wide as any of that kind.
std::string widest_time(CEventLog::times_t kind);

/// For a line that shows its first part: how long it is; "\u2026 104.9 MB".
std::string shown_length(std::uint64_t bytes);
/// "\u00d7 4,096", short for a million and more.
std::string shown_count(std::uint64_t count);

} // namespace vdxcfrw7
