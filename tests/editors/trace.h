#pragma once

#include <functional>
#include <string>

namespace test {

/// What one logger is told, traces included, while `act` runs: a line each.
std::string trace_of(const std::string& logger, const std::function<void()>& act);

} // namespace test
