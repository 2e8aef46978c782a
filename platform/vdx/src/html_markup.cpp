#include "html_markup.h"

#include "html_tokens.h"
#include "text_links.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace vdxcfrw7 {
namespace {

constexpr int deepest = 40;

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
constexpr std::size_t longest_word = 20;

constexpr std::string_view without_end[] = {"br", "dd", "dt", "hr", "img", "li", "p"};
constexpr std::string_view line_ends[] = {"blockquote", "br", "dd", "div", "dt", "h1",  "h2",    "h3", "h4",
                                          "h5",         "h6", "hr", "li",  "p",  "pre", "table", "tr"};

// As it may be passed on; empty when it may not.
std::string safe_attribute(const attribute_t& attribute)
{
    const std::string name = in_lower_case(attribute.name);
    if (is_flag(name))
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

// An address of the web, or a path with a line: what a log tells its owner of. Nothing else is a target.
std::string safe_target(const attribute_t& attribute)
{
    if (in_lower_case(attribute.name) != "href" ||
        attribute.value.find_first_of("<>\"'") != std::string_view::npos)
        return {};
    const auto links = find_links(attribute.value);
    const bool whole = links.size() == 1 && links[0].begin == 0 && links[0].end == attribute.value.size();
    return whole ? " href=\"" + std::string(attribute.value) + "\"" : std::string();
}

std::string safe_tag(const tag_t& tag, std::string_view raw)
{
    std::string safe = (tag.closing ? "</" : "<") + tag.name;
    if (!tag.closing)
        for_each_attribute(raw, [&](const attribute_t& attribute) {
            safe += tag.name == "a" ? safe_target(attribute) : safe_attribute(attribute);
        });
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
