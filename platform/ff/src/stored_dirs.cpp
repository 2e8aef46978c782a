#include "stored_dirs.h"

#include <gen_helpers2/strings.h>

#include <algorithm>
#include <utility>

namespace FF_2_13 {
namespace {

constexpr char with_folders_below = '+';
constexpr char without_folders_below = '-';
constexpr char disabled = '!';
constexpr char begin_of_comment = '#';

} // namespace

bool is_storable(const std::string& path)
{
    return !path.empty() && path.find('\0') == std::string::npos;
}

std::string to_stored_text(const stored_list_t& list)
{
    std::string text;
    const auto add_comment = [&text](std::string_view comment) {
        for (std::size_t start = 0; start < comment.size();) {
            const std::size_t end = std::min(comment.find('\n', start), comment.size());
            text += begin_of_comment +
                    gen_helpers2::escape_bytes(std::string(comment.substr(start, end - start)));
            text += '\n';
            start = end + 1;
        }
    };
    for (const search_dir_entry_t& dir : list.dirs) {
        add_comment(dir.comment);
        if (!dir.enabled)
            text += disabled;
        text += dir.recursive ? with_folders_below : without_folders_below;
        text += gen_helpers2::escape_bytes(dir.path);
        text += '\n';
    }
    add_comment(list.comment_at_end);
    return text;
}

stored_list_t from_stored_text(std::string_view text)
{
    stored_list_t list;
    std::string comment;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (!line.empty() && line.front() == begin_of_comment) {
            std::string said;
            if (gen_helpers2::unescape_bytes(line.substr(1), said))
                comment += (comment.empty() ? "" : "\n") + said;
            continue;
        }
        search_dir_entry_t dir;
        if (!line.empty() && line.front() == disabled) {
            dir.enabled = false;
            line.remove_prefix(1);
        }
        if (line.empty() || (line.front() != with_folders_below && line.front() != without_folders_below))
            continue;
        dir.recursive = line.front() == with_folders_below;
        if (!gen_helpers2::unescape_bytes(line.substr(1), dir.path) || !is_storable(dir.path))
            continue;
        dir.comment = std::move(comment);
        comment.clear();
        list.dirs.push_back(std::move(dir));
    }
    list.comment_at_end = std::move(comment);
    return list;
}

} // namespace FF_2_13
