#include "cpil/varg_list.h"

namespace CPIL_2_18 {
namespace generic {

const varg_t* varg_list::find(std::string_view name) const noexcept
{
    for (const varg_t& arg : m_args)
        if (arg.name == name)
            return &arg;
    return nullptr;
}

} // namespace generic
} // namespace CPIL_2_18
