#include "message_pattern.h"

#include "cpil/strings.h"

#include <gen_helpers2/strings.h>

#include <unicode/fmtable.h>
#include <unicode/locid.h>
#include <unicode/msgfmt.h>
#include <unicode/numfmt.h>
#include <unicode/uloc.h>
#include <unicode/unistr.h>

#include <map>
#include <mutex>
#include <string_view>

namespace CPIL_2_18 {
namespace i18n {

namespace {

icu::UnicodeString to_icu(std::string_view text)
{
    return icu::UnicodeString::fromUTF8(icu::StringPiece(text.data(), static_cast<int32_t>(text.size())));
}

bool is_name_start(char c) noexcept
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_';
}
bool is_name_part(char c) noexcept
{
    return is_name_start(c) || (c >= '0' && c <= '9');
}

/// One number format for each language; never destroyed, as texts are formatted until the very end.
const icu::NumberFormat* number_format(const std::string& language)
{
    static std::mutex* const mutex = new std::mutex;
    static auto* const formats = new std::map<std::string, std::unique_ptr<icu::NumberFormat>>;
    const std::lock_guard<std::mutex> lock(*mutex);
    const auto [place, is_new] = formats->try_emplace(language);
    if (is_new) {
        UErrorCode error = U_ZERO_ERROR;
        place->second.reset(icu::NumberFormat::createInstance(icu::Locale(language.c_str()), error));
        if (U_FAILURE(error))
            place->second.reset();
    }
    return place->second.get();
}

/// ICU's parser calls itself for every brace within another; no message of ours needs more than a few.
bool is_nested_too_deeply(std::string_view pattern)
{
    constexpr int max_nesting = 100;
    int depth = 0;
    for (const char c : pattern) {
        depth += c == '{' ? 1 : c == '}' && depth > 0 ? -1 : 0;
        if (depth > max_nesting)
            return true;
    }
    return false;
}

// A path or a name from another script would draw the signs and words around it into its own direction.
std::string isolated(const std::string& argument, bool right_to_left)
{
    const std::string text = gen_helpers2::replace_overrides(argument);
    const auto against =
        right_to_left ? strings::direction_t::left_to_right : strings::direction_t::right_to_left;
    if (!strings::has_letters(text, against) || text.find('\n') != std::string::npos)
        return text;
    return "\u2068" + text + "\u2069";
}

icu::Formattable to_formattable(const generic::varg_t& arg, bool right_to_left)
{
    if (const auto* whole = std::get_if<long long>(&arg.value))
        return icu::Formattable(static_cast<int64_t>(*whole));
    if (const auto* real = std::get_if<double>(&arg.value))
        return icu::Formattable(*real);
    return icu::Formattable(to_icu(isolated(std::get<std::string>(arg.value), right_to_left)));
}

void append_argument(std::string& out, const generic::varg_t& arg, const std::string& language,
                     bool right_to_left)
{
    if (const auto* text = std::get_if<std::string>(&arg.value)) {
        out += isolated(*text, right_to_left);
        return;
    }
    icu::UnicodeString shown;
    UErrorCode error = U_ZERO_ERROR;
    if (const icu::NumberFormat* format = number_format(language))
        format->format(to_formattable(arg, right_to_left), shown, error);
    shown.toUTF8String(out);
}

} // namespace

struct message_pattern_t::icu_t
{
    /// ICU's format makes some of its parts only when they are needed, without a lock of its own.
    std::mutex mutex;
    std::unique_ptr<icu::MessageFormat> format;
};

message_pattern_t::message_pattern_t(const std::string& pattern, const std::string& language)
    : m_raw(pattern),
      m_language(language),
      m_right_to_left(uloc_isRightToLeft(language.c_str())),
      m_simple(parse_pieces())
{
    if (m_simple)
        return;
    m_pieces.clear();
    if (is_nested_too_deeply(pattern))
        return;
    UErrorCode error = U_ZERO_ERROR;
    UParseError where;
    auto format =
        std::make_unique<icu::MessageFormat>(to_icu(pattern), icu::Locale(language.c_str()), where, error);
    if (U_SUCCESS(error)) {
        m_icu = std::make_unique<icu_t>();
        m_icu->format = std::move(format);
    }
}

message_pattern_t::~message_pattern_t() = default;

bool message_pattern_t::parse_pieces()
{
    // The rules of ICU outside of plural and choice forms: an apostrophe quotes only in front of a brace, up
    // to the next one or the end; two of them are one, quoted or not; a closing brace without an opening one
    // is text.
    std::string text;
    bool quoted = false;
    const std::string& s = m_raw;
    for (std::size_t i = 0; i < s.size(); ++i) {
        const char c = s[i];
        const char next = i + 1 < s.size() ? s[i + 1] : '\0';
        if (c == '\'' && next == '\'') {
            text += c;
            ++i;
        } else if (c == '\'' && (quoted || next == '{' || next == '}')) {
            quoted = !quoted;
        } else if (c == '{' && !quoted) {
            std::size_t end = i + 1;
            if (end < s.size() && is_name_start(s[end]))
                while (end < s.size() && is_name_part(s[end]))
                    ++end;
            if (end == i + 1 || end == s.size() || s[end] != '}')
                return false;
            if (!text.empty())
                m_pieces.push_back({text, false});
            text.clear();
            m_pieces.push_back({s.substr(i + 1, end - i - 1), true});
            i = end;
        } else {
            text += c;
        }
    }
    if (!text.empty())
        m_pieces.push_back({text, false});
    return true;
}

std::string message_pattern_t::format_pieces(const generic::varg_list& args) const
{
    std::string out;
    out.reserve(m_raw.size() + 32);
    for (const piece_t& piece : m_pieces) {
        if (!piece.is_argument) {
            out += piece.text;
        } else if (const generic::varg_t* arg = args.find(piece.text)) {
            append_argument(out, *arg, m_language, m_right_to_left);
        } else {
            out += '{';
            out += piece.text;
            out += '}';
        }
    }
    return out;
}

std::string message_pattern_t::format(const generic::varg_list& args) const
{
    if (m_simple)
        return format_pieces(args);
    if (!m_icu)
        return m_raw;
    std::vector<icu::UnicodeString> names;
    std::vector<icu::Formattable> values;
    names.reserve(args.size());
    values.reserve(args.size());
    for (const generic::varg_t& arg : args) {
        names.push_back(to_icu(arg.name));
        values.push_back(to_formattable(arg, m_right_to_left));
    }
    icu::UnicodeString text;
    UErrorCode error = U_ZERO_ERROR;
    {
        const std::lock_guard<std::mutex> lock(m_icu->mutex);
        m_icu->format->format(names.data(), values.data(), static_cast<int32_t>(args.size()), text, error);
    }
    if (U_FAILURE(error))
        return m_raw;
    std::string out;
    text.toUTF8String(out);
    return out;
}

} // namespace i18n
} // namespace CPIL_2_18
