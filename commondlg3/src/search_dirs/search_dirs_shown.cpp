#include "commondlg3/search_dirs_tab.h"

#include <utility>
#include <vector>

namespace commondlg3 {

std::vector<search_dirs_tab_t::shown_dir_t> search_dirs_tab_t::get_shown_dirs() const
{
    std::vector<shown_dir_t> shown;
    if (m_grid)
        for (const auto& row : m_grid->get_rows())
            shown.push_back({row.text, row.checked});
    return shown;
}

void search_dirs_tab_t::set_shown_dirs(const std::vector<shown_dir_t>& dirs)
{
    if (!m_grid)
        return;
    remove_messages();
    std::vector<vdxpropgrid2::row_t> rows;
    for (const shown_dir_t& dir : dirs)
        rows.push_back({dir.path, dir.recursive, vdxpropgrid2::no_key});
    m_grid->set_rows(std::move(rows));
    m_changed_signal.emit();
}

} // namespace commondlg3
