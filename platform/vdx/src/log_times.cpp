#include "log_times.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>

namespace vdxcfrw7 {
namespace {

constexpr int second = 1000; // milliseconds
constexpr int minute = 60 * second;
constexpr int hour = 60 * minute;

template <class... Numbers>
std::string format(const char* pattern, Numbers... numbers)
{
    char text[64];
    const int length = std::snprintf(text, sizeof text, pattern, numbers...);
    return std::string(text, static_cast<std::size_t>(std::clamp(length, 0, int(sizeof text) - 1)));
}

} // namespace

std::int64_t time_now()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

std::string shown_time(std::int64_t time, CEventLog::times_t kind, std::int64_t began)
{
    if (time == line_store_t::no_time || kind == CEventLog::times_t::none)
        return {};
    if (kind == CEventLog::times_t::clock) {
        const std::time_t seconds = static_cast<std::time_t>(time / second);
        std::tm parts{};
        if (!localtime_r(&seconds, &parts))
            return {};
        return format("%02d:%02d:%02d.%03d", parts.tm_hour, parts.tm_min, parts.tm_sec,
                      static_cast<int>(time % second));
    }
    // The clock may have been set back since.
    const std::int64_t passed = std::max<std::int64_t>(0, time - began);
    return format("+%lld:%02d:%02d.%03d", static_cast<long long>(passed / hour),
                  static_cast<int>(passed % hour / minute), static_cast<int>(passed % minute / second),
                  static_cast<int>(passed % second));
}

std::string copied_time(std::int64_t time)
{
    const std::time_t seconds = static_cast<std::time_t>(time / second);
    std::tm parts{};
    if (time == line_store_t::no_time || !localtime_r(&seconds, &parts))
        return {};
    return format("%04d-%02d-%02d %02d:%02d:%02d.%03d ", parts.tm_year + 1900, parts.tm_mon + 1,
                  parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec, static_cast<int>(time % second));
}

std::string widest_time(CEventLog::times_t kind)
{
    return kind == CEventLog::times_t::none    ? ""
           : kind == CEventLog::times_t::clock ? "00:00:00.000"
                                               : "+000:00:00.000";
}

std::string shown_length(std::uint64_t bytes)
{
    return format("\u2026 %.1f MB", static_cast<double>(bytes) / 1e6);
}

std::string shown_count(std::uint64_t count)
{
    if (count >= 1000000000)
        return format("\u00d7 %.1f G", static_cast<double>(count) / 1e9);
    if (count >= 1000000)
        return format("\u00d7 %.1f M", static_cast<double>(count) / 1e6);
    const int thousands = static_cast<int>(count / 1000), rest = static_cast<int>(count % 1000);
    return thousands ? format("\u00d7 %d,%03d", thousands, rest) : format("\u00d7 %d", rest);
}

} // namespace vdxcfrw7
