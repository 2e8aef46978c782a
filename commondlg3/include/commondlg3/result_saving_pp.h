#pragma once

#include "commondlg3/pref_base.h"
#include "commondlg3/result_saving_data.h"

#include <memory>
#include <string>
#include <vector>

class wxButton;
class wxCheckBox;
class wxRadioButton;

namespace commondlg3 {

class field_message_t;
class folder_watch_t;
struct folder_answer_t;

/// The preference page on which users say where results are saved and what they are called.
///
///     auto* page = new result_saving_pp_t(data, result_saving_pp_t::show_project |
///                                                   result_saving_pp_t::check_folder);
///     page->create(parent);                          // the parent owns it
///     ...
///     page->on_ok();                                 // the host's OK
///     store(page->get_data());
///
/// OK is never refused: a template that cannot be used is replaced by the product's own, a folder that cannot
/// be used by the system's temporary directory, and one warning says so afterwards, with what was entered and
/// what is used instead. While the user types, the fields are coloured and explained on lines of their own,
/// and another line shows the name that the next result would get. A folder that does not answer, of a
/// network for example, keeps nobody waiting: the page says which one it is. GUI thread.
class COMMONDLG3_EXPORT result_saving_pp_t : public pref_base_t
{
public:
    /// What the page shows and does; added up.
    enum flags_t : unsigned
    {
        show_project = 1,       ///< offer the project's directory, and show which one that is
        check_folder = 2,       ///< check the folder while it is typed and on OK
        show_accessibility = 4, ///< show the check box
        /// Say below the name of the next result what would become of it: whether its folder is made first,
        /// where it would go instead, and how much space there is; warn where that is little.
        /// @since 3.1
        show_preview = 8
    };

    result_saving_pp_t(const result_saving_data_t& data, unsigned flags);
    /// With the check box, and with the other two as given.
    result_saving_pp_t(const result_saving_data_t& data, bool with_project, bool with_folder_check);
    ~result_saving_pp_t() override;

    /// What was given, or what the last save_settings() took from the controls.
    const result_saving_data_t& get_data() const { return m_data; }
    /// Another record in place of the one that was given, shown as it is.
    /// @since 3.1
    void set_data(const result_saving_data_t& data);
    /// What the controls hold now, whether or not it can be used.
    /// @since 3.1
    result_saving_data_t get_entered() const;
    /// Puts these values into the controls, as if the user had.
    /// @since 3.1
    void set_entered(const result_saving_data_t& data);
    /// Whether the controls hold anything else than when they were filled, or last saved. That the page was
    /// opened is no change, whatever the record holds.
    [[nodiscard]] bool is_changed() const;

    /// Keeps the first run of '@' in a template and cuts it to eight. @return whether the text changed
    static bool replace_wrong_ats(std::string& name_template);
    /// Makes a template usable: without blanks at its end and characters that names must not have, with one
    /// run of '@'; the product's own if it is not usable even so. Blanks alone are no change.
    /// @return whether the text changed
    static bool filter_result_template(std::string& name_template);

    void on_init_dialog() override;
    void set_max_text_limit() override;
    void on_update_ui_settings() override;
    void load_auxiliary_strings() override;
    /// Shows what get_data() holds, which then counts as not changed.
    void load_settings();
    /// Takes what the controls hold, makes it usable, and says what had to be changed.
    bool save_settings() override;

    virtual void on_radio_disk(wxCommandEvent& event);
    virtual void on_radio_proj(wxCommandEvent& event);
    virtual void on_text_edit(wxCommandEvent& event);
    virtual void on_folder_text_edit(wxCommandEvent& event);
    virtual void on_button_browse(wxCommandEvent& event);
    virtual void on_resize(wxSizeEvent& event);

    /// Enables the field and the button of the folder, or disables them.
    void process_enable_controls(bool to_folder);
    /// Shows and hides controls as the flags ask for.
    void update_shown_controls();
    /// A modal warning over the main window.
    void show_warning_message(const std::string& title, const std::string& details);

protected:
    /// Takes the page's texts from the catalog.
    void load_messages();

private:
    struct messages_t
    {
        std::string restricted_ats;
        std::string undefined;
        std::string project_directory;
        std::string at_explanation;
        std::string at_example;
    };

    /// What the controls hold.
    struct shown_t
    {
        std::string name_template;
        std::string folder;
        bool accessibility = false;
        bool to_folder = false;
    };

    bool has_controls() const;
    shown_t get_shown() const;
    void check_template();
    /// Looks at the folder and at the results in it, and shows what was found; `typed`: while it is edited.
    void examine_folder(bool typed);
    bool goes_to_project() const;
    void show_answer(const folder_answer_t& answer);
    void show_waiting();
    void show_silence(const std::string& place);
    void show_preview_text(const std::string& example, const std::string& outlook);
    void rewrap();
    bool has_checked_folder() const;

    result_saving_data_t m_data;
    unsigned m_flags;
    shown_t m_unchanged;
    messages_t m_messages;
    std::unique_ptr<field_message_t> m_template_trouble;
    std::unique_ptr<field_message_t> m_folder_trouble;
    std::unique_ptr<folder_watch_t> m_watch;
    std::string m_shown_example;
    wxStaticText* m_template_label = nullptr;
    wxTextCtrl* m_template = nullptr;
    wxStaticText* m_explanation = nullptr;
    wxCheckBox* m_accessibility = nullptr;
    wxStaticText* m_storing_label = nullptr;
    wxRadioButton* m_to_folder = nullptr;
    wxRadioButton* m_to_project = nullptr;
    wxTextCtrl* m_folder = nullptr;
    wxButton* m_browse = nullptr;
    wxStaticText* m_project_folder = nullptr;
    wxStaticText* m_example = nullptr;
};

} // namespace commondlg3
