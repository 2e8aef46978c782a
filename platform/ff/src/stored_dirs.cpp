#include "stored_dirs.h"

#include <gen_helpers2/strings.h>

#include <algorithm>

namespace FF_2_13 {
namespace {

constexpr char with_folders_below = '+';
constexpr char without_folders_below = '-';

} // namespace

bool is_storable(const std::string& path)
{
    return !path.empty() && path.find('\0') == std::string::npos;
}

std::string to_stored_text(const std::vector<stored_dir_t>& dirs)
{
    std::string text;
    for (const stored_dir_t& dir : dirs) {
        text += dir.recursive ? with_folders_below : without_folders_below;
        text += gen_helpers2::escape_bytes(dir.path);
        text += '\n';
    }
    return text;
}

std::vector<stored_dir_t> from_stored_text(std::string_view text)
{
    std::vector<stored_dir_t> dirs;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.empty() || (line.front() != with_folders_below && line.front() != without_folders_below))
            continue;
        stored_dir_t dir;
        dir.recursive = line.front() == with_folders_below;
        if (gen_helpers2::unescape_bytes(line.substr(1), dir.path) && is_storable(dir.path))
            dirs.push_back(std::move(dir));
    }
    return dirs;
}

} // namespace FF_2_13
