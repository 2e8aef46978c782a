#pragma once

#include "commondlg3/dialog_base.h"

class wxCheckBox;

namespace commondlg3 {

/// Shows a text that the user may change, and puts it on the clipboard on OK.
///
///     clipboard_dlg_t().show_modal(parent);
///
/// The text stays on the clipboard after the dialog is gone, for as long as the product runs. A clipboard
/// that another program holds is left as it is, without a word. Where nothing is to be changed first, a button
/// that copies at once serves the user better. GUI thread.
class COMMONDLG3_EXPORT clipboard_dlg_t : public dialog_base_t
{
public:
    clipboard_dlg_t();
    ~clipboard_dlg_t() override;

    void on_init_dialog() override;
    /// Puts a sample into the field; for the user to replace.
    void fill_controls();
    void on_ok() override;
    virtual void on_resize(wxSizeEvent& event);

private:
    wxTextCtrl* m_text = nullptr;
    wxCheckBox* m_wrap = nullptr; ///< whether long lines are broken for reading; the text is the same
};

} // namespace commondlg3
