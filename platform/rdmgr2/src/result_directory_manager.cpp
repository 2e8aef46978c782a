#include "rdmgr2/result_directory_manager.h"

#include "result_numbers.h"

#include <cfgmgr2/message_catalog.h>
#include <cpil/catalog.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <sys/stat.h>

namespace rdmgr2 {
namespace {

using CPIL_2_18::i18n::catalog_key;

const char* key_of(error_t error)
{
    switch (error) {
    case error_none:
        break;
    case error_empty:
        return catalog_key("result_directory.empty");
    case error_no_number:
        return catalog_key("result_directory.no_number");
    case error_several_numbers:
        return catalog_key("result_directory.several_numbers");
    case error_too_many_digits:
        return catalog_key("result_directory.too_many_digits");
    case error_forbidden_character:
        return catalog_key("result_directory.forbidden_character");
    case error_reserved_name:
        return catalog_key("result_directory.reserved_name");
    case error_too_long:
        return catalog_key("result_directory.too_long");
    case error_not_created:
        return catalog_key("result_directory.not_created");
    }
    return "";
}

bool is_forbidden(char c)
{
    constexpr std::string_view special = "\\/:*?\"<>|";
    return special.find(c) != std::string_view::npos || static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
}

// A number that keeps the name as long as its pattern, and makes it reserved if any number can.
std::string sample_name(const std::string& pattern)
{
    std::string name = pattern;
    std::replace(name.begin(), name.end(), '@', '1');
    return name;
}

} // namespace

std::string toString(error_t error)
{
    const std::string key = key_of(error);
    if (key.empty())
        return key;
    const auto catalog = cfgmgr2::getMessageCatalog("commondlg");
    return catalog && catalog->has_message(key) ? catalog->message(key).as_ustring({}) : key;
}

error_t ResultDirectoryManager::validateResultDirectoryPattern(const std::string& pattern)
{
    if (pattern.find_first_not_of(" \t\n\v\f\r") == std::string::npos)
        return error_empty;
    if (std::any_of(pattern.begin(), pattern.end(), is_forbidden))
        return error_forbidden_character;
    const std::size_t start = pattern.find('@');
    if (start == std::string::npos)
        return error_no_number;
    const std::size_t end = std::min(pattern.find_first_not_of('@', start), pattern.size());
    if (pattern.find('@', end) != std::string::npos)
        return error_several_numbers;
    if (end - start > max_digits)
        return error_too_many_digits;
    if (pattern.size() > gen_helpers2::path_t::max_name_bytes)
        return error_too_long;
    return isReservedDirectoryName(sample_name(pattern)) ? error_reserved_name : error_none;
}

bool ResultDirectoryManager::isReservedDirectoryName(const std::string& name)
{
    static const std::array<std::string_view, 4> devices = {"CON", "PRN", "AUX", "NUL"};
    std::string stem = name.substr(0, name.find('.'));
    stem.erase(stem.find_last_not_of(' ') + 1);
    std::transform(stem.begin(), stem.end(), stem.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    if (std::find(devices.begin(), devices.end(), stem) != devices.end())
        return true;
    return stem.size() == 4 && (stem.compare(0, 3, "COM") == 0 || stem.compare(0, 3, "LPT") == 0) &&
           stem[3] >= '1' && stem[3] <= '9';
}

std::string ResultDirectoryManager::fillResultDirectoryPattern(const std::string& pattern,
                                                               std::uint64_t number)
{
    const std::size_t start = pattern.find('@');
    if (start == std::string::npos)
        return pattern;
    const std::size_t end = std::min(pattern.find_first_not_of('@', start), pattern.size());
    std::string digits = std::to_string(number);
    if (digits.size() < end - start)
        digits.insert(0, end - start - digits.size(), '0');
    return pattern.substr(0, start) + digits + pattern.substr(end);
}

std::string ResultDirectoryManager::getNextResultDirectoryName(const std::string& pattern,
                                                               const gen_helpers2::path_t& folder)
{
    return fillResultDirectoryPattern(pattern, next_number(pattern, folder));
}

error_t ResultDirectoryManager::createResultDirectory(const std::string& pattern,
                                                      const gen_helpers2::path_t& folder,
                                                      gen_helpers2::path_t& made)
{
    if (const error_t error = validateResultDirectoryPattern(pattern))
        return error;
    std::error_code ignored; // making the directory itself tells whether the folder is there
    std::filesystem::create_directories(folder.as_filesystem_path(), ignored);
    // Others may take numbers meanwhile, and a folder may be written to that cannot be read.
    for (std::uint64_t number = next_number(pattern, folder);; ++number) {
        const gen_helpers2::path_t directory = folder / fillResultDirectoryPattern(pattern, number);
        if (directory.is_empty())
            return error_not_created;
        if (mkdir(directory.as_string().c_str(), 0777) == 0) {
            made = directory;
            return error_none;
        }
        if (errno != EEXIST)
            return error_not_created;
    }
}

} // namespace rdmgr2
