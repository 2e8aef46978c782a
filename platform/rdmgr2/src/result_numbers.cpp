#include "result_numbers.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <memory>
#include <mutex>
#include <sys/stat.h>

namespace rdmgr2 {
namespace {

// Anything longer did not come from counting.
constexpr std::size_t max_counted_digits = 18;

struct remembered_t
{
    gen_helpers2::path_t folder;
    ino_t file = 0;
    timespec changed{};
    bool trusted = false;
    std::vector<std::string> names;
};

// A change that falls into the same tick of the file system's clock as the reading leaves no trace.
bool is_older_than_a_tick(const timespec& changed)
{
    const auto at = std::chrono::seconds(changed.tv_sec) + std::chrono::nanoseconds(changed.tv_nsec);
    return std::chrono::system_clock::now().time_since_epoch() - at > std::chrono::milliseconds(50);
}

} // namespace

std::uint64_t number_of(std::string_view name, std::string_view pattern)
{
    const std::size_t start = pattern.find('@');
    if (start == std::string_view::npos)
        return 0;
    const std::size_t end = std::min(pattern.find_first_not_of('@', start), pattern.size());
    const std::string_view after = pattern.substr(end);
    const std::size_t least = end - start;
    if (name.size() < pattern.size() || name.compare(0, start, pattern.substr(0, start)) != 0 ||
        name.compare(name.size() - after.size(), after.size(), after) != 0)
        return 0;
    const std::string_view digits = name.substr(start, name.size() - after.size() - start);
    const bool padded_too_far = digits.size() > least && digits.front() == '0';
    if (digits.size() > max_counted_digits || padded_too_far ||
        digits.find_first_not_of("0123456789") != std::string_view::npos)
        return 0;
    return std::stoull(std::string(digits));
}

std::vector<std::string> names_in(const gen_helpers2::path_t& folder)
{
    std::vector<std::string> names;
    std::error_code error;
    std::filesystem::directory_iterator at(folder.as_filesystem_path(), error);
    for (; !error && at != std::filesystem::directory_iterator(); at.increment(error))
        names.push_back(at->path().filename().native());
    return names;
}

std::uint64_t next_number(const std::string& pattern, const gen_helpers2::path_t& folder)
{
    // Never held while the disk is asked: who asks about another folder must not wait for one that hangs.
    static std::mutex mutex;
    static std::shared_ptr<const remembered_t> last;
    struct stat now;
    if (stat(folder.as_string().c_str(), &now) != 0)
        return 1;
    std::shared_ptr<const remembered_t> known;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        known = last;
    }
    if (!known || !known->trusted || known->folder != folder || known->file != now.st_ino ||
        known->changed.tv_sec != now.st_mtim.tv_sec || known->changed.tv_nsec != now.st_mtim.tv_nsec) {
        known = std::make_shared<remembered_t>(remembered_t{
            folder, now.st_ino, now.st_mtim, is_older_than_a_tick(now.st_mtim), names_in(folder)});
        const std::lock_guard<std::mutex> lock(mutex);
        last = known;
    }
    std::uint64_t greatest = 0;
    for (const std::string& name : known->names)
        greatest = std::max(greatest, number_of(name, pattern));
    return greatest + 1;
}

} // namespace rdmgr2
