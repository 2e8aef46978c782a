#pragma once

#include "gen_helpers2/export.h"

#include <string>

namespace gen_helpers2 {

enum class expansion_t
{
    nothing_to_do,
    expanded,
    unknown_variable ///< a variable that is not set; nothing was replaced
};

/// Replaces what people write in paths as they would for a shell: "~" as the first name by the home folder,
/// "$NAME" and "${NAME}" by the environment's value. Other users' homes ("~name"), quotes and escapes are not
/// understood. A path that exists as it is written is left alone: "$" and "~" are letters of names as well.
///
/// @param[out] name the variable that is not set
/// The environment must not be changed by another thread at the same time.
GEN_HELPERS2_EXPORT expansion_t expand_path(std::string& text, std::string& name);

} // namespace gen_helpers2

namespace gh2 = gen_helpers2;
