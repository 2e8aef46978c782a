#include "cpil/strings.h"

#include "gen_helpers2/strings.h"

#include <unicode/casemap.h>
#include <unicode/locid.h>
#include <unicode/stringoptions.h>
#include <unicode/unistr.h>

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

} // namespace strings
} // namespace CPIL_2_18
