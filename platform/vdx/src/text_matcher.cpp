#include "text_matcher.h"

#include <glib.h>
#include <unicode/regex.h>
#include <unicode/utext.h>

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace vdxcfrw7 {

using steady_clock_t = std::chrono::steady_clock;

struct text_matcher_t::expression_t
{
    ~expression_t() { utext_close(&text); }

    bool goes_on()
    {
        const auto now = steady_clock_t::now();
        if (!timed)
            deadline = now + patience;
        timed = true;
        return now < deadline;
    }
    // Asked after thousands of steps of one match.
    static UBool U_CALLCONV matches_on(const void* self, int32_t)
    {
        return static_cast<expression_t*>(const_cast<void*>(self))->goes_on();
    }
    // And for each place to match at: looking at the clock would take longer than that.
    static UBool U_CALLCONV finds_on(const void* context, int64_t)
    {
        auto* self = static_cast<expression_t*>(const_cast<void*>(context));
        return ++self->places % 1024 != 0 || self->goes_on();
    }

    // Texts in ASCII are looked through in the library's own encoding, which is several times as fast, and
    // places in them are the same.
    void start(std::string_view bytes, UErrorCode& error)
    {
        places = 0;
        timed = false;
        if (bytes.size() <= longest_copied && std::none_of(bytes.begin(), bytes.end(), [](char c) {
                return static_cast<unsigned char>(c) >= 0x80;
            })) {
            copy.assign(bytes.begin(), bytes.end());
            copied.setTo(false, copy.data(), static_cast<std::int32_t>(copy.size()));
            matcher->reset(copied);
            return;
        }
        utext_openUTF8(&text, bytes.data(), static_cast<std::int64_t>(bytes.size()), &error);
        if (U_SUCCESS(error))
            matcher->reset(&text);
    }

    static constexpr std::size_t longest_copied = std::size_t(64) * 1024;

    std::unique_ptr<icu::RegexPattern> pattern;
    std::unique_ptr<icu::RegexMatcher> matcher;
    std::u16string copy;
    icu::UnicodeString copied;
    UText text = UTEXT_INITIALIZER;
    // For this text.
    unsigned int places = 0;
    bool timed = false;
    steady_clock_t::time_point deadline;
};

text_matcher_t::text_matcher_t() = default;
text_matcher_t::~text_matcher_t() = default;

bool text_matcher_t::set(const std::string& text, const CEventLog::find_options_t& options)
{
    m_asked = text;
    m_options = options;
    m_wrong = m_given_up = false;
    m_expression.reset();
    m_needle = options.match_case || options.expression ? text : fold(text);
    m_text = {};
    if (!options.expression || text.empty())
        return true;
    auto made = std::make_unique<expression_t>();
    UErrorCode error = U_ZERO_ERROR;
    const std::string whole = options.whole_words ? "\\b(?:" + text + ")\\b" : text;
    const std::uint32_t flags =
        UREGEX_MULTILINE | (options.match_case ? 0u : std::uint32_t{UREGEX_CASE_INSENSITIVE});
    UParseError where;
    made->pattern.reset(icu::RegexPattern::compile(icu::UnicodeString::fromUTF8(whole), flags, where, error));
    if (U_SUCCESS(error))
        made->matcher.reset(made->pattern->matcher(error));
    if (U_SUCCESS(error)) {
        made->matcher->setMatchCallback(expression_t::matches_on, made.get(), error);
        made->matcher->setFindProgressCallback(expression_t::finds_on, made.get(), error);
    }
    m_wrong = U_FAILURE(error);
    if (!m_wrong)
        m_expression = std::move(made);
    return !m_wrong;
}

void text_matcher_t::start(std::string_view text)
{
    m_text = text;
    m_from = 0;
    m_letters = {};
    if (!m_expression || m_given_up)
        return;
    UErrorCode error = U_ZERO_ERROR;
    m_expression->start(text, error);
    if (U_FAILURE(error)) {
        m_given_up = true;
        return;
    }
}

bool text_matcher_t::next(match_t& match)
{
    if (m_needle.empty() || m_wrong || m_given_up)
        return false;
    if (m_options.expression)
        return next_expression(match);
    while (m_from <= m_text.size()) {
        std::size_t at = std::string_view::npos;
        if (!m_options.match_case)
            at = find_folded(m_text, m_needle, m_from, &m_letters);
        else if (const void* found =
                     memmem(m_text.data() + m_from, m_text.size() - m_from, m_needle.data(), m_needle.size()))
            at = static_cast<std::size_t>(static_cast<const char*>(found) - m_text.data());
        if (at == std::string_view::npos)
            return false;
        m_from = at + m_needle.size();
        if (!m_options.whole_words || is_whole_word(at, m_from)) {
            match = {at, m_from};
            return true;
        }
        m_from = at + 1;
    }
    return false;
}

bool text_matcher_t::next_expression(match_t& match)
{
    for (;;) {
        UErrorCode error = U_ZERO_ERROR;
        const bool found = m_expression->matcher->find(error);
        if (U_FAILURE(error)) { // out of time, or of room for its stack
            m_given_up = true;
            return false;
        }
        if (!found)
            return false;
        match = {static_cast<std::size_t>(m_expression->matcher->start64(error)),
                 static_cast<std::size_t>(m_expression->matcher->end64(error))};
        if (match.begin < match.end)
            return true;
    }
}

bool text_matcher_t::is_whole_word(std::size_t begin, std::size_t end) const
{
    const auto is_word = [](char32_t character) {
        return character == '_' || g_unichar_isalnum(static_cast<gunichar>(character));
    };
    const char* const first = m_text.data();
    const char* const last = first + m_text.size();
    if (begin > 0) {
        const char* at = previous(first, first + begin);
        if (is_word(decode(at, last)))
            return false;
    }
    const char* behind = first + end;
    return behind >= last || !is_word(decode(behind, last));
}

bool text_matcher_t::is_in(std::string_view text)
{
    start(text);
    match_t match;
    return next(match);
}

} // namespace vdxcfrw7
