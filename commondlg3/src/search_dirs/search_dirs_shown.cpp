#include "commondlg3/search_dirs_tab.h"

#include "commondlg3/dir_checker.h"

#include <string>
#include <utility>
#include <vector>

namespace commondlg3 {

std::vector<search_dirs_tab_t::shown_dir_t> search_dirs_tab_t::get_shown_dirs() const
{
    std::vector<shown_dir_t> shown;
    if (m_grid)
        for (const auto& row : m_grid->get_rows()) {
            const auto kept = m_kept.find(row.key);
            const bool is_known = kept != m_kept.end();
            shown.push_back({row.text, m_extras & can_skip ? is_known && kept->second.recursive : row.checked,
                             !is_skipped(row), is_known ? kept->second.comment : std::string()});
        }
    return shown;
}

void search_dirs_tab_t::set_shown_dirs(const std::vector<shown_dir_t>& dirs)
{
    if (!m_grid)
        return;
    remove_messages();
    std::vector<dir_info_t> infos;
    std::vector<vdxpropgrid2::row_t> rows;
    for (const shown_dir_t& dir : dirs) {
        dir_info_t& info =
            infos.emplace_back(path_info_t(dir.path), vdxpropgrid2::row_t{dir.path, dir.recursive});
        info.enabled = dir.enabled;
        info.comment = dir.comment;
        rows.push_back({dir.path, get_box(info), vdxpropgrid2::no_key});
    }
    m_grid->set_rows(std::move(rows));
    for (std::size_t i = 0; i < infos.size(); ++i)
        m_kept.insert_or_assign(m_grid->get_key(static_cast<int>(i)), infos[i]);
    m_checker->restart();
    m_skipped.clear();
    follow_boxes();
    m_changed_signal.emit();
}

} // namespace commondlg3
