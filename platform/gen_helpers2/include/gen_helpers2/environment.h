#pragma once

#include "gen_helpers2/export.h"

#include <string>

namespace gen_helpers2 {

/// False, leaving `value` as it was, if the variable is not set or `name` can be no variable's name (empty,
/// or with
/// '=' or a zero byte). A variable set to nothing is set.
/// The process's environment must not be changed by another thread at the same time.
GEN_HELPERS2_EXPORT bool get_environ_value(const std::string& name, std::string& value);

/// Empty if the variable is not set.
GEN_HELPERS2_EXPORT std::string get_environ_value(const std::string& name);

} // namespace gen_helpers2

namespace gh2 = gen_helpers2;
