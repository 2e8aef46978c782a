#include "html_markup.h"

#include <gen_helpers2/strings.h>

#include <wx/html/htmlpars.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace vdxcfrw7 {
namespace {

constexpr int deepest = 40;
constexpr std::size_t longest_tag = 4096;

// What a body may ask for; beyond it, it is text. Laying tables out is what takes time and memory.
constexpr std::size_t longest_markup = 64 * 1024;
constexpr int most_tags = 4000;
constexpr int most_cells = 1000;
constexpr int most_cells_in_a_row = 50;
constexpr int deepest_tables = 3;

// Attributes that are passed on, with the largest number that each may hold.
struct number_limit_t
{
    std::string_view name;
    int largest;
};
constexpr number_limit_t numbers[] = {{"border", 20},    {"cellpadding", 50}, {"cellspacing", 50},
                                      {"colspan", 10},   {"rowspan", 10},     {"size", 7},
                                      {"start", 100000}, {"value", 100000},   {"width", 2000}};
constexpr std::string_view words[] = {"align", "bgcolor", "color", "type", "valign"};
constexpr std::string_view flags[] = {"compact", "noshade", "nowrap"};
constexpr std::size_t longest_word = 20;

// Sorted, for the search.
constexpr std::string_view known_tags[] = {
    "a",      "b",      "big", "blockquote", "br",    "center", "cite", "code", "dd",   "del",   "div",
    "dl",     "dt",     "em",  "font",       "h1",    "h2",     "h3",   "h4",   "h5",   "h6",    "hr",
    "i",      "img",    "kbd", "li",         "ol",    "p",      "pre",  "s",    "samp", "small", "span",
    "strike", "strong", "sub", "sup",        "table", "td",     "th",   "tr",   "tt",   "u",     "ul"};
constexpr std::string_view without_end[] = {"br", "dd", "dt", "hr", "img", "li", "p"};
constexpr std::string_view line_ends[] = {"blockquote", "br", "dd", "div", "dt", "h1",  "h2",    "h3", "h4",
                                          "h5",         "h6", "hr", "li",  "p",  "pre", "table", "tr"};

template <std::size_t N>
bool contains(const std::string_view (&names)[N], std::string_view name)
{
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

struct tag_t
{
    std::string name; ///< in lower case
    bool closing = false;
    std::size_t length = 0; ///< in bytes, angle brackets included; 0: no tag
};

std::string in_lower_case(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](unsigned char c) { return std::tolower(c); });
    return lower;
}

struct attribute_t
{
    std::string_view name;
    std::string_view value;
    std::size_t end = std::string_view::npos; ///< npos: it is none; "if a <b and c> d" holds no tag
};

// The attribute that begins here.
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
        if (contains(flags, attribute.name))
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

// As it may be passed on; empty when it may not.
std::string safe_attribute(const attribute_t& attribute)
{
    const std::string name = in_lower_case(attribute.name);
    if (contains(flags, name))
        return " " + name;
    std::string_view value = attribute.value;
    if (contains(words, name)) {
        const bool good = !value.empty() && value.size() <= longest_word &&
                          std::all_of(value.begin(), value.end(), [](unsigned char c) {
                              return std::isalnum(c) != 0 || c == '#' || c == '-';
                          });
        return good ? " " + name + "=\"" + std::string(value) + "\"" : std::string();
    }
    const auto limit = std::find_if(std::begin(numbers), std::end(numbers),
                                    [&](const number_limit_t& known) { return known.name == name; });
    if (limit == std::end(numbers))
        return {};
    // A size may be relative, a width a share.
    const bool relative = !value.empty() && name == "size" && (value[0] == '+' || value[0] == '-');
    const bool share = !value.empty() && name == "width" && value.back() == '%';
    const std::string sign(value.substr(0, relative ? 1 : 0));
    value = value.substr(relative ? 1 : 0, value.size() - (relative ? 1 : 0) - (share ? 1 : 0));
    if (value.empty() ||
        !std::all_of(value.begin(), value.end(), [](unsigned char c) { return std::isdigit(c); }))
        return {};
    const int number = value.size() > 7 ? limit->largest : std::atoi(std::string(value).c_str());
    return " " + name + "=\"" + sign + std::to_string(std::min(number, share ? 100 : limit->largest)) +
           (share ? "%\"" : "\"");
}

// The tag that begins with this '<', if it is a known one.
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

struct entity_t
{
    std::size_t length = 0; ///< 0: no entity
    std::string text;       ///< UTF-8
};

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

// Calls on_attribute(const attribute_t&) for each attribute of a whole tag.
template <class OnAttribute>
void for_each_attribute(std::string_view raw, OnAttribute on_attribute)
{
    std::size_t at = raw.find_first_of(" \t\r\n/>", 2);
    while (at < raw.size()) {
        while (at < raw.size() && (std::isspace(static_cast<unsigned char>(raw[at])) || raw[at] == '/'))
            ++at;
        const attribute_t attribute = attribute_at(raw, at);
        at = attribute.end;
        if (at != std::string_view::npos)
            on_attribute(attribute);
    }
}

std::string safe_tag(const tag_t& tag, std::string_view raw)
{
    std::string safe = (tag.closing ? "</" : "<") + tag.name;
    if (!tag.closing)
        for_each_attribute(raw, [&](const attribute_t& attribute) { safe += safe_attribute(attribute); });
    return safe + ">";
}

std::string alternative_text(std::string_view tag)
{
    std::string text;
    for_each_attribute(tag, [&](const attribute_t& attribute) {
        if (in_lower_case(attribute.name) == "alt")
            text = attribute.value;
    });
    return text;
}

void append_escaped(std::string& out, char c)
{
    switch (c) {
    case '<':
        out += "&lt;";
        break;
    case '>':
        out += "&gt;";
        break;
    case '&':
        out += "&amp;";
        break;
    default:
        out += c;
    }
}

// Calls on_tag(tag, raw), on_entity(entity, raw) and on_text(char) for the parts of a body, in their order.
template <class OnTag, class OnEntity, class OnText>
void walk(std::string_view body, OnTag on_tag, OnEntity on_entity, OnText on_text)
{
    for (std::size_t at = 0; at < body.size();) {
        const std::string_view rest = body.substr(at);
        if (rest[0] == '<') {
            const tag_t tag = tag_at(rest);
            if (tag.length) {
                on_tag(tag, rest.substr(0, tag.length));
                at += tag.length;
                continue;
            }
        } else if (rest[0] == '&') {
            const entity_t entity = entity_at(rest);
            if (entity.length) {
                on_entity(entity, rest.substr(0, entity.length));
                at += entity.length;
                continue;
            }
        }
        on_text(rest[0]);
        ++at;
    }
}

} // namespace

std::string safe_markup(std::string_view body)
{
    std::string out;
    out.reserve(body.size() + body.size() / 8);
    std::vector<std::string> open;
    const auto on_tag = [&](const tag_t& tag, std::string_view raw) {
        if (tag.name == "img") {
            for (char c : alternative_text(raw))
                append_escaped(out, c);
            return;
        }
        if (!contains(without_end, tag.name)) {
            const auto begun = std::find(open.rbegin(), open.rend(), tag.name);
            if (tag.closing) {
                if (begun == open.rend())
                    return; // it ends nothing
                open.erase(std::prev(begun.base()));
            } else {
                if (open.size() >= deepest)
                    return;
                open.push_back(tag.name);
            }
        }
        out += safe_tag(tag, raw);
    };
    walk(
        body, on_tag, [&](const entity_t&, std::string_view raw) { out += raw; },
        [&](char c) { append_escaped(out, c); });
    while (!open.empty()) {
        out += "</" + open.back() + ">";
        open.pop_back();
    }
    return out;
}

bool is_light_markup(std::string_view body)
{
    if (body.size() > longest_markup)
        return false;
    int tags = 0, cells = 0, cells_in_row = 0, tables = 0;
    bool light = true;
    walk(
        body,
        [&](const tag_t& tag, std::string_view) {
            if (tag.name == "table")
                tables = std::max(0, tables + (tag.closing ? -1 : 1));
            else if (tag.name == "tr")
                cells_in_row = 0;
            else if ((tag.name == "td" || tag.name == "th") && !tag.closing) {
                ++cells;
                ++cells_in_row;
            }
            light = light && ++tags <= most_tags && cells <= most_cells &&
                    cells_in_row <= most_cells_in_a_row && tables <= deepest_tables;
        },
        [](const entity_t&, std::string_view) {}, [](char) {});
    return light;
}

std::string markup_to_text(std::string_view body)
{
    std::string out;
    bool blank = false;
    const auto put = [&](std::string_view text) {
        if (blank && !out.empty() && out.back() != '\n')
            out += ' ';
        blank = false;
        out += text;
    };
    walk(
        body,
        [&](const tag_t& tag, std::string_view raw) {
            if (tag.name == "img" && !tag.closing) {
                const std::string text = alternative_text(raw);
                if (!text.empty())
                    put(text);
            } else if (contains(line_ends, tag.name)) {
                blank = false;
                if (!out.empty() && out.back() != '\n')
                    out += '\n';
            } else if (tag.name == "td" || tag.name == "th")
                blank = true;
        },
        [&](const entity_t& entity, std::string_view) { put(entity.text); },
        [&](char c) {
            if (c == ' ' || c == '\n' || c == '\r' || c == '\t')
                blank = true;
            else
                put(std::string_view(&c, 1));
        });
    while (!out.empty() && out.back() == '\n')
        out.pop_back();
    return out;
}

std::string text_to_markup(std::string_view text)
{
    std::string out;
    for (char c : text) {
        if (c == '\n')
            out += "<br>\n";
        else
            append_escaped(out, c);
    }
    return out;
}

} // namespace vdxcfrw7
