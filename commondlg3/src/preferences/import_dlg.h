#pragma once

#include "commondlg3/dialog_base.h"

#include "settings_diff.h"

#include <map>
#include <string>
#include <vector>

class wxDataViewListCtrl;

namespace commondlg3 {

/// Shows what an imported file would change, and lets the user choose.
class import_dlg_t : public dialog_base_t
{
public:
    struct row_t
    {
        int page;
        std::string title; ///< the page's
        setting_change_t change;
    };

    explicit import_dlg_t(std::vector<row_t> rows);

    /// The names of the settings that were chosen, by page.
    std::map<int, std::vector<std::string>> get_chosen() const { return m_chosen; }

    void on_init_dialog() override;
    void on_ok() override;

private:
    void update();

    std::vector<row_t> m_rows;
    std::map<int, std::vector<std::string>> m_chosen;
    wxDataViewListCtrl* m_list = nullptr;
};

} // namespace commondlg3
