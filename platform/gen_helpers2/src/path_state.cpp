#include "gen_helpers2/path_state.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace gen_helpers2 {
namespace {

folder_state_t state_of_error(int error)
{
    switch (error) {
    case ENOTDIR:
        return folder_state_t::not_a_folder;
    case ELOOP:
        return folder_state_t::broken_link;
    case ENAMETOOLONG:
        return folder_state_t::too_long;
    default:
        return folder_state_t::not_allowed;
    }
}

} // namespace

folder_state_t examine_folder(const path_t& folder)
{
    if (!folder.is_absolute())
        return folder_state_t::no_path;
    for (path_t at = folder; !at.is_empty(); at = at.parent()) {
        struct stat found;
        if (stat(at.as_string().c_str(), &found) == 0) {
            if (!S_ISDIR(found.st_mode))
                return folder_state_t::not_a_folder;
            // The rights of the user that the process acts for.
            return faccessat(AT_FDCWD, at.as_string().c_str(), W_OK | X_OK, AT_EACCESS) == 0
                       ? folder_state_t::usable
                       : folder_state_t::not_allowed;
        }
        if (errno != ENOENT)
            return state_of_error(errno);
        // Nothing is there, or a link to nothing, in place of which no folder can be made.
        if (lstat(at.as_string().c_str(), &found) == 0)
            return folder_state_t::broken_link;
    }
    return folder_state_t::no_path;
}

std::optional<std::uint64_t> get_free_space(const path_t& folder)
{
    for (path_t at = folder; !at.is_empty(); at = at.parent()) {
        struct statvfs system;
        if (statvfs(at.as_string().c_str(), &system) != 0)
            continue;
        if (system.f_blocks == 0) // none of a disk: a file system of the kernel's
            return std::nullopt;
        return static_cast<std::uint64_t>(system.f_bavail) * system.f_frsize;
    }
    return std::nullopt;
}

} // namespace gen_helpers2
