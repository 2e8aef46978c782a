#pragma once

#include "commondlg3/dialog_base.h"

#include <string>

namespace commondlg3 {

/// Asks whoever leaves with changes what is to become of them.
class leave_dlg_t : public dialog_base_t
{
public:
    enum class answer_t
    {
        stay,
        save,
        discard
    };

    /// @param pages the titles of those that were changed, a line each
    explicit leave_dlg_t(std::string pages);
    answer_t ask(wxWindow* parent);

    void on_init_dialog() override;
    void fit_again() override;

private:
    std::string m_pages;
    wxStaticText* m_question = nullptr;
    wxStaticText* m_list = nullptr;
};

} // namespace commondlg3
