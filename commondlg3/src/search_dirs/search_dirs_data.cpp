#include "commondlg3/search_dirs_data.h"

#include "commondlg3/path_info.h"

#include <gen_helpers2/strings.h>
#include <wx_helpers1/text.h>

#include <wx/filename.h>
#include <wx/filesys.h>

#include <sys/stat.h>

#include <algorithm>
#include <map>
#include <unordered_map>

namespace commondlg3 {
namespace {

using state_t = dir_state_t::kind_t;
using mark_t = dir_mark_t::kind_t;

constexpr char address_start[] = "file://";

// The nearest row further up that is searched with everything below it, if this is below it.
bool find_above(const std::unordered_map<std::string_view, std::size_t>& recursive, std::string_view path,
                std::size_t& row)
{
    for (std::size_t end = path.rfind('/'); end != std::string_view::npos && path.size() > 1;
         end = path.rfind('/')) {
        path = path.substr(0, std::max<std::size_t>(end, 1));
        const auto found = recursive.find(path);
        if (found != recursive.end()) {
            row = found->second;
            return true;
        }
    }
    return false;
}

bool begins_a_path(std::string_view text)
{
    return !text.empty() && (text.front() == '/' || text.front() == '~' || text.front() == '$');
}

void add_dirs_of_line(std::string_view line, std::vector<std::string>& dirs)
{
    if (line.substr(0, sizeof address_start - 1) == address_start) {
        const wxFileName name = wxFileSystem::URLToFileName(wx_helpers1::to_wx(std::string(line)));
        const std::string dir = wx_helpers1::from_wx(name.GetFullPath());
        dirs.push_back(dir.empty() ? std::string(line) : dir);
        return;
    }
    std::size_t start = 0;
    for (std::size_t at = 0; at <= line.size(); ++at) {
        const bool ends = at == line.size() || (line[at] == ':' && begins_a_path(line.substr(at + 1)));
        if (!ends)
            continue;
        std::string dir = gen_helpers2::trim(line.substr(start, at - start));
        while (!dir.empty() && dir.back() == ':') // an empty entry of PATH
            dir.pop_back();
        if (!dir.empty())
            dirs.push_back(std::move(dir));
        start = at + 1;
    }
}

} // namespace

dir_state_t examine_dir(const std::string& path)
{
    dir_state_t state;
    const path_info_t info(path);
    struct stat found;
    if (!info.is_ok() || stat(info.extract_path().as_string().c_str(), &found) != 0) {
        state.kind = state_t::missing;
        return state;
    }
    state.kind = S_ISDIR(found.st_mode) ? state_t::directory : state_t::file;
    state.device = found.st_dev;
    state.inode = found.st_ino;
    return state;
}

std::vector<dir_mark_t> mark_dirs(const std::vector<listed_dir_t>& dirs)
{
    std::vector<dir_mark_t> marks(dirs.size());
    std::unordered_map<std::string_view, std::size_t> names;
    std::unordered_map<std::string_view, std::size_t> recursive;
    std::map<std::pair<std::uint64_t, std::uint64_t>, std::size_t> places;
    names.reserve(dirs.size());
    for (std::size_t i = 0; i < dirs.size(); ++i) {
        const listed_dir_t& dir = dirs[i];
        if (dir.skipped)
            continue;
        dir_mark_t& mark = marks[i];
        const auto [name, is_new_name] = names.emplace(dir.path, i);
        const bool exists = dir.state.kind == state_t::directory;
        const auto place = exists ? places.emplace(std::make_pair(dir.state.device, dir.state.inode), i).first
                                  : places.end();
        if (dir.state.kind == state_t::file)
            mark.kind = mark_t::not_a_directory;
        else if (dir.state.kind == state_t::missing)
            mark.kind = mark_t::missing;
        else if (!is_new_name)
            mark = {mark_t::duplicate, name->second};
        else if (exists && place->second != i)
            mark = {mark_t::shadowed, place->second};
        else if (find_above(recursive, dir.path, mark.other))
            mark.kind = mark_t::shadowed;
        else if (dir.path.empty() || dir.path.front() != '/')
            mark.kind = mark_t::relative;
        else if (dir.state.kind == state_t::unknown)
            mark.kind = mark_t::waiting;
        if (dir.recursive)
            recursive.emplace(dir.path, i);
    }
    return marks;
}

std::vector<std::string> split_dirs(const std::string& text)
{
    std::vector<std::string> dirs;
    std::string_view rest(text);
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find_first_of(std::string_view("\n\r\0", 3)), rest.size());
        const std::string line = gen_helpers2::trim(rest.substr(0, end));
        if (!line.empty())
            add_dirs_of_line(line, dirs);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return dirs;
}

std::string typed_dir(const std::string& text)
{
    return path_info_t(gen_helpers2::trim(text)).as_string();
}

} // namespace commondlg3
