#pragma once

#include <string>

namespace gen_helpers2 {
namespace _internal {

/// A path in the folder that nothing has yet. It does not contain the name of a file that it stands for:
/// that might become too long. @param is_locked whether the file is locked already that gets it
std::string make_temporary_name(const std::string& folder, bool is_locked);

/// Takes away what programs that were killed left under such names, once a process and folder. Files that
/// are locked may be in use and stay, as do those a minute young that were not locked from the beginning.
void remove_stale_names(const std::string& folder);

} // namespace _internal
} // namespace gen_helpers2
