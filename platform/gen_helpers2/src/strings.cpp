#include "gen_helpers2/strings.h"

#include <algorithm>

namespace gen_helpers2 {

namespace {

constexpr char hex_digits[] = "0123456789ABCDEF";
constexpr std::string_view blanks = " \t\n\v\f\r";

int hex_value(char c) noexcept
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return -1;
}

bool is_plain(unsigned char c) noexcept
{
    return c >= 0x20 && c < 0x7F && c != '\\';
}

bool is_noncharacter(std::string_view sequence) noexcept
{
    return sequence == "\xEF\xBF\xBE" || sequence == "\xEF\xBF\xBF";
}

} // namespace

std::size_t utf8_sequence_length(std::string_view s) noexcept
{
    if (s.empty())
        return 0;
    const auto byte = [&s](std::size_t i) { return static_cast<unsigned char>(s[i]); };
    const unsigned char first = byte(0);
    if (first < 0x80)
        return 1;
    // The first byte narrows the range of the second: that excludes overlong forms, surrogates and too large
    // values.
    unsigned char low = 0x80, high = 0xBF;
    std::size_t length = 0;
    if (first >= 0xC2 && first <= 0xDF) {
        length = 2;
    } else if (first >= 0xE0 && first <= 0xEF) {
        length = 3;
        if (first == 0xE0)
            low = 0xA0;
        else if (first == 0xED)
            high = 0x9F;
    } else if (first >= 0xF0 && first <= 0xF4) {
        length = 4;
        if (first == 0xF0)
            low = 0x90;
        else if (first == 0xF4)
            high = 0x8F;
    } else {
        return 0;
    }
    if (s.size() < length || byte(1) < low || byte(1) > high)
        return 0;
    for (std::size_t i = 2; i < length; ++i)
        if (byte(i) < 0x80 || byte(i) > 0xBF)
            return 0;
    return length;
}

bool is_valid_utf8(std::string_view s) noexcept
{
    while (!s.empty()) {
        const std::size_t length = utf8_sequence_length(s);
        if (length == 0)
            return false;
        s.remove_prefix(length);
    }
    return true;
}

std::string replace_invalid_utf8(std::string_view s)
{
    std::string out;
    out.reserve(s.size());
    bool in_bad_run = false;
    while (!s.empty()) {
        const std::size_t length = utf8_sequence_length(s);
        if (length == 0) {
            if (!in_bad_run)
                out += "\xEF\xBF\xBD";
            in_bad_run = true;
            s.remove_prefix(1);
        } else {
            in_bad_run = false;
            out.append(s.data(), length);
            s.remove_prefix(length);
        }
    }
    return out;
}

std::string replace_overrides(std::string s)
{
    constexpr std::string_view begin = "\xE2\x80"; // of both, and of dashes and quotation marks
    for (std::size_t at = s.find(begin); at != std::string::npos; at = s.find(begin, at + 1))
        if (at + 2 < s.size() && (s[at + 2] == '\xAD' || s[at + 2] == '\xAE'))
            s.replace(at, 3, "\xEF\xBF\xBD");
    return s;
}

std::string escape_bytes(std::string_view s)
{
    std::string out;
    out.reserve(s.size() + 16);
    while (!s.empty()) {
        std::size_t plain = 0;
        while (plain < s.size() && is_plain(static_cast<unsigned char>(s[plain])))
            ++plain;
        out.append(s.data(), plain);
        s.remove_prefix(plain);
        if (s.empty())
            break;
        std::size_t length = utf8_sequence_length(s);
        if (length > 1 && !is_noncharacter(s.substr(0, length))) {
            out.append(s.data(), length);
        } else {
            if (length == 0)
                length = 1;
            for (std::size_t i = 0; i < length; ++i) {
                const auto c = static_cast<unsigned char>(s[i]);
                const char escaped[] = {'\\', 'x', hex_digits[c >> 4], hex_digits[c & 15]};
                out.append(escaped, sizeof escaped);
            }
        }
        s.remove_prefix(length);
    }
    return out;
}

bool unescape_bytes(std::string_view s, std::string& out)
{
    std::string result;
    result.reserve(s.size());
    while (!s.empty()) {
        const std::size_t plain = std::min(s.find('\\'), s.size());
        result.append(s.data(), plain);
        s.remove_prefix(plain);
        if (s.empty())
            break;
        if (s.size() < 4 || s[1] != 'x' || hex_value(s[2]) < 0 || hex_value(s[3]) < 0)
            return false;
        result += static_cast<char>(hex_value(s[2]) * 16 + hex_value(s[3]));
        s.remove_prefix(4);
    }
    out.swap(result);
    return true;
}

std::string trim(std::string_view s)
{
    const std::size_t first = s.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return std::string();
    return std::string(s.substr(first, s.find_last_not_of(blanks) - first + 1));
}

} // namespace gen_helpers2
