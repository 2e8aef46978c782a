#include "styled_text.h"

#include "vdx/line_store.h"

#include <wx_helpers1/ui_settings.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace vdxcfrw7 {
namespace {

constexpr char escape = '\x1b';
constexpr std::size_t most_known_colours = 4096;

// In the order of terminals: black, red, green, yellow, blue, magenta, cyan, white; then brighter.
constexpr std::uint32_t sixteen[] = {0x000000, 0xbe1e1e, 0x148232, 0xa06e00, 0x1e50be, 0x963296,
                                     0x008296, 0xbebebe, 0x6e6e6e, 0xeb4646, 0x32b450, 0xd7a014,
                                     0x5082eb, 0xc85ad2, 0x1eb4c3, 0xffffff};

bool is_between(char c, char first, char last)
{
    return c >= first && c <= last;
}

// One of 256: the sixteen, a cube of six levels of each of red, green and blue, and shades of grey.
std::uint32_t colour_of_256(unsigned int index)
{
    if (index < 16)
        return text_style_t::named | index;
    if (index >= 232) {
        const std::uint32_t grey = 8 + 10 * (std::min(index, 255u) - 232);
        return grey << 16 | grey << 8 | grey;
    }
    const auto level = [](std::uint32_t step) { return step ? 55 + 40 * step : 0; };
    index -= 16;
    return level(index / 36) << 16 | level(index / 6 % 6) << 8 | level(index % 6);
}

// The numbers of a sequence that sets styles; one that is missing is 0.
class numbers_t
{
public:
    explicit numbers_t(std::string_view text) : m_text(text) {}

    bool next(unsigned int& number)
    {
        if (m_done)
            return false;
        number = 0;
        while (m_at < m_text.size() && is_between(m_text[m_at], '0', '9'))
            number = std::min(number * 10 + static_cast<unsigned int>(m_text[m_at++] - '0'), 99999u);
        m_part = m_at < m_text.size() && m_text[m_at] == ':';
        m_done = m_at++ >= m_text.size();
        return true;
    }
    // Whether what follows belongs to the number before it.
    bool has_part() const { return m_part; }
    void skip_parts()
    {
        for (unsigned int part; m_part;)
            next(part);
    }

private:
    std::string_view m_text;
    std::size_t m_at = 0;
    bool m_part = false;
    bool m_done = false;
};

// Behind 38 or 48: 5 and an index, or 2 and three levels, with a colour space before them where they are
// parts of one number and four.
std::uint32_t read_colour(numbers_t& numbers, std::uint32_t otherwise)
{
    const bool parts = numbers.has_part();
    unsigned int kind = 0, levels[4] = {};
    if (!numbers.next(kind) || (kind != 2 && kind != 5))
        return otherwise;
    std::size_t count = 0;
    const std::size_t most = kind == 5 ? 1 : parts ? 4 : 3;
    while (count < most && (!parts || numbers.has_part()) && numbers.next(levels[count]))
        ++count;
    if (kind == 5)
        return count == 1 && levels[0] < 256 ? colour_of_256(levels[0]) : otherwise;
    if (count < 3)
        return otherwise;
    const unsigned int* rgb = levels + (count - 3);
    return std::min(rgb[0], 255u) << 16 | std::min(rgb[1], 255u) << 8 | std::min(rgb[2], 255u);
}

void apply(std::string_view parameters, text_style_t& style)
{
    if (parameters.find_first_not_of("0123456789:;") != std::string_view::npos)
        return; // ends alike, and sets something else
    const auto set = [&style](int flags, bool on) {
        style.flags = static_cast<std::uint8_t>(on ? style.flags | flags : style.flags & ~flags);
    };
    numbers_t numbers(parameters);
    for (unsigned int number; numbers.next(number);) {
        if (number == 0)
            style = {};
        else if (number == 1 || number == 2)
            set(number == 1 ? text_style_t::bold : text_style_t::faint, true);
        else if (number == 22)
            set(text_style_t::bold | text_style_t::faint, false);
        else if (number == 3 || number == 23)
            set(text_style_t::italic, number == 3);
        else if (number == 4) {
            unsigned int kind = 1; // which line, of which we have one
            if (numbers.has_part())
                numbers.next(kind);
            set(text_style_t::underlined, kind != 0);
        } else if (number == 21 || number == 24)
            set(text_style_t::underlined, number == 21);
        else if (number == 7 || number == 27)
            set(text_style_t::inverse, number == 7);
        else if (number == 9 || number == 29)
            set(text_style_t::struck, number == 9);
        else if (number == 38)
            style.ink = read_colour(numbers, style.ink);
        else if (number == 48)
            style.ground = read_colour(numbers, style.ground);
        else if (number == 58)
            read_colour(numbers, 0); // of the line below
        else if (number == 39)
            style.ink = text_style_t::no_colour;
        else if (number == 49)
            style.ground = text_style_t::no_colour;
        else if ((number >= 30 && number < 38) || (number >= 90 && number < 98))
            style.ink = text_style_t::named | (number % 10 + (number >= 90 ? 8 : 0));
        else if ((number >= 40 && number < 48) || (number >= 100 && number < 108))
            style.ground = text_style_t::named | (number % 10 + (number >= 100 ? 8 : 0));
        numbers.skip_parts();
    }
}

// The end of the sequence that begins with the escape at `at`; `at` when it is none.
std::size_t end_of_sequence(std::string_view text, std::size_t at)
{
    const std::size_t size = text.size();
    std::size_t next = at + 1;
    if (next >= size)
        return at;
    const char kind = text[next++];
    if (kind == '[') {
        while (next < size && is_between(text[next], '\x20', '\x3f'))
            ++next;
        return next < size && is_between(text[next], '\x40', '\x7e') ? next + 1 : next;
    }
    if (kind == ']' || kind == 'P' || kind == 'X' || kind == '^' || kind == '_') {
        // A string, up to its terminator; another sequence ends it as well. What is not ended would take the
        // rest of the text with it.
        for (; next < size && text[next] != '\n' && text[next] != '\r'; ++next) {
            if (text[next] == '\a')
                return next + 1;
            if (text[next] == escape)
                return next + 1 < size && text[next + 1] == '\\' ? next + 2 : next;
        }
        return at;
    }
    std::size_t last = next - 1;
    while (last < size && is_between(text[last], '\x20', '\x2f'))
        ++last;
    return last < size && is_between(text[last], '\x30', '\x7e') ? last + 1 : at;
}

// Of a sequence that begins a link; one that ends it has none.
std::string_view target_of(std::string_view sequence)
{
    const std::size_t parameters = sequence.find(';', sequence.find(';') + 1);
    std::string_view target =
        parameters == std::string_view::npos ? std::string_view() : sequence.substr(parameters + 1);
    for (const std::string_view end : {std::string_view("\a"), std::string_view("\x1b\\")})
        if (target.size() >= end.size() && target.substr(target.size() - end.size()) == end)
            target.remove_suffix(end.size());
    return target;
}

wxColour from_rgb(std::uint32_t rgb)
{
    return wxColour(static_cast<unsigned char>(rgb >> 16), static_cast<unsigned char>(rgb >> 8),
                    static_cast<unsigned char>(rgb));
}

wxColour half_way(const wxColour& a, const wxColour& b)
{
    const auto mix = [](int x, int y) { return static_cast<unsigned char>((x + y) / 2); };
    return wxColour(mix(a.Red(), b.Red()), mix(a.Green(), b.Green()), mix(a.Blue(), b.Blue()));
}

} // namespace

void read_styled_text(std::string_view said, styled_text_t& shown)
{
    shown.text.clear();
    shown.runs.clear();
    shown.links.clear();
    shown.has_faces = false;
    text_style_t style;
    std::string_view target; // of the link that is open
    std::size_t link_begin = 0;
    const auto end_link = [&] {
        if (!target.empty() && link_begin < shown.text.size())
            shown.links.push_back({link_begin, shown.text.size(), std::string(target)});
        target = {};
    };
    const auto append = [&](std::size_t from, std::size_t to) {
        if (from >= to)
            return;
        if (!(style == (shown.runs.empty() ? text_style_t() : shown.runs.back().style)))
            shown.runs.push_back({shown.text.size(), style});
        shown.has_faces = shown.has_faces || style.has(text_style_t::bold) || style.has(text_style_t::italic);
        shown.text.append(said, from, to - from);
    };
    for (std::size_t at = 0; at < said.size();) {
        const std::size_t found = std::min(said.find(escape, at), said.size());
        append(at, found);
        if (found == said.size())
            break;
        const std::size_t end = end_of_sequence(said, found);
        if (end == found)
            append(found, found + 1);
        else if (said[found + 1] == '[' && said[end - 1] == 'm')
            apply(said.substr(found + 2, end - found - 3), style);
        else if (const std::string_view whole = said.substr(found, end - found);
                 whole.substr(1, 3) == "]8;") {
            end_link();
            target = target_of(whole);
            link_begin = shown.text.size();
        }
        at = std::max(end, found + 1);
    }
    end_link();
}

std::string_view get_shown_text(const line_t& line, std::string& storage)
{
    if (!line.has(line_t::styled))
        return line.get_seen();
    styled_text_t shown;
    shown.text.swap(storage);
    read_styled_text(line.get_seen(), shown);
    storage.swap(shown.text);
    return storage;
}

void mark_link(style_runs_t& runs, std::size_t begin, std::size_t end)
{
    if (runs.empty() || runs.front().begin > 0)
        runs.insert(runs.begin(), {0, {}});
    const auto behind = [&runs](std::size_t byte) {
        return std::upper_bound(runs.begin(), runs.end(), byte,
                                [](std::size_t at, const style_run_t& run) { return at < run.begin; });
    };
    // What follows looks as it did.
    if (auto next = behind(end); std::prev(next)->begin < end)
        runs.insert(next, {end, std::prev(next)->style});
    if (auto next = behind(begin); std::prev(next)->begin < begin)
        runs.insert(next, {begin, std::prev(next)->style});
    for (auto run = std::prev(behind(begin)); run != runs.end() && run->begin < end; ++run) {
        run->style.ink = text_style_t::link_colour;
        run->style.flags |= text_style_t::underlined;
        run->style.flags &= static_cast<std::uint8_t>(~(text_style_t::faint | text_style_t::inverse));
    }
}

void style_colours_t::set(const wxColour& ink, const wxColour& background, const wxColour& link)
{
    m_ink = ink;
    m_background = background;
    m_link = link;
    m_known.clear();
}

wxColour style_colours_t::plain(std::uint32_t colour, const wxColour& otherwise) const
{
    if (colour == text_style_t::no_colour)
        return otherwise;
    if (colour == text_style_t::link_colour)
        return m_link;
    return from_rgb(colour & text_style_t::named ? sixteen[colour & 0xf] : colour);
}

style_colours_t::pair_t style_colours_t::make(const text_style_t& style) const
{
    wxColour ink = plain(style.ink, m_ink), ground = plain(style.ground, m_background);
    if (style.has(text_style_t::inverse))
        std::swap(ink, ground);
    if (style.has(text_style_t::faint))
        ink = half_way(ink, ground);
    const bool own_ground = style.has(text_style_t::inverse) || style.ground != text_style_t::no_colour;
    const bool is_plain =
        style.ink == text_style_t::no_colour && !own_ground && !style.has(text_style_t::faint);
    return {is_plain ? ink : wx_helpers1::readable_colour(ink, ground), own_ground ? ground : wxColour()};
}

const style_colours_t::pair_t& style_colours_t::get(const text_style_t& style)
{
    const std::uint64_t key = std::uint64_t(style.ink) << 32 | std::uint64_t(style.ground) << 2 |
                              (style.has(text_style_t::faint) ? 2 : 0) |
                              (style.has(text_style_t::inverse) ? 1 : 0);
    const auto found = m_known.find(key);
    if (found != m_known.end())
        return found->second;
    if (m_known.size() >= most_known_colours)
        m_known.clear();
    return m_known[key] = make(style);
}

} // namespace vdxcfrw7
