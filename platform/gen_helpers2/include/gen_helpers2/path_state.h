#pragma once

#include "gen_helpers2/export.h"
#include "gen_helpers2/path.h"

#include <cstdint>
#include <optional>

namespace gen_helpers2 {

/// What would come of making files in a folder that is created first, with those above it, if need be.
enum class folder_state_t
{
    usable,       ///< files can be made there
    no_path,      ///< empty or relative
    not_a_folder, ///< it, or something on the way to it, is a file
    broken_link,  ///< it, or something on the way to it, is a link that leads nowhere or round in a circle
    not_allowed,  ///< the user may not write into it, or not look into what is on the way
    too_long      ///< the system takes no path of that length
};

/// Looks at the folder itself or, where it is missing, at the nearest thing above it that is there. For
/// telling the user in time; what is true now may have changed when the folder is used. Any thread; asks the
/// disk twice or three times for a folder that is there.
GEN_HELPERS2_EXPORT folder_state_t examine_folder(const path_t& folder);

/// Bytes that the user may still write there, where the nearest thing above a missing folder is what counts;
/// nothing when the file system does not say. Any thread; asks the disk.
/// @since 3.1
GEN_HELPERS2_EXPORT std::optional<std::uint64_t> get_free_space(const path_t& folder);

} // namespace gen_helpers2

namespace gh2 = gen_helpers2;
