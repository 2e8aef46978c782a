#include "commondlg3/editor_pp.h"

namespace commondlg3 {

void editor_pp_t::set_data(const editor_data_t& data)
{
    const editor_data_t unchanged = m_unchanged;
    const bool chosen = m_chosen;
    m_data = data;
    load_settings();
    m_unchanged = unchanged;
    m_chosen = chosen;
}

} // namespace commondlg3
