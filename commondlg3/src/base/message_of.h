#pragma once

#include <cpil/varg_list.h>

#include <string>

namespace commondlg3 {

/// A text of a catalog, or a text that says what is missing.
std::string message_of(const std::string& catalog, const std::string& key,
                       const CPIL_2_18::generic::varg_list& args);

} // namespace commondlg3
