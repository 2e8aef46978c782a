/// What a message body consists of: tags, entities and characters.
#pragma once

#include <algorithm>
#include <cctype>
#include <string>
#include <string_view>

namespace vdxcfrw7 {

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

struct attribute_t
{
    std::string_view name;
    std::string_view value;
    std::size_t end = std::string_view::npos; ///< npos: it is none; "if a <b and c> d" holds no tag
};

struct entity_t
{
    std::size_t length = 0; ///< 0: no entity
    std::string text;       ///< UTF-8
};

std::string in_lower_case(std::string_view text);
/// Whether the attribute is one that stands without a value.
bool is_flag(std::string_view attribute);

/// The tag that begins with this '<', if it is a known one.
tag_t tag_at(std::string_view text);
/// The attribute that begins here.
attribute_t attribute_at(std::string_view text, std::size_t at);
entity_t entity_at(std::string_view text);

/// Calls on_attribute(const attribute_t&) for each attribute of a whole tag.
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

/// Calls on_tag(tag, raw), on_entity(entity, raw) and on_text(char) for the parts of a body, in their order.
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

} // namespace vdxcfrw7
