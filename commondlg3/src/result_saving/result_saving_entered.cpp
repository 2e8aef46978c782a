#include "commondlg3/result_saving_pp.h"

#include <wx_helpers1/text.h>

#include <wx/checkbox.h>
#include <wx/radiobut.h>
#include <wx/textctrl.h>

namespace commondlg3 {

using project_storing_t = result_saving_data_t::project_storing_t;

void result_saving_pp_t::set_data(const result_saving_data_t& data)
{
    m_data = data;
    load_settings();
}

result_saving_data_t result_saving_pp_t::get_entered() const
{
    result_saving_data_t data = m_data;
    if (!has_controls())
        return data;
    const shown_t shown = get_shown();
    data.set_name_template(shown.name_template);
    data.set_folder(shown.folder);
    data.set_vs_accessibility(shown.accessibility);
    data.set_proj_storing(shown.to_folder ? project_storing_t::to_folder
                                          : project_storing_t::to_project_directory);
    return data;
}

void result_saving_pp_t::set_entered(const result_saving_data_t& data)
{
    if (!has_controls())
        return;
    const bool to_folder = data.get_proj_storing() == project_storing_t::to_folder;
    m_to_folder->SetValue(to_folder);
    m_to_project->SetValue(!to_folder);
    m_accessibility->SetValue(data.get_vs_accessibility());
    process_enable_controls(to_folder || !(m_flags & show_project));
    m_template->SetValue(wx_helpers1::to_wx(data.get_name_template()));
    m_folder->SetValue(wx_helpers1::to_wx(data.get_folder()));
}

} // namespace commondlg3
