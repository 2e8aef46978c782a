#include "gen_helpers2/path_expansion.h"

#include "gen_helpers2/environment.h"
#include "gen_helpers2/path.h"
#include "gen_helpers2/stdpaths.h"

namespace gen_helpers2 {
namespace {

constexpr char letters[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_";
constexpr char name_characters[] = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ_0123456789";

// The variable that begins with the '$' at `at`, and how long it is written; empty when none does.
std::string variable_at(const std::string& text, std::size_t at, std::size_t& length)
{
    const bool braces = text.compare(at + 1, 1, "{") == 0;
    const std::size_t start = at + (braces ? 2 : 1);
    if (start >= text.size() || text.find_first_of(letters, start) != start)
        return std::string();
    const std::size_t end = std::min(text.find_first_not_of(name_characters, start), text.size());
    if (braces && text.compare(end, 1, "}") != 0)
        return std::string();
    length = end - at + (braces ? 1 : 0);
    return text.substr(start, end - start);
}

} // namespace

expansion_t expand_path(std::string& text, std::string& name)
{
    const bool home = text == "~" || text.compare(0, 2, "~/") == 0;
    if (!home && text.find('$') == std::string::npos)
        return expansion_t::nothing_to_do;
    if (path_t(text).is_absolute() && path_t(text).exists())
        return expansion_t::nothing_to_do;
    std::string result = home ? stdpaths::get_home_dir().as_string() : std::string();
    bool changed = home;
    for (std::size_t at = home ? 1 : 0; at < text.size();) {
        std::size_t length = 1;
        const std::string variable = text[at] == '$' ? variable_at(text, at, length) : std::string();
        std::string value = text.substr(at, length);
        if (!variable.empty()) {
            if (!get_environ_value(variable, value)) {
                name = variable;
                return expansion_t::unknown_variable;
            }
            changed = true;
        }
        result += value;
        at += length;
    }
    text = result;
    return changed ? expansion_t::expanded : expansion_t::nothing_to_do;
}

} // namespace gen_helpers2
