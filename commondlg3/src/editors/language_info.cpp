#include "commondlg3/language_info.h"

#include "commondlg3/text_utils.h"

#include <gen_helpers2/path.h>

#include <string_view>
#include <unordered_map>

namespace commondlg3 {
namespace {

using language_t = language_info::language_t;

constexpr char any_extension[] = ".*";

std::vector<std::string> split(const std::string& pattern)
{
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t bar; (bar = pattern.find('|', start)) != std::string::npos; start = bar + 1)
        parts.push_back(pattern.substr(start, bar - start));
    parts.push_back(pattern.substr(start));
    return parts;
}

// Patterns are lists of extensions, taken as they stand ("c++" is c and two pluses), so that looking one up
// needs no matching. The lowest language that lists an extension has it.
std::unordered_map<std::string, language_t> by_extension(const std::map<language_t, std::string>& patterns)
{
    std::unordered_map<std::string, language_t> languages;
    for (const auto& [language, pattern] : patterns)
        if (pattern != any_extension)
            for (const std::string& extension : split(pattern))
                languages.emplace(extension, language);
    return languages;
}

// Whether the text after the last separator is the path's last name, as it is of any usual path.
bool ends_with_its_name(std::string_view path, std::string_view name)
{
    return !name.empty() && name != "." && name != ".." &&
           path.find_first_of(std::string_view("*\0", 2)) == std::string_view::npos;
}

std::string_view extension_of(std::string_view name)
{
    const std::size_t dot = name.rfind('.');
    return dot == std::string_view::npos || dot == 0 ? std::string_view() : name.substr(dot + 1);
}

} // namespace

const std::map<language_t, std::string>& language_info::patterns()
{
    static std::map<language_t, std::string> table;
    if (table.empty())
        table = {{cpp, "c|h|cc|hh|c++|h++|cpp|hpp|cp|hp|cxx|hxx|C|H|CPP|HPP|tcc|i|ii|m|mi|mm|M|mii"},
                 {csharp, "cs"},
                 {fortran, "f|F|for|FOR|fpp|FPP|ftn|FTN|f77|F77|f90|F90|f95|F95|f03|F03|f08|F08|fi|fd"},
                 {other, any_extension}};
    return table;
}

const std::map<language_t, std::string>& language_info::localized_names()
{
    static std::map<language_t, std::string> table;
    if (table.empty())
        table = {{cpp, translate_message("pref.editor.language_cpp", {})},
                 {csharp, translate_message("pref.editor.language_csharp", {})},
                 {fortran, translate_message("pref.editor.language_fortran", {})},
                 {other, translate_message("pref.editor.language_other", {})}};
    return table;
}

language_t language_info::get_language(const std::string& file_name)
{
    static const auto languages = by_extension(patterns());
    const std::string_view path(file_name);
    const std::string_view name = path.substr(path.rfind('/') + 1);
    const std::string extension = ends_with_its_name(path, name)
                                      ? std::string(extension_of(name))
                                      : gen_helpers2::path_t(file_name).get_ext(false);
    const auto found = languages.find(extension);
    return found == languages.end() ? other : found->second;
}

language_t language_info::get_language_by_name(const std::string& name)
{
    for (const auto& [language, localized] : localized_names())
        if (localized == name)
            return language;
    return other;
}

std::string language_info::get_localized_name(language_t language)
{
    const auto found = localized_names().find(language);
    return found == localized_names().end() ? std::string() : found->second;
}

std::vector<std::string> language_info::get_extensions(language_t language)
{
    const auto found = patterns().find(language);
    if (found == patterns().end() || found->second == any_extension)
        return {};
    return split(found->second);
}

} // namespace commondlg3
