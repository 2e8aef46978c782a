#pragma once

#include "commondlg3/editor_data.h"
#include "commondlg3/pref_base.h"

#include <memory>
#include <string>
#include <vector>

class wxButton;
class wxChoice;
class wxListBox;

namespace wx_helpers1 {
class static_picture_ctrl_t;
} // namespace wx_helpers1

namespace commondlg3 {

class editor_details_t;
class editor_looks_t;
class field_message_t;

/// The preference page on which users choose the programs that open source files, language by language.
///
///     editor_data_t data;
///     data.load_system_info();                       // then what was kept
///     auto* page = new editor_pp_t(data, editor_pp_t::choose_language | editor_pp_t::show_default |
///                                            editor_pp_t::show_info);
///     page->create(parent);                          // the parent owns it
///     ...
///     page->on_ok();                                 // the host's OK
///     page->get_data().save_storage_info(preferences);
///
/// The list ends with an entry that browses for a program: a click, Enter or Space on it open the file
/// chooser, the arrow keys pass over it. What was browsed for is added, chosen and reported to the host as a
/// list-box event, as if it had been clicked. Below the list stands why an editor cannot be used: that there
/// is no command for it, in the line for information, or that its program is not installed any more, in one
/// of its own. Programs are looked for in the background; a folder that does not answer is told as such. A
/// product that opens files in one editor of its own needs no such page. GUI thread.
class COMMONDLG3_EXPORT editor_pp_t : public pref_base_t
{
public:
    using language_t = editor_data_t::language_t;
    using system_editor_t = editor_data_t::system_editor_t;

    /// What the page shows; added up.
    enum flags_t : unsigned
    {
        language_bits = 3,   ///< if they equal `choose_language` users may go through the languages
        choose_language = 1, ///< otherwise they see the selected one only
        show_default = 8,    ///< the button that makes the chosen editor the language's default
        show_info = 16,      ///< the line below the list
        /// Beside each entry its icon, whether it is the default or cannot be used, and its program; below the
        /// list the command with words for the file and the line; why the desktop's editors are missing.
        /// @since 3.1
        show_details = 32,
        /// A button that opens a sample in the editor and says what came of it; for custom editors those that
        /// rename and remove it, as F2 and Delete do.
        /// @since 3.1
        show_actions = 64
    };

    /// Follows the name of the editor that the desktop would take.
    static std::string system_default_suffix;
    /// The last entry of the list.
    static std::string browse_editor_display_name;

    editor_pp_t(const editor_data_t& data, unsigned flags);
    ~editor_pp_t() override;

    /// What was given, with the changes that were made on the page so far.
    const editor_data_t& get_data() const { return m_data; }
    /// Shows these editors instead, as if the user had made them of the others.
    /// @since 3.1
    void set_data(const editor_data_t& data);
    /// Whether the user changed or chose anything; that the page selected an editor where none was is no
    /// change.
    [[nodiscard]] bool is_changed() const { return m_chosen || m_data != m_unchanged; }
    /// From here on what there is now counts as not changed: for a host that has stored it.
    void set_unchanged();

    void on_init_dialog() override;
    void on_update_ui_settings() override;
    void load_auxiliary_strings() override;
    /// Shows what get_data() holds, which then counts as not changed.
    void load_settings();
    bool save_settings() override;

    virtual void on_language_changed(wxCommandEvent& event);
    /// An entry was clicked: the browse entry opens the chooser.
    virtual void on_editor_list_clicked(wxCommandEvent& event);
    virtual void on_cmd_line_edit(wxCommandEvent& event);
    virtual void on_set_as_default(wxCommandEvent& event);
    /// Opens a sample file in the selected editor.
    /// @since 3.1
    virtual void on_try(wxCommandEvent& event);
    /// Asks for another display name of the selected editor, if it is a custom one.
    /// @since 3.1
    virtual void on_rename(wxCommandEvent& event);
    /// Takes the selected editor from the list, if it is a custom one.
    /// @since 3.1
    virtual void on_remove(wxCommandEvent& event);
    virtual void on_resize(wxSizeEvent& event);

    /// The name of the editor behind the list's selection; empty for the browse entry and for none.
    std::string get_selected_editor_name() const;
    /// What follows the executable in the command line. A command line that does not begin with it is an
    /// assertion, and has none.
    static std::string get_cmd_line_args(const system_editor_t& editor);

    /// Says in the line for information what is to be said of the editor.
    void fill_info_message(language_t language, const system_editor_t& editor);
    /// Shows and hides controls as the flags ask for.
    void update_shown_controls();
    /// Fills the list with a language's editors. The chosen one is selected, or else the default, or what
    /// the desktop would take, or the first.
    void update_state_for_language(language_t language);

private:
    friend class editor_details_t;

    bool has_controls() const;
    bool is_browse_entry(int index) const;
    void on_selection_changed(wxCommandEvent& event);
    void on_activated(wxCommandEvent& event);
    void on_mouse_up(wxMouseEvent& event);
    void browse();
    std::string find_free_name(const std::string& leaf) const;
    void add_custom_editor(const std::string& path);
    void select_entry_of(language_t language, const std::string& name);
    void select_selected_editor();
    void use_selected_editor(language_t language);
    void show_editor(language_t language, const system_editor_t& editor);
    void set_info_text(const std::string& text);
    void show_info_icon();
    void look_at(const std::vector<system_editor_t>& editors);
    void update_details();
    void show_missing_program(const system_editor_t& editor);
    wxString get_entry_text(language_t language, const system_editor_t& editor) const;
    void on_key(wxKeyEvent& event);
    void update_default_button(language_t language);
    void rewrap();

    editor_data_t m_data;
    editor_data_t m_unchanged;
    unsigned m_flags;
    bool m_chosen = false;
    bool m_filling = false; ///< details are shown once, when the list is there
    // By entry: display names need not differ, and may look like anything.
    std::vector<std::string> m_names;
    bool m_browsing = false;
    wxWindow* m_language_gap = nullptr;
    wxChoice* m_language = nullptr;
    wxStaticText* m_language_text = nullptr;
    wxListBox* m_editor_list = nullptr;
    wxStaticText* m_static_text_cmd_line = nullptr;
    wxTextCtrl* m_command_line = nullptr;
    wxButton* m_default = nullptr;
    wxStaticText* m_info_text = nullptr;
    wx_helpers1::static_picture_ctrl_t* m_info_icon = nullptr;
    std::unique_ptr<field_message_t> m_missing_program;
    std::unique_ptr<editor_looks_t> m_looks;
    std::unique_ptr<editor_details_t> m_details; ///< where a flag asks for something of it
    wxStaticText* m_language_label = nullptr;
    wxStaticText* m_list_label = nullptr;
};

} // namespace commondlg3
