/// What a line's bytes look like on the screen. The same rules serve measuring and drawing, so that both
/// agree.
#pragma once

#include <wx/string.h>

#include <string>
#include <string_view>

namespace vdxcfrw7 {

constexpr char32_t replacement_character = 0xfffd;

char32_t decode_beyond_ascii(const char*& at, const char* end);

/// What stands for a control character of ASCII.
constexpr char32_t control_picture(unsigned char control)
{
    return control == 0x7f ? 0x2421 : 0x2400 + control;
}

/// The character at `at`, which is moved behind it. A byte that is no UTF-8, a control character beyond ASCII,
/// and one that turns the order of the rest around by force, is U+FFFD; one of ASCII other than tab is its
/// picture; whatever ends a line (CR, LF, both, and Unicode's own three) is a line feed.
inline char32_t decode(const char*& at, const char* end)
{
    const auto byte = static_cast<unsigned char>(*at);
    if (byte >= 0x80)
        return decode_beyond_ascii(at, end);
    ++at;
    if (byte >= 0x20)
        return byte == 0x7f ? control_picture(byte) : byte;
    if (byte == '\r') {
        if (at < end && *at == '\n')
            ++at;
        return '\n';
    }
    return byte == '\n' || byte == '\t' ? byte : control_picture(byte);
}

/// Whether what stands before the byte at `at` ends a line.
bool ends_line(std::string_view text, std::size_t at);
/// The text up to the end of its first line.
std::string_view first_line(std::string_view text);

/// The byte before `at` at which its character begins.
const char* previous(const char* begin, const char* at);

/// Whether a character's width depends on its neighbours, or its place on the direction of the text.
bool needs_shaping(char32_t character);
/// Whether a line may end behind it without a space.
bool breaks_after(char32_t character);

/// For drawing in one piece: ends of lines are left out, a tab is four spaces.
wxString to_shown(std::string_view text);

/// The first place of `needle`, which fold() must have made, at or after `from`; upper and lower case are
/// the same where both take as many bytes, as in nearly all scripts that have cases. npos when there is
/// none.
/// @param known where the needle's first letter is next; kept from one match of a text to the next, as looking
/// for a rare form of it takes all of the text
struct first_letters_t
{
    const char* small = nullptr;
    const char* large = nullptr;
};
std::size_t find_folded(std::string_view text, std::string_view needle, std::size_t from = 0,
                        first_letters_t* known = nullptr);
std::string fold(std::string_view text);

} // namespace vdxcfrw7
