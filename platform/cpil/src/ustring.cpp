#include "cpil/ustring.h"

#include "gen_helpers2/strings.h"

namespace CPIL_2_18 {

std::size_t ustring::length() const noexcept
{
    std::size_t count = 0;
    for (std::string_view rest(m_text); !rest.empty(); ++count) {
        const std::size_t bytes = gen_helpers2::utf8_sequence_length(rest);
        rest.remove_prefix(bytes == 0 ? 1 : bytes);
    }
    return count;
}

bool ustring::is_valid() const noexcept
{
    return gen_helpers2::is_valid_utf8(m_text);
}

} // namespace CPIL_2_18
