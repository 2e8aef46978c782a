#pragma once

#include <cfgmgr2/message_catalog.h>

#include <string>

namespace commondlg3 {

/// A path or a command as it may stand in a text: from right to left it would begin with its last separator.
inline std::string as_shown(const std::string& path)
{
    constexpr char isolate[] = "\u2066";
    constexpr char end[] = "\u2069";
    const bool mixes = cfgmgr2::language_is_right_to_left(cfgmgr2::get_language());
    return mixes && !path.empty() ? isolate + path + end : path;
}

} // namespace commondlg3
