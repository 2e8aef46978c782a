/// The names under which a log is kept.
#pragma once

namespace commondlg3::saved {

inline constexpr char entry[] = "message_entry_t";
inline constexpr char line[] = "message";
inline constexpr char message[] = "msg";
inline constexpr char severity[] = "severity";
inline constexpr char time[] = "time"; // beside them, where the host wants it
inline constexpr char caption[] = "cap";
inline constexpr char image[] = "img";

} // namespace commondlg3::saved
