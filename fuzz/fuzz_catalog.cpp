// Patterns and compiled message files: nothing crashes, and patterns put together without ICU look as ICU has
// them.
#include "check.h"
#include "cpil/catalog.h"
#include "cpil/mo_catalog.h"
#include "cpil/strings.h"
#include "gen_helpers2/strings.h"

#include <unicode/msgfmt.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

/// What ICU makes of a pattern with the argument "a"; the pattern itself if nothing.
std::string by_icu(const std::string& pattern, const icu::Formattable& argument)
{
    UErrorCode error = U_ZERO_ERROR;
    UParseError where;
    const icu::MessageFormat format(icu::UnicodeString::fromUTF8(pattern), icu::Locale("en"), where, error);
    if (U_FAILURE(error))
        return pattern;
    const icu::UnicodeString name("a");
    icu::UnicodeString text;
    format.format(&name, &argument, 1, text, error);
    if (U_FAILURE(error))
        return pattern;
    std::string out;
    return text.toUTF8String(out);
}

void check_same(const std::string& pattern, const std::string& ours, const std::string& theirs)
{
    if (ours == theirs)
        return;
    std::fprintf(stderr, "pattern <%s>: <%s> instead of <%s>\n", pattern.c_str(), ours.c_str(),
                 theirs.c_str());
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    if (const auto catalog = CPIL_2_18::i18n::read_mo_catalog(bytes, "fuzz", "en"))
        for (const char* key : {"", "key", "a", "%Simple"})
            if (catalog->has_message(key))
                catalog->message(key).as_ustring({{"a", "x"}});

    CPIL_2_18::strings::to_upper(bytes);
    CPIL_2_18::strings::first_to_upper(bytes);

    const std::string pattern(bytes.c_str());
    if (pattern.empty())
        return 0;
    const auto message = CPIL_2_18::i18n::make_catalog("fuzz", "en", {{"key", pattern}})->message("key");
    check(message.raw() == pattern);
    const std::string with_text = message.as_ustring({{"a", "x"}});
    const std::string with_number = message.as_ustring({{"a", 12345}});
    // ICU is not given patterns with very deep nesting; those are shown as they are.
    if (gen_helpers2::is_valid_utf8(pattern) && std::count(pattern.begin(), pattern.end(), '{') <= 100) {
        check_same(pattern, with_text, by_icu(pattern, icu::Formattable("x")));
        check_same(pattern, with_number, by_icu(pattern, icu::Formattable(int64_t(12345))));
    }
    return 0;
}
