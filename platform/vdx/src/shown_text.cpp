#include "shown_text.h"

#include <gen_helpers2/strings.h>

#include <glib.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace vdxcfrw7 {
namespace {

struct range_t
{
    char32_t first;
    char32_t last;
};

// Marks that join the letter before them, scripts whose letters join, characters that nobody sees, and
// pictures of control characters, for which there may be others.
constexpr range_t shaped[] = {
    {0x0300, 0x036f}, {0x0483, 0x0489}, {0x0590, 0x109f}, {0x1100, 0x11ff}, {0x1700, 0x18af},
    {0x1900, 0x1cff}, {0x1dc0, 0x1dff}, {0x200b, 0x200f}, {0x2028, 0x202e}, {0x2060, 0x206f},
    {0x20d0, 0x20ff}, {0x2400, 0x2421}, {0x3099, 0x309a}, {0xa800, 0xabff}, {0xfb00, 0xfdff},
    {0xfe00, 0xfe2f}, {0xfe70, 0xfeff},
};

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
}

// A search looks for a letter's small form and that form's capital. U+03F4, another capital of theta, would
// be passed over: it stays as it is.
gunichar to_small(gunichar character)
{
    return character == 0x3f4 ? character : g_unichar_tolower(character);
}

// The character at `at` in the other case, when that takes as many bytes; else as it is. Its length in
// bytes.
template <class Change>
std::size_t change_case(const char* at, const char* end, char* changed, Change change)
{
    const std::size_t length =
        gen_helpers2::utf8_sequence_length(std::string_view(at, std::min<std::size_t>(4, end - at)));
    if (length < 2) {
        *changed = *at;
        return 1;
    }
    char other[6];
    const int other_length = g_unichar_to_utf8(change(g_utf8_get_char(at)), other);
    std::memcpy(changed, static_cast<std::size_t>(other_length) == length ? other : at, length);
    return length;
}

bool same_folded(const char* text, const char* end, std::string_view needle)
{
    for (std::size_t i = 0; i < needle.size();) {
        if (static_cast<unsigned char>(text[i]) < 0x80) {
            if (lower(text[i]) != needle[i])
                return false;
            ++i;
            continue;
        }
        char folded[4];
        const std::size_t length = change_case(text + i, end, folded, to_small);
        if (length > needle.size() - i || std::memcmp(folded, needle.data() + i, length) != 0)
            return false;
        i += length;
    }
    return true;
}

// Where comparing place by place could take the product of both lengths: a copy and the library's search,
// which is linear, take less.
bool is_long_search(std::string_view text, std::string_view needle)
{
    return needle.size() > 16 && text.size() > 4096;
}

// The first byte of the text in capitals.
char first_in_capitals(std::string_view text)
{
    if (static_cast<unsigned char>(text[0]) < 0x80)
        return text[0] >= 'a' && text[0] <= 'z' ? static_cast<char>(text[0] - ('a' - 'A')) : text[0];
    char capital[4];
    change_case(text.data(), text.data() + text.size(), capital, g_unichar_toupper);
    return capital[0];
}

} // namespace

char32_t decode_beyond_ascii(const char*& at, const char* end)
{
    const std::size_t length =
        gen_helpers2::utf8_sequence_length(std::string_view(at, std::min<std::size_t>(4, end - at)));
    const auto* bytes = reinterpret_cast<const unsigned char*>(at);
    at += length ? length : 1;
    switch (length) {
    case 2: {
        const char32_t code = (bytes[0] & 0x1fu) << 6 | (bytes[1] & 0x3fu);
        return code == 0x85 ? '\n' : code < 0xa0 ? replacement_character : code;
    }
    case 3: {
        const char32_t code = (bytes[0] & 0xfu) << 12 | (bytes[1] & 0x3fu) << 6 | (bytes[2] & 0x3fu);
        if (code == 0x2028 || code == 0x2029)
            return '\n';
        return code == 0x202d || code == 0x202e ? replacement_character : code;
    }
    case 4:
        return (bytes[0] & 7u) << 18 | (bytes[1] & 0x3fu) << 12 | (bytes[2] & 0x3fu) << 6 |
               (bytes[3] & 0x3fu);
    default:
        return replacement_character;
    }
}

bool ends_line(std::string_view text, std::size_t at)
{
    const std::string_view before = text.substr(0, at);
    const auto ends_with = [before](std::string_view end) {
        return before.size() >= end.size() && before.substr(before.size() - end.size()) == end;
    };
    if (ends_with("\r"))
        return at >= text.size() || text[at] != '\n';
    return ends_with("\n") || ends_with("\xc2\x85") || ends_with("\xe2\x80\xa8") || ends_with("\xe2\x80\xa9");
}

std::string_view first_line(std::string_view text)
{
    const char* const end = text.data() + text.size();
    for (const char* at = text.data(); at < end;) {
        const char* const character = at;
        if (decode(at, end) == '\n')
            return text.substr(0, static_cast<std::size_t>(character - text.data()));
    }
    return text;
}

const char* previous(const char* begin, const char* at)
{
    const char* earliest = at - begin > 4 ? at - 4 : begin;
    for (const char* start = at - 1; start >= earliest; --start) {
        if ((static_cast<unsigned char>(*start) & 0xc0) == 0x80)
            continue;
        const char* behind = start;
        decode(behind, at);
        return behind == at ? start : at - 1;
    }
    return at > begin ? at - 1 : begin;
}

bool needs_shaping(char32_t character)
{
    if (character < 0x300)
        return false;
    if (character >= 0x10000)
        return character < 0x20000 || character >= 0x40000;
    const auto found = std::upper_bound(std::begin(shaped), std::end(shaped), character,
                                        [](char32_t c, const range_t& range) { return c < range.first; });
    return found != std::begin(shaped) && character <= std::prev(found)->last;
}

bool breaks_after(char32_t character)
{
    return (character >= 0x2e80 && character < 0xa4d0) || (character >= 0xac00 && character < 0xd7b0) ||
           (character >= 0xff00 && character < 0xfff0) || (character >= 0x20000 && character < 0x40000);
}

wxString to_shown(std::string_view text)
{
    wxString shown;
    shown.reserve(text.size());
    const char* end = text.data() + text.size();
    for (const char* at = text.data(); at < end;) {
        const char32_t character = decode(at, end);
        if (character == '\t')
            shown.append("    ");
        else if (character != '\n')
            shown.append(static_cast<wchar_t>(character));
    }
    return shown;
}

std::string fold(std::string_view text)
{
    std::string folded(text);
    const char* const end = text.data() + text.size();
    for (const char* at = text.data(); at < end;) {
        char* const changed = folded.data() + (at - text.data());
        if (static_cast<unsigned char>(*at) < 0x80)
            *changed = lower(*at++);
        else
            at += change_case(at, end, changed, to_small);
    }
    return folded;
}

std::size_t find_folded(std::string_view text, std::string_view needle, std::size_t from,
                        first_letters_t* known)
{
    if (needle.empty() || text.size() < needle.size())
        return std::string_view::npos;
    if (is_long_search(text, needle)) {
        if (from > text.size())
            return std::string_view::npos;
        const std::string folded = fold(text.substr(from));
        const void* found = memmem(folded.data(), folded.size(), needle.data(), needle.size());
        return found ? from + static_cast<std::size_t>(static_cast<const char*>(found) - folded.data())
                     : std::string_view::npos;
    }
    const char* const begin = text.data();
    const char* const last = begin + (text.size() - needle.size());
    const char small = needle[0];
    const char large = first_in_capitals(needle);
    const char* const end = begin + text.size();
    // The library's search for one character is many times faster than a loop; each case is searched once.
    const auto next = [&](const char* at, char c) {
        const void* found =
            at <= last ? std::memchr(at, c, static_cast<std::size_t>(last - at) + 1) : nullptr;
        return found ? static_cast<const char*>(found) : last + 1;
    };
    if (from > text.size())
        return std::string_view::npos;
    const char* at = begin + from;
    const char* as_small = known && known->small >= at ? known->small : next(at, small);
    const char* as_large = large == small                ? last + 1
                           : known && known->large >= at ? known->large
                                                         : next(at, large);
    while (at <= last) {
        at = std::min(as_small, as_large);
        if (at > last)
            break;
        if (same_folded(at, end, needle)) {
            if (known)
                *known = {as_small, as_large};
            return static_cast<std::size_t>(at - begin);
        }
        if (at == as_small)
            as_small = next(at + 1, small);
        else
            as_large = next(at + 1, large);
        ++at;
    }
    return std::string_view::npos;
}

} // namespace vdxcfrw7
