#pragma once

#include "cpil/export.h"

#include <string>
#include <string_view>

namespace CPIL_2_18 {

/// Changing the case of UTF-8 of any script by the full rules of Unicode, without a language's own
/// exceptions: the length may change ("ß" becomes "SS"). Bytes that are no UTF-8 are kept as they are.
namespace strings {

/// All of it in capitals.
CPIL_EXPORT std::string to_upper(std::string_view text);

/// Only the first code point changes, to the form it has at the head of a word (title case, so that one
/// letter for two sounds becomes "ǅ" rather than "Ǆ"). Marks that follow it stay. For sentences put together
/// from parts.
CPIL_EXPORT std::string first_to_upper(std::string_view text);

/// The direction in which a text runs.
/// @since 3.1
enum class direction_t
{
    none,          ///< nothing in it has a direction: digits, blanks, signs
    left_to_right, ///< as Latin
    right_to_left  ///< as Arabic
};

/// The direction of a text by the rule of Unicode: that of its first letter that stands in no isolate. Looks
/// at the first 1,000 bytes at most.
/// @since 3.1
CPIL_EXPORT direction_t base_direction(std::string_view text);

/// Whether any letter of the text runs in that direction.
/// @since 3.1
CPIL_EXPORT bool has_letters(std::string_view text, direction_t direction);

} // namespace strings
} // namespace CPIL_2_18

namespace cpil2 = CPIL_2_18;
