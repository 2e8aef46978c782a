#include "commondlg3/dir_checker.h"
#include "commondlg3/message_window.h"
#include "commondlg3/search_dirs_tab.h"
#include "commondlg3/text_utils.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

// What the page knows of its rows beyond their paths, and the list that binaries and symbols share.
namespace commondlg3 {

using FF_2_13::search_category_t;
using vdxpropgrid2::row_mark_t;
using vdxpropgrid2::row_t;

void search_dirs_tab_t::set_found_files(
    std::function<std::optional<found_files_t>(const std::string& dir)> found_files)
{
    m_found_files = std::move(found_files);
}

row_mark_t search_dirs_tab_t::get_note(const std::string& dir) const
{
    const auto files = m_found_files(dir);
    if (!files || files->all <= 0)
        return row_mark_t();
    const CPIL_2_18::generic::varg_list numbers{{"found", files->found}, {"all", files->all}};
    return {row_mark_t::kind_t::information, translate_message("panel.search_dirs.found", numbers),
            translate_message("panel.search_dirs.explain_found", numbers)};
}

bool search_dirs_tab_t::is_skipped(const row_t& row) const
{
    if (m_extras & can_skip)
        return row.checked;
    const auto kept = m_kept.find(row.key);
    return kept != m_kept.end() && !kept->second.enabled;
}

// A new row has an empty box, and is to be searched.
bool search_dirs_tab_t::get_box(const dir_info_t& dir) const
{
    return m_extras & can_skip ? !dir.enabled : dir.recursive;
}

search_dirs_tab_t::dirs_t search_dirs_tab_t::get_stored(search_category_t category) const
{
    dirs_t dirs;
    if (!m_container)
        return dirs;
    for (const auto at = m_container->get_dirs(category); !at->at_end(); at->next()) {
        dir_info_t& dir =
            dirs.emplace_back(path_info_t(at->get_path()), row_t{std::string(), at->is_recursive()});
        dir.enabled = at->is_enabled();
        dir.comment = at->get_comment();
    }
    return dirs;
}

void search_dirs_tab_t::remember_rows()
{
    for (const dir_info_t& dir : m_dirs)
        m_kept.insert_or_assign(dir.key, dir);
    follow_boxes();
}

// The heading speaks of rows that are searched alone.
void search_dirs_tab_t::follow_boxes()
{
    if (!(m_extras & can_skip) || !m_checker)
        return;
    int number = 0;
    for (const row_t& row : m_grid->get_rows()) {
        const bool changed = row.checked ? m_skipped.insert(row.key).second : m_skipped.erase(row.key) > 0;
        if (changed)
            tell_state(row.text, m_checker->get_state(row.key).kind, number);
        ++number;
    }
}

bool search_dirs_tab_t::has_shared_list() const
{
    return (m_extras & tell_sharing) &&
           (m_category == FF_2_13::category_binaries || m_category == FF_2_13::category_symbols);
}

// The other category's list is replaced with this one. Where it was another one, its directories may be lost,
// unless the user has them added here.
void search_dirs_tab_t::keep_shared_list()
{
    if (!has_shared_list() || !m_container)
        return;
    const bool is_of_binaries = m_category == FF_2_13::category_binaries;
    const dirs_t other = get_stored(is_of_binaries ? FF_2_13::category_symbols : FF_2_13::category_binaries);
    std::vector<std::string> missing;
    for (const dir_info_t& dir : other) {
        const std::string path = dir.path.as_string();
        const auto& rows = m_grid->get_rows();
        const auto is_path = [&](const auto& text) { return text == path; };
        const bool was_here = std::any_of(m_dirs.begin(), m_dirs.end(), [&](const dir_info_t& mine) {
            return is_path(mine.path.as_string());
        });
        const bool is_here =
            std::any_of(rows.begin(), rows.end(), [&](const row_t& row) { return is_path(row.text); });
        if (!was_here && !is_here) // otherwise the user has taken it away here
            missing.push_back(path);
    }
    if (missing.empty())
        return;
    std::string listed;
    for (const std::string& path : missing)
        listed += (listed.empty() ? "" : "\n") + path;
    message_window_t window;
    window.main_message = translate_message(is_of_binaries ? "panel.search_dirs.replace_symbols"
                                                           : "panel.search_dirs.replace_binaries");
    window.supplemental_message =
        translate_message("panel.search_dirs.replace_details", {{"count", static_cast<int>(missing.size())}});
    window.details_message = listed;
    window.icon_type = message_window_t::icon_types_t::warning;
    window.button_type = message_window_t::button_type_t::yes_no;
    const wxWeakRef<wxWindow> alive(this);
    if (show_modal(window, this) != message_window_t::result_yes && alive)
        m_grid->insert_rows(m_grid->row_count() - 1, missing);
}

} // namespace commondlg3
