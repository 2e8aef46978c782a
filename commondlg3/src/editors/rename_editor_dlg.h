#pragma once

#include "commondlg3/dialog_base.h"

#include <string>

namespace commondlg3 {

/// Asks what an editor is to be called; an empty name cannot be given. GUI thread.
class rename_editor_dlg_t : public dialog_base_t
{
public:
    explicit rename_editor_dlg_t(std::string name);
    ~rename_editor_dlg_t() override;

    const std::string& get_name() const { return m_name; }

    void on_init_dialog() override;
    void on_ok() override;

private:
    void allow_ok();

    std::string m_name;
    wxTextCtrl* m_field = nullptr;
};

} // namespace commondlg3
