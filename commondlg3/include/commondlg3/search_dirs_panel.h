#pragma once

#include "commondlg3/pref_base.h"

#include <ff/search_directories.h>
#include <vdxpropgrid2/property_grid.h>

#include <memory>
#include <string>
#include <vector>

class wxBitmapButton;
class wxChoice;

namespace commondlg3 {

class dir_checker_t;

/// The file finder's directories for several types of files in one panel: the type is chosen above the list,
/// and each directory has a check box for the folders below it.
///
///     m_panel = new search_dirs_panel_t(container);
///     m_panel->create(this);
///     ...
///     m_panel->save_settings();                     // all types, into the container and on to the disk
///
/// For a page of one category use search_dirs_tab_t. Saving tells of a listed path that is no directory, and
/// of lists that could not be written; in both cases nothing that was entered is lost, and after the latter
/// is_changed() stays true. Without a container the lists are empty and saving does nothing. GUI thread.
class COMMONDLG3_EXPORT search_dirs_panel_t : public pref_base_t
{
public:
    using container_t = FF_2_13::ObjectPtr<FF_2_13::IEditableSearchDirContainer>;

    explicit search_dirs_panel_t(container_t container);
    ~search_dirs_panel_t() override;

    void on_init_dialog() override;
    void on_update_ui_settings() override;
    /// Takes the container's lists. What was edited and not saved is lost.
    void load_settings();
    bool save_settings() override;

    /// Whether saving would write something. What is being typed counts.
    [[nodiscard]] bool is_changed() const;
    /// Raised when is_changed() may answer otherwise than before.
    gen_helpers2::signal_t<>& get_changed_signal() { return m_changed_signal; }
    /// What the last saving came to.
    [[nodiscard]] gen_helpers2::error_code_t get_save_result() const { return m_save_result; }

    /// Shows the list of another type, counted as in the combo box.
    void select_type(int type);
    int get_type() const { return m_type; }
    /// Null when the layout could not be loaded.
    vdxpropgrid2::property_grid_t* get_grid() const { return m_grid; }

    /// Takes a row of the shown list away; the input row is refused.
    void remove_row(int row);

private:
    struct file_type_t
    {
        FF_2_13::search_category_t category;
        std::vector<vdxpropgrid2::row_t> rows;
        std::vector<vdxpropgrid2::row_t> saved;
        std::string not_a_dir; ///< the first path that was found to be none
        int not_dirs = 0;
    };

    void connect_grid();
    void show_type();
    void keep_shown_rows();
    void fill_container();
    void tell_not_a_dir();
    void tell_not_saved();
    void move_current(int by);
    void update_buttons();

    container_t m_container;
    std::vector<file_type_t> m_types;
    int m_type = 0;
    gen_helpers2::error_code_t m_save_result;
    gen_helpers2::signal_t<> m_changed_signal;
    wxChoice* m_type_box = nullptr;
    vdxpropgrid2::property_grid_t* m_grid = nullptr;
    wxBitmapButton* m_up = nullptr;
    wxBitmapButton* m_down = nullptr;
    wxBitmapButton* m_remove = nullptr;
    std::unique_ptr<dir_checker_t> m_checker;
};

} // namespace commondlg3
