#pragma once

#include "commondlg3/dialog_base.h"

#include <string>

namespace commondlg3 {

/// Asks the user for a file that the product cannot find by itself.
///
///     ask_dlg_t dialog;
///     dialog.set_filename(last_one);
///     if (dialog.show_modal(parent) == wxID_OK)
///         use(dialog.get_filename());
///
/// For a file that the product merely offers to open, file_dlg() in choosers.h is enough. The name is given
/// back as it was typed, whatever its bytes: whether there is such a file is the host's to say. GUI thread.
class COMMONDLG3_EXPORT ask_dlg_t : public dialog_base_t
{
public:
    ask_dlg_t();
    ~ask_dlg_t() override;

    /// What the field shows; once the dialog was ended by OK, what it showed then.
    [[nodiscard]] std::string get_filename() const;
    void set_filename(const std::string& filename);

    void on_init_dialog() override;
    void set_max_text_limit() override;
    void on_update_ui_settings() override;
    virtual void on_btn_browse_file(wxCommandEvent& event);
    void on_ok() override;

    /// The least size of the dialog, in pixels, without the explanation.
    wxSize calculate_min_size() const;
    /// Wraps the explanation to the dialog's width and lays the dialog out again.
    void full_resize_update();

protected:
    void fit_again() override;

private:
    bool has_controls() const;
    void load_texts();
    void on_size(wxSizeEvent& event);

    std::string m_filename;
    std::string m_text;
    std::string m_filter;
    wxStaticText* m_message = nullptr;
    wxStaticText* m_label = nullptr;
    wxTextCtrl* m_field = nullptr;
    wxButton* m_browse = nullptr;
};

} // namespace commondlg3
