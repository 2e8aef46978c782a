#include "text_links.h"

#include <algorithm>
#include <string>

namespace vdxcfrw7 {
namespace {

constexpr std::size_t longest_ending = 10; // of the name of a file
constexpr std::size_t longest_short_ending = 4;
constexpr int most_digits = 8;

bool is_digit(char c)
{
    return c >= '0' && c <= '9';
}

bool is_letter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// Blanks and quotation marks end a path, and so do brackets: most are around it.
bool is_path_byte(char c)
{
    return is_digit(c) || is_letter(c) || static_cast<unsigned char>(c) >= 0x80 ||
           std::string_view("/._-+~#@%").find(c) != std::string_view::npos;
}

bool is_url_byte(char c)
{
    return c > ' ' && c < 0x7f && std::string_view("<>\"`{}|\\^").find(c) == std::string_view::npos;
}

bool begins_with(std::string_view text, std::string_view begin)
{
    return text.substr(0, begin.size()) == begin;
}

// The length of the address at the beginning of a text; 0: none.
std::size_t url_length(std::string_view text)
{
    const std::size_t scheme = begins_with(text, "https://") ? 8 : begins_with(text, "http://") ? 7 : 0;
    if (!scheme)
        return 0;
    std::size_t end = scheme;
    int open = 0; // brackets that it holds itself
    for (; end < text.size() && is_url_byte(text[end]); ++end) {
        const char c = text[end];
        open += c == '(' || c == '[' ? 1 : 0;
        if ((c == ')' || c == ']') && open-- == 0)
            break;
    }
    // What ends a sentence is no part of it.
    while (end > scheme && std::string_view(".,;:!?'").find(text[end - 1]) != std::string_view::npos)
        --end;
    return end > scheme ? end : 0;
}

// A number from 1 on; `at` is moved behind it.
int read_number(std::string_view text, std::size_t& at)
{
    int number = 0, digits = 0;
    for (; at < text.size() && is_digit(text[at]); ++at)
        number = ++digits > most_digits ? 0 : number * 10 + (text[at] - '0');
    return digits > most_digits ? 0 : number;
}

bool names_file(std::string_view path, std::size_t most)
{
    const std::string_view name = path.substr(path.rfind('/') + 1);
    if (name.size() >= 8 && name.substr(name.size() - 7) == "akefile")
        return true;
    const std::size_t dot = name.rfind('.');
    const std::string_view ending = dot == std::string_view::npos ? "" : name.substr(dot + 1);
    if (ending.empty() || ending.size() > most || !is_letter(ending[0]))
        return !name.empty() && path[0] == '/'; // a program, a log
    return std::all_of(ending.begin(), ending.end(),
                       [](char c) { return is_digit(c) || is_letter(c) || c == '_' || c == '+'; });
}

// What stands behind the path that ends at `at`.
bool read_place(std::string_view text, std::size_t& at, log_link_t& link)
{
    const bool bracket = text[at] == '(';
    std::size_t next = at + 1;
    link.line = read_number(text, next);
    if (link.line == 0)
        return false;
    if (bracket) {
        if (next < text.size() && text[next] == ',')
            link.column = read_number(text, ++next);
        if (next >= text.size() || text[next] != ')')
            return false;
        at = next + 1;
        return true;
    }
    if (next < text.size() && (is_letter(text[next]) || text[next] == '_'))
        return false;
    at = next;
    if (next + 1 < text.size() && text[next] == ':' && is_digit(text[next + 1])) {
        link.column = read_number(text, ++next);
        at = next;
    }
    return true;
}

} // namespace

std::vector<text_link_t> find_links(std::string_view text)
{
    text = text.substr(0, longest_linked);
    std::vector<text_link_t> links;
    std::size_t behind = 0; // the last link
    for (std::size_t at = 0; at < text.size();) {
        at = text.find_first_of(":(", at);
        if (at == std::string_view::npos || at + 1 >= text.size())
            break;
        const char next = text[at + 1];
        if (text[at] == ':' && next == '/') {
            const std::size_t scheme = at >= 5 && text[at - 1] == 's' ? at - 5 : at - 4;
            const bool starts = at >= behind + 4 && (scheme == 0 || !is_letter(text[scheme - 1]));
            if (const std::size_t length = starts ? url_length(text.substr(scheme)) : 0) {
                log_link_t link;
                link.target = text.substr(scheme, length);
                links.push_back({scheme, scheme + length, std::move(link)});
                at = behind = scheme + length;
                continue;
            }
        } else if (is_digit(next)) {
            std::size_t begin = at;
            while (begin > behind && is_path_byte(text[begin - 1]))
                --begin;
            log_link_t link;
            link.kind = log_link_t::kind_t::file;
            link.path = text.substr(begin, at - begin);
            std::size_t end = at;
            if (begin < at &&
                names_file(link.path, text[at] == '(' ? longest_short_ending : longest_ending) &&
                read_place(text, end, link)) {
                link.target = text.substr(begin, end - begin);
                links.push_back({begin, end, std::move(link)});
                at = behind = end;
                continue;
            }
        }
        ++at;
    }
    return links;
}

} // namespace vdxcfrw7
