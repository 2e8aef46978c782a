#include "cpil/strings.h"

#include "gen_helpers2/strings.h"

#include <unicode/casemap.h>
#include <unicode/locid.h>
#include <unicode/stringoptions.h>
#include <unicode/ubidi.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <vector>

namespace CPIL_2_18 {
namespace strings {

namespace {

std::string upper_of_valid(std::string_view text)
{
    std::string out;
    icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int32_t>(text.size())))
        .toUpper(icu::Locale::getRoot())
        .toUTF8String(out);
    return out;
}

} // namespace

std::string to_upper(std::string_view text)
{
    std::string out;
    out.reserve(text.size());
    while (!text.empty()) {
        // Runs of valid text are mapped whole, as some letters depend on their neighbours.
        std::size_t valid = 0;
        while (const std::size_t length = gen_helpers2::utf8_sequence_length(text.substr(valid)))
            valid += length;
        if (valid > 0) {
            out += upper_of_valid(text.substr(0, valid));
            text.remove_prefix(valid);
        } else {
            out += text.front();
            text.remove_prefix(1);
        }
    }
    return out;
}

std::string first_to_upper(std::string_view text)
{
    const std::size_t length = gen_helpers2::utf8_sequence_length(text);
    if (length == 0)
        return std::string(text);
    const icu::UnicodeString first =
        icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int32_t>(length)));
    char16_t mapped[16];
    UErrorCode error = U_ZERO_ERROR;
    const int32_t mapped_length = icu::CaseMap::toTitle(
        "", U_TITLECASE_WHOLE_STRING | U_TITLECASE_NO_BREAK_ADJUSTMENT | U_TITLECASE_NO_LOWERCASE, nullptr,
        first.getBuffer(), first.length(), mapped, 16, nullptr, error);
    if (U_FAILURE(error))
        return std::string(text);
    std::string out;
    icu::UnicodeString(mapped, mapped_length).toUTF8String(out);
    out += text.substr(length);
    return out;
}

direction_t base_direction(std::string_view text)
{
    constexpr std::size_t looked_at = 1000;
    const std::string_view part = text.substr(0, looked_at);
    const auto utf16 =
        icu::UnicodeString::fromUTF8(icu::StringPiece(part.data(), static_cast<int32_t>(part.size())));
    // Asked for both, a paragraph without a direction gives both answers.
    const auto levels_of = [&utf16](UBiDiLevel otherwise) {
        std::vector<UBiDiLevel> levels;
        UErrorCode error = U_ZERO_ERROR;
        UBiDi* bidi = ubidi_open();
        ubidi_setPara(bidi, utf16.getBuffer(), utf16.length(), otherwise, nullptr, &error);
        const int32_t count = U_SUCCESS(error) ? ubidi_countParagraphs(bidi) : 0;
        for (int32_t i = 0; i < count; ++i) {
            levels.push_back(0);
            ubidi_getParagraphByIndex(bidi, i, nullptr, nullptr, &levels.back(), &error);
        }
        ubidi_close(bidi);
        return levels;
    };
    const auto left = levels_of(UBIDI_DEFAULT_LTR);
    const auto right = levels_of(UBIDI_DEFAULT_RTL);
    for (std::size_t i = 0; i < left.size() && i < right.size(); ++i)
        if (left[i] == right[i])
            return left[i] % 2 ? direction_t::right_to_left : direction_t::left_to_right;
    return direction_t::none;
}

bool has_letters(std::string_view text, direction_t direction)
{
    constexpr unsigned char first_right_to_left_byte = 0xD6; // of U+0590, where Hebrew and Arabic begin
    const auto comes_before = [](unsigned char c) { return c < first_right_to_left_byte; };
    if (direction == direction_t::right_to_left && std::all_of(text.begin(), text.end(), comes_before))
        return false;
    const auto size = static_cast<int32_t>(text.size());
    for (int32_t at = 0; at < size;) {
        UChar32 letter;
        U8_NEXT(text.data(), at, size, letter);
        const UCharDirection own = letter >= 0 ? u_charDirection(letter) : U_OTHER_NEUTRAL;
        if (direction == direction_t::left_to_right ? own == U_LEFT_TO_RIGHT
                                                    : own == U_RIGHT_TO_LEFT || own == U_RIGHT_TO_LEFT_ARABIC)
            return true;
    }
    return false;
}

} // namespace strings
} // namespace CPIL_2_18
