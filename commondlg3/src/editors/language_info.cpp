#include "commondlg3/language_info.h"

#include "commondlg3/text_utils.h"

#include <gen_helpers2/path.h>

#include <boost/regex.hpp>

#include <algorithm>
#include <stdexcept>
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

// One language's pattern, compiled once. People mean an extension that stands in the pattern literally, also
// where a pattern of that text matches something else ("c++" is any number of c).
class matcher_t
{
public:
    matcher_t(language_t of, const std::string& pattern)
        : language(of), m_pattern(pattern), m_literal(split(pattern))
    {
    }
    bool matches(const std::string& extension) const
    {
        if (std::find(m_literal.begin(), m_literal.end(), extension) != m_literal.end())
            return true;
        try {
            return boost::regex_match(extension, m_pattern);
        } catch (const std::runtime_error&) { // too long to be looked through, and no extension of anybody's
            return false;
        }
    }

    language_t language;

private:
    boost::regex m_pattern;
    std::vector<std::string> m_literal;
};

// Of thousands of files a few extensions come again and again: what was answered once is kept.
class matched_t
{
public:
    explicit matched_t(const std::map<language_t, std::string>& patterns)
    {
        for (const auto& [language, pattern] : patterns)
            m_matchers.emplace_back(language, pattern);
    }
    language_t language_of(const std::string& extension)
    {
        const auto known = m_known.find(extension);
        if (known != m_known.end())
            return known->second;
        constexpr std::size_t most_kept = 1000;
        if (m_known.size() >= most_kept)
            m_known.clear();
        return m_known[extension] = find(extension);
    }

private:
    language_t find(const std::string& extension) const
    {
        const auto found = std::find_if(m_matchers.begin(), m_matchers.end(),
                                        [&](const matcher_t& each) { return each.matches(extension); });
        return found == m_matchers.end() ? language_info::other : found->language;
    }

    std::vector<matcher_t> m_matchers;
    std::unordered_map<std::string, language_t> m_known;
};

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
    static matched_t matched(patterns());
    const std::string_view path(file_name);
    const std::string_view name = path.substr(path.rfind('/') + 1);
    const std::string extension = ends_with_its_name(path, name)
                                      ? std::string(extension_of(name))
                                      : gen_helpers2::path_t(file_name).get_ext(false);
    return extension.empty() ? other : matched.language_of(extension);
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
