#pragma once

#include "vdx/event_log.h"

#include "shown_text.h"

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace vdxcfrw7 {

/// What is looked for in a log: a text, or an expression.
///
///     matcher.start(line);
///     for (text_matcher_t::match_t match; matcher.next(match);)
///         use(match.begin, match.end);
///
/// An expression that takes longer than `patience` for one text has given up from then on: it finds nothing
/// any more.
class text_matcher_t
{
public:
    static constexpr std::chrono::milliseconds patience{100};

    struct match_t
    {
        std::size_t begin; ///< in bytes of the text
        std::size_t end;
    };

    text_matcher_t();
    ~text_matcher_t();

    /// False when it is no expression; it finds nothing then.
    bool set(const std::string& text, const CEventLog::find_options_t& options);
    /// Whether it looks for nothing.
    bool is_empty() const { return m_needle.empty(); }
    const std::string& get_text() const { return m_asked; }
    const CEventLog::find_options_t& get_options() const { return m_options; }
    bool is_wrong() const { return m_wrong; }
    bool has_given_up() const { return m_given_up; }

    /// The text must live until the last next().
    void start(std::string_view text);
    /// The next match of at least one byte behind the one before; false when there is none.
    bool next(match_t& match);
    /// Whether it is anywhere in the text.
    bool is_in(std::string_view text);

private:
    struct expression_t;

    bool next_expression(match_t& match);
    bool is_whole_word(std::size_t begin, std::size_t end) const;

    std::string m_asked;
    std::string m_needle; // folded where case is no matter
    CEventLog::find_options_t m_options;
    bool m_wrong = false;
    bool m_given_up = false;
    std::string_view m_text;
    std::size_t m_from = 0;
    first_letters_t m_letters;
    std::unique_ptr<expression_t> m_expression;
};

} // namespace vdxcfrw7
