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

// Where the attribute that begins here ends; npos when it is none: "if a <b and c> d" holds no tag.
std::size_t behind_attribute(std::string_view text, std::size_t at)
{
    const std::size_t begin = at;
    while (at < text.size() && (std::isalnum(static_cast<unsigned char>(text[at])) || text[at] == '-'))
        ++at;
    const std::string_view name = text.substr(begin, at - begin);
    if (name.empty())
        return std::string_view::npos;
    if (at >= text.size() || text[at] != '=')
        return name == "nowrap" || name == "noshade" || name == "compact" ? at : std::string_view::npos;
    if (++at >= text.size())
        return std::string_view::npos;
    if (text[at] == '"' || text[at] == '\'') {
        const std::size_t end = text.find(text[at], at + 1);
        return end == std::string_view::npos ? end : end + 1;
    }
    const std::size_t end = text.find_first_of(" \t\r\n<>", at);
    return end == std::string_view::npos || text[end] == '<' ? std::string_view::npos : end;
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
        at = behind_attribute(rest, at);
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

std::string alternative_text(std::string_view tag)
{
    const std::string lower = [&] {
        std::string s(tag);
        std::transform(s.begin(), s.end(), s.begin(), [](unsigned char c) { return std::tolower(c); });
        return s;
    }();
    const std::size_t at = lower.find("alt=");
    if (at == std::string::npos || at + 5 >= tag.size() || (tag[at + 4] != '"' && tag[at + 4] != '\''))
        return {};
    const std::size_t end = tag.find(tag[at + 4], at + 5);
    return end == std::string_view::npos ? std::string() : std::string(tag.substr(at + 5, end - at - 5));
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
        out += raw;
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
