#include "commondlg3/file_finder_pp.h"

#include "commondlg3/resources.h"
#include "commondlg3/search_dirs_panel.h"

#include <wx/sizer.h>

#include <utility>

namespace commondlg3 {

file_finder_pp_t::file_finder_pp_t(FF_2_13::ObjectPtr<FF_2_13::IEditableSearchDirContainer> container)
    : m_container(std::move(container))
{
    set_resource_object("pref.file_finder_pp");
}

file_finder_pp_t::~file_finder_pp_t() = default;

void file_finder_pp_t::on_init_dialog()
{
    if (!is_loaded())
        return;
    m_panel = new search_dirs_panel_t(m_container);
    m_panel->create(this);
    GetSizer()->Add(m_panel, 1, wxEXPAND);
}

bool file_finder_pp_t::save_settings()
{
    return !m_panel || m_panel->save_settings();
}

bool file_finder_pp_t::is_changed() const
{
    return m_panel && m_panel->is_changed();
}

} // namespace commondlg3
