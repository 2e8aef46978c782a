#include "commondlg3/caption_panel.h"
#include "commondlg3/dir_checker.h"
#include "commondlg3/search_dirs_tab.h"
#include "commondlg3/text_utils.h"

#include <cfgmgr2/message_catalog.h>

#include <string>

// What the heading says of the rows.
namespace commondlg3 {
namespace {

using state_t = dir_state_t::kind_t;
using vdxpropgrid2::row_key_t;

} // namespace

bool search_dirs_tab_t::validate_dir(const path_info_t& path, int row)
{
    state_t state = state_t::missing;
    if (path.is_ok() && path.is_exists())
        state = path.is_file() ? state_t::file : state_t::directory;
    return tell_state(path.as_string(), state, row);
}

bool search_dirs_tab_t::tell_state(const std::string& path, state_t state, int row)
{
    // Whoever leaves it out knows that it is not there.
    if (m_grid && (m_extras & can_skip) && row >= 0 && row < m_grid->row_count() - 1 &&
        is_skipped(m_grid->get_rows()[static_cast<std::size_t>(row)])) {
        remove_message(m_grid->get_key(row));
        return state == state_t::directory;
    }
    switch (state) {
    case state_t::directory:
        if (m_grid)
            remove_message(m_grid->get_key(row));
        return true;
    case state_t::file:
        push_message(translate_message("panel.search_dirs.error_not_a_dir", {{"dir", path}}), row);
        return false;
    case state_t::missing:
        push_message(get_directory_error_msg(0, path), row);
        return false;
    case state_t::unknown:
        break;
    }
    return false;
}

std::string search_dirs_tab_t::get_directory_error_msg(int, const std::string& dir) const
{
    const auto catalog = cfgmgr2::getMessageCatalog(m_catalog_name);
    return catalog ? translate_message("panel.search_dirs.error_dir_nonexistent", {{"dir", dir}})
                   : std::string();
}

void search_dirs_tab_t::push_message(const std::string& text, int row)
{
    if (m_dir_error_mode < 1 || !m_grid || !m_caption)
        return;
    const row_key_t key = m_grid->get_key(row);
    if (key == vdxpropgrid2::no_key)
        return;
    const auto message = m_messages.find(key);
    if (message != m_messages.end()) {
        m_caption->edit_message(message->second, text);
        m_caption->show_message(message->second, false);
        return;
    }
    const int id = m_caption->add_message(caption_panel_t::severity_t::warning, text);
    m_messages[key] = id;
    m_caption->show_message(id, false);
}

void search_dirs_tab_t::remove_messages()
{
    if (m_caption)
        for (const auto& [key, id] : m_messages)
            m_caption->remove_message(id);
    m_messages.clear();
}

void search_dirs_tab_t::remove_message(row_key_t key)
{
    const auto message = m_messages.find(key);
    if (message == m_messages.end())
        return;
    const int id = message->second;
    m_messages.erase(message);
    m_caption->remove_message(id);
}

void search_dirs_tab_t::select_row_of(int message)
{
    for (const auto& [key, id] : m_messages)
        if (id == message)
            m_grid->set_current_row(m_grid->find_row(key));
}

int search_dirs_tab_t::get_message_id(row_key_t key) const
{
    const auto message = m_messages.find(key);
    return message == m_messages.end() ? -1 : message->second;
}

void search_dirs_tab_t::set_dir_error_mode(int mode)
{
    const bool was_silent = m_dir_error_mode < 1;
    m_dir_error_mode = mode;
    if (mode < 1)
        remove_messages();
    else if (was_silent && m_grid)
        for (int row = 0; row < m_grid->row_count() - 1; ++row)
            tell_state(m_grid->get_text(row), m_checker->get_state(m_grid->get_key(row)).kind, row);
}

} // namespace commondlg3
