#pragma once

#include "cpil/varg_list.h"

#include <memory>
#include <string>
#include <vector>

namespace CPIL_2_18 {
namespace i18n {

/// A message's pattern, parsed once. Formatting is safe in any thread.
///
/// Most patterns hold nothing but `{name}`: those are kept as pieces and put together without ICU, which also
/// keeps the bytes of an argument that is no UTF-8 (a file's name) as they are. The rest goes to ICU.
class message_pattern_t
{
public:
    message_pattern_t(const std::string& pattern, const std::string& language);
    ~message_pattern_t();
    message_pattern_t(const message_pattern_t&) = delete;
    message_pattern_t& operator=(const message_pattern_t&) = delete;

    const std::string& raw() const noexcept { return m_raw; }
    std::string format(const generic::varg_list& args) const;

private:
    struct piece_t
    {
        std::string text;
        bool is_argument;
    };
    struct icu_t;

    bool parse_pieces();
    std::string format_pieces(const generic::varg_list& args) const;

    std::string m_raw;
    std::string m_language;
    std::vector<piece_t> m_pieces;
    bool m_right_to_left;
    bool m_simple;
    std::unique_ptr<icu_t> m_icu;
};

} // namespace i18n
} // namespace CPIL_2_18
