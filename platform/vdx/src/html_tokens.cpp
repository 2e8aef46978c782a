#include "html_tokens.h"

#include <wx/html/htmlpars.h>

#include <cstdint>
#include <cstdlib>

namespace vdxcfrw7 {
namespace {

constexpr std::size_t longest_tag = 4096;
constexpr std::string_view flags[] = {"compact", "noshade", "nowrap"};

// Sorted, for the search.
constexpr std::string_view known_tags[] = {
    "a",      "b",      "big", "blockquote", "br",    "center", "cite", "code", "dd",   "del",   "div",
    "dl",     "dt",     "em",  "font",       "h1",    "h2",     "h3",   "h4",   "h5",   "h6",    "hr",
    "i",      "img",    "kbd", "li",         "ol",    "p",      "pre",  "s",    "samp", "small", "span",
    "strike", "strong", "sub", "sup",        "table", "td",     "th",   "tr",   "tt",   "u",     "ul"};

} // namespace

std::string in_lower_case(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return std::tolower(c); });
    return lower;
}

bool is_flag(std::string_view attribute)
{
    return contains(flags, attribute);
}

attribute_t attribute_at(std::string_view text, std::size_t at)
{
    attribute_t attribute;
    const std::size_t begin = at;
    while (at < text.size() && (std::isalnum(static_cast<unsigned char>(text[at])) || text[at] == '-'))
        ++at;
    attribute.name = text.substr(begin, at - begin);
    if (attribute.name.empty())
        return attribute;
    if (at >= text.size() || text[at] != '=') {
        if (is_flag(attribute.name))
            attribute.end = at;
        return attribute;
    }
    if (++at >= text.size())
        return attribute;
    if (text[at] == '"' || text[at] == '\'') {
        const std::size_t end = text.find(text[at], at + 1);
        if (end != std::string_view::npos) {
            attribute.value = text.substr(at + 1, end - at - 1);
            attribute.end = end + 1;
        }
        return attribute;
    }
    const std::size_t end = text.find_first_of(" \t\r\n<>", at);
    if (end != std::string_view::npos && text[end] != '<') {
        attribute.value = text.substr(at, end - at);
        attribute.end = end;
    }
    return attribute;
}

tag_t tag_at(std::string_view text)
{
    tag_t tag;
    std::size_t at = 1;
    if (at < text.size() && text[at] == '/') {
        tag.closing = true;
        ++at;
    }
    while (at < text.size() && std::isalnum(static_cast<unsigned char>(text[at])) && tag.name.size() < 12)
        tag.name += static_cast<char>(std::tolower(static_cast<unsigned char>(text[at++])));
    if (at >= text.size() || !contains(known_tags, tag.name))
        return tag;
    if (text[at] != '>' && text[at] != '/' && !std::isspace(static_cast<unsigned char>(text[at])))
        return tag;
    const std::string_view rest = text.substr(0, longest_tag);
    while (at < rest.size()) {
        while (at < rest.size() && (std::isspace(static_cast<unsigned char>(rest[at])) || rest[at] == '/'))
            ++at;
        if (at < rest.size() && rest[at] == '>') {
            tag.length = at + 1;
            break;
        }
        at = attribute_at(rest, at).end;
    }
    return tag;
}

entity_t entity_at(std::string_view text)
{
    entity_t entity;
    const std::size_t end = text.substr(0, 12).find(';');
    if (end == std::string_view::npos || end < 2)
        return entity;
    const std::string name(text.substr(1, end - 1));
    if (!std::all_of(name.begin() + (name[0] == '#'), name.end(),
                     [](unsigned char c) { return std::isalnum(c) != 0; }))
        return entity;
    std::uint32_t code = 0;
    if (name[0] == '#') {
        const bool hex = name.size() > 1 && (name[1] == 'x' || name[1] == 'X');
        char* behind = nullptr;
        code = static_cast<std::uint32_t>(std::strtoul(name.c_str() + (hex ? 2 : 1), &behind, hex ? 16 : 10));
        if (*behind != '\0')
            return entity;
    } else
        code = static_cast<std::uint32_t>(
            wxHtmlEntitiesParser().GetEntityChar(wxString::FromAscii(name.c_str())));
    // The toolkit would make a character of any number.
    if (code < ' ' || (code >= 0xd800 && code < 0xe000) || code > 0x10ffff)
        return entity;
    entity.text = wxString(wxUniChar(code)).utf8_string();
    entity.length = end + 1;
    return entity;
}

} // namespace vdxcfrw7
