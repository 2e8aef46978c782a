#include "json_report.h"

#include "usage_record.h"

#include <cstdio>

namespace gallery {
namespace {

void print(const nlohmann::json& line)
{
    const std::string text = line.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

const nlohmann::json* find(const nlohmann::json& data, const char* name)
{
    if (!data.is_object())
        return nullptr;
    const auto found = data.find(name);
    return found != data.end() ? &*found : nullptr;
}

} // namespace

void report_opened(const std::string& object)
{
    count_opened(object);
    print({{"object", object}, {"event", "opened"}});
}

void report_result(const std::string& object, int result, const nlohmann::json& data)
{
    print({{"object", object}, {"event", "result"}, {"result", result}, {"data", data}});
}

void report_signal(const std::string& object, const std::string& name, const nlohmann::json& value)
{
    print({{"object", object}, {"event", "signal"}, {"name", name}, {"value", value}});
}

void report_error(const std::string& object, const std::string& message)
{
    print({{"object", object}, {"event", "error"}, {"message", message}});
}

void report_window_places(const std::string& object, const nlohmann::json& places)
{
    print({{"object", object}, {"event", "places"}, {"places", places}});
}

void report_finding(nlohmann::json finding)
{
    finding["event"] = "finding";
    print(finding);
}

std::string get_string(const nlohmann::json& data, const char* name, const std::string& otherwise)
{
    const nlohmann::json* value = find(data, name);
    return value && value->is_string() ? value->get<std::string>() : otherwise;
}

int get_int(const nlohmann::json& data, const char* name, int otherwise)
{
    const nlohmann::json* value = find(data, name);
    return value && value->is_number_integer() ? value->get<int>() : otherwise;
}

bool get_bool(const nlohmann::json& data, const char* name, bool otherwise)
{
    const nlohmann::json* value = find(data, name);
    return value && value->is_boolean() ? value->get<bool>() : otherwise;
}

} // namespace gallery
