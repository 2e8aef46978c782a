#pragma once

#include "gen_helpers2/export.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace gen_helpers2 {

/// Length in bytes (1 to 4) of the well-formed UTF-8 sequence at the start of `s`; 0 if there is none.
/// Surrogates, overlong forms and values above U+10FFFF are not well-formed.
GEN_HELPERS2_EXPORT std::size_t utf8_sequence_length(std::string_view s) noexcept;

/// Whether all of it is well-formed; the empty text is.
GEN_HELPERS2_EXPORT bool is_valid_utf8(std::string_view s) noexcept;

/// Puts one U+FFFD in place of each run of bytes that is no UTF-8. For showing only: the bytes are lost.
GEN_HELPERS2_EXPORT std::string replace_invalid_utf8(std::string_view s);

/// Puts one U+FFFD in place of each character that turns the order of what follows it around by force
/// (U+202D and U+202E): a name that holds one could show as another, and would reorder the sentence around
/// it. For showing only.
GEN_HELPERS2_EXPORT std::string replace_overrides(std::string s);

/// Writes any bytes as printable UTF-8 without loss: control characters, the backslash, bytes that are no
/// UTF-8 and the non-characters U+FFFE and U+FFFF become `\xHH`. Everything else stays as it is.
GEN_HELPERS2_EXPORT std::string escape_bytes(std::string_view s);

/// The way back. False, leaving `out` as it was, if a backslash does not begin a `\xHH`.
GEN_HELPERS2_EXPORT bool unescape_bytes(std::string_view s, std::string& out);

/// Without the ASCII blanks (space, tab, line ends, vertical tab, form feed) at both ends.
GEN_HELPERS2_EXPORT std::string trim(std::string_view s);

} // namespace gen_helpers2

namespace gh2 = gen_helpers2;
