#include "commondlg3/result_saving_data.h"

namespace commondlg3 {

result_saving_data_t::result_saving_data_t(temp_storing_t temp_storing, project_storing_t project_storing,
                                           bool vs_accessibility, const std::string& name_template,
                                           const std::string& folder)
    : m_temp_storing(temp_storing),
      m_project_storing(project_storing),
      m_vs_accessibility(vs_accessibility),
      m_name_template(name_template),
      m_folder(folder)
{
}

} // namespace commondlg3
