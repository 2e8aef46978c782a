#pragma once

#include "commondlg3/export.h"

#include <string>

namespace commondlg3 {

/// Where results are saved and what they are called: the record that a host hands to the result-saving page,
/// and reads back from it. A value of UTF-8 texts; any bytes in the folder. Nothing in it is checked.
class COMMONDLG3_EXPORT result_saving_data_t
{
public:
    /// Where results go when no project is used. The page passes it through.
    enum class temp_storing_t : int
    {
        to_temp_directory = 0,
        to_folder = 1
    };
    /// Where the results of a project go: the page's two radio buttons.
    enum class project_storing_t : int
    {
        to_folder = 0,
        to_project_directory = 1
    };

    result_saving_data_t(temp_storing_t temp_storing, project_storing_t project_storing,
                         bool vs_accessibility, const std::string& name_template, const std::string& folder);

    /// Where results go when no project is used.
    temp_storing_t get_temp_storing() const { return m_temp_storing; }
    void set_temp_storing(temp_storing_t storing) { m_temp_storing = storing; }
    /// Where the results of a project go.
    project_storing_t get_proj_storing() const { return m_project_storing; }
    void set_proj_storing(project_storing_t storing) { m_project_storing = storing; }
    /// Whether the development environment may list the results.
    bool get_vs_accessibility() const { return m_vs_accessibility; }
    void set_vs_accessibility(bool accessible) { m_vs_accessibility = accessible; }
    /// The name of a result directory, with a run of '@' in place of the running number.
    std::string get_name_template() const { return m_name_template; }
    void set_name_template(const std::string& name_template) { m_name_template = name_template; }
    /// The folder in which result directories are created.
    std::string get_folder() const { return m_folder; }
    void set_folder(const std::string& folder) { m_folder = folder; }
    /// The current project's directory, for information; empty at first.
    std::string get_proj_default_folder() const { return m_project_default_folder; }
    void set_proj_default_folder(const std::string& folder) { m_project_default_folder = folder; }

private:
    temp_storing_t m_temp_storing;
    project_storing_t m_project_storing;
    bool m_vs_accessibility;
    std::string m_name_template;
    std::string m_folder;
    std::string m_project_default_folder;
};

} // namespace commondlg3
