#pragma once

#include "commondlg3/path_info.h"
#include "commondlg3/pref_base.h"
#include "commondlg3/search_dirs_data.h"

#include <ff/search_directories.h>
#include <vdxpropgrid2/property_grid.h>

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

class wxBitmapButton;

namespace commondlg3 {

class caption_panel_t;
class dir_checker_t;

/// The page of one category of the file finder's directories: a list edited in place, in the order in which
/// the directories are searched, below a heading that says which of them cannot be used. Stepping through its
/// messages makes the row that each speaks of the current one.
///
///     m_tab = new search_dirs_tab_t(container, FF_2_13::category_sources);
///     m_tab->create(parent);                       // the parent's window owns it
///     ...
///     m_tab->save_settings();                      // into the container
///     result = container->save();                  // and on to the disk: the host's affair
///
/// For several categories in one page use search_dirs_panel_t. The page never refuses to be saved: whatever
/// is in the list is kept, and each directory that is missing or is none is a warning of the heading. The
/// categories for binaries and symbols are edited and written as one. Directories are looked at in the
/// background (dir_checker_t), so that a network folder which does not answer keeps nobody waiting.
///
/// Without a container the list is empty and saving keeps it only in the page. When the layout could not be
/// loaded the page is empty and nothing is saved. GUI thread.
class COMMONDLG3_EXPORT search_dirs_tab_t : public pref_base_t
{
public:
    /// A directory of the list, and the row that shows it.
    struct dir_info_t
    {
        dir_info_t(const path_info_t& dir, const vdxpropgrid2::row_t& shown)
            : path(dir), key(shown.key), recursive(shown.checked)
        {
        }
        path_info_t path;
        vdxpropgrid2::row_key_t key; ///< no_key before the grid has it
        bool recursive;              ///< not shown here, but kept
        /// @since 3.1
        bool enabled = true;
        /// Not shown here, but kept, also when the path is edited.
        /// @since 3.1
        std::string comment;
    };
    using dirs_t = std::vector<dir_info_t>;
    using container_t = FF_2_13::ObjectPtr<FF_2_13::IEditableSearchDirContainer>;

    /// What the page does beyond its list.
    /// @since 3.1
    enum extras_t : unsigned
    {
        can_skip = 1, ///< a column of boxes: a directory can stay in the list and not be searched
        /// Says that binaries and symbols share their list, and asks before it replaces one that is another.
        tell_sharing = 2
    };
    /// How many of the files that the last result refers to are in a directory.
    /// @since 3.1
    struct found_files_t
    {
        int found = 0;
        int all = 0;
    };

    /// @param error_mode see set_dir_error_mode()
    search_dirs_tab_t(container_t container, FF_2_13::search_category_t category, int error_mode = 1);
    ~search_dirs_tab_t() override;

    /// Before create().
    /// @since 3.1
    void set_extras(unsigned extras) { m_extras = extras; }
    /// Has the rows of directories say how many files of the last result are there; nothing where the host
    /// does not know. Called on the GUI thread, often: it answers from what it knows. Before create().
    /// @since 3.1
    void set_found_files(std::function<std::optional<found_files_t>(const std::string& dir)> found_files);

    void on_init_dialog() override;
    void on_update_ui_settings() override;
    /// Takes the container's list. What was edited and not saved is lost.
    void load_settings();
    /// Keeps what is being typed, writes the list into the container and shows it as it was written. With
    /// `tell_sharing` a modal window asks first where the list that is replaced with this one is another.
    bool save_settings() override;
    /// Takes the container's list and shows it.
    void set_data();
    /// Another container or category, whose list is shown.
    void set_data(container_t container, FF_2_13::search_category_t category);

    /// A directory as it stands in the list, for hosts that keep it themselves.
    /// @since 3.1
    struct shown_dir_t
    {
        std::string path;
        bool recursive = false;
        bool enabled = true;
        std::string comment;
    };
    /// What the list shows now; what is being typed is no part of it yet.
    /// @since 3.1
    std::vector<shown_dir_t> get_shown_dirs() const;
    /// Another list in its place, as if the user had made it; it can be undone.
    /// @since 3.1
    void set_shown_dirs(const std::vector<shown_dir_t>& dirs);
    /// Whether saving would write another list than the one that was loaded or saved last. What is being
    /// typed counts.
    [[nodiscard]] bool is_changed() const;
    /// Raised when is_changed() may answer otherwise than before.
    gen_helpers2::signal_t<>& get_changed_signal() { return m_changed_signal; }

    /// Below 1 the heading shows no messages about directories; the rows stay marked.
    void set_dir_error_mode(int mode);
    int get_dir_error_mode() const { return m_dir_error_mode; }
    /// Null when the layout could not be loaded, as is the grid.
    caption_panel_t* get_caption_panel() const { return m_caption; }
    vdxpropgrid2::property_grid_t* get_grid() const { return m_grid; }
    /// As loaded or saved last.
    const dirs_t& get_dirs() const { return m_dirs; }

    /// Looks at one directory at once, and puts a message about it for that row, or takes the row's away.
    /// @return whether it is an existing directory
    bool validate_dir(const path_info_t& path, int row);
    /// What the heading says of a directory that does not exist; empty without a catalog. The number changes
    /// nothing.
    std::string get_directory_error_msg(int number, const std::string& dir) const;
    /// Shows a warning for a row, in place of the one that it has.
    void push_message(const std::string& text, int row);
    /// Takes the messages about rows from the heading; those of the host stay.
    void remove_messages();
    /// -1 when there is none.
    int get_message_id(vdxpropgrid2::row_key_t key) const;

    /// Takes a row away, with its message; the row above becomes the current one, of the first row the one
    /// that takes its place. The input row is refused.
    void remove_row(int row);
    virtual void on_button_up(wxCommandEvent& event);
    virtual void on_button_down(wxCommandEvent& event);
    virtual void on_button_remove(wxCommandEvent& event);
    /// A row was changed; its number.
    virtual void on_dir_updated(int row);
    /// Something was typed, moved, removed or undone.
    virtual void on_editing_finished();
    /// Lets the user choose a folder for the row; the input row makes a new one of it.
    virtual void on_more_button_clicked(vdxpropgrid2::click_data_t data);
    virtual void on_resize(wxSizeEvent& event);
    wxSize GetMinSize() const override;

protected:
    // The steps of on_init_dialog(), load_settings() and save_settings().
    /// Connects the grid and has its directories looked at.
    void fill_controls();
    /// What stands in the input row.
    void set_grid_headers();
    /// The pictures of buttons and marks.
    void load_images();
    /// Caption and description of the heading.
    void load_messages();
    /// Takes what the grid shows.
    void fill_dirs();
    /// Shows what was taken from the container.
    void fill_grid();
    /// Puts a list into the container, in the place of the category's; of binaries and symbols, of both.
    void fill_container(const dirs_t& dirs);
    /// Adds a list's directories where the iterator stands.
    void add_dirs(const FF_2_13::ObjectPtr<FF_2_13::ISearchDirIterator>& iterator, const dirs_t& dirs);
    /// Adds one of them.
    void add_dir(const FF_2_13::ObjectPtr<FF_2_13::ISearchDirIterator>& iterator, const dirs_t& dirs,
                 std::size_t index);

private:
    void connect_grid();
    bool has_shared_list() const;
    void keep_shared_list();
    bool is_skipped(const vdxpropgrid2::row_t& row) const;
    bool get_box(const dir_info_t& dir) const;
    dirs_t get_stored(FF_2_13::search_category_t category) const;
    void remember_rows();
    void follow_boxes();
    vdxpropgrid2::row_mark_t get_note(const std::string& dir) const;
    bool tell_state(const std::string& path, dir_state_t::kind_t state, int row);
    void remove_message(vdxpropgrid2::row_key_t key);
    void select_row_of(int message);
    void move_current(int by);
    void update_buttons();
    void tell_height();

    container_t m_container;
    FF_2_13::search_category_t m_category;
    int m_dir_error_mode;
    dirs_t m_dirs;
    unsigned m_extras = 0;
    std::function<std::optional<found_files_t>(const std::string&)> m_found_files;
    std::map<vdxpropgrid2::row_key_t, dir_info_t> m_kept; ///< what rows do not show; also of removed ones
    std::set<vdxpropgrid2::row_key_t> m_skipped;
    std::map<vdxpropgrid2::row_key_t, int> m_messages;
    bool m_removing = false;
    int m_told_height = 0;
    gen_helpers2::signal_t<> m_changed_signal;
    caption_panel_t* m_caption = nullptr;
    vdxpropgrid2::property_grid_t* m_grid = nullptr;
    wxBitmapButton* m_up = nullptr;
    wxBitmapButton* m_down = nullptr;
    wxBitmapButton* m_remove = nullptr;
    std::unique_ptr<dir_checker_t> m_checker;
};

} // namespace commondlg3
