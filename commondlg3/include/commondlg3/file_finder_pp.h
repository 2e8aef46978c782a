#pragma once

#include "commondlg3/pref_base.h"

#include <ff/search_directories.h>

namespace commondlg3 {

class search_dirs_panel_t;

/// The preference page of the file finder: the directories of all types of files.
///
///     auto* page = new file_finder_pp_t(container);
///     page->create(parent);
///     page->on_ok();                                // writes the container
///
/// A frame around search_dirs_panel_t, to which it leaves everything. For one type of files use
/// search_dirs_tab_t, in a window of yours the panel. GUI thread.
class COMMONDLG3_EXPORT file_finder_pp_t : public pref_base_t
{
public:
    explicit file_finder_pp_t(FF_2_13::ObjectPtr<FF_2_13::IEditableSearchDirContainer> container);
    ~file_finder_pp_t() override;

    void on_init_dialog() override;
    bool save_settings() override;
    [[nodiscard]] bool is_changed() const;
    /// Null when the layout could not be loaded.
    search_dirs_panel_t* get_panel() const { return m_panel; }

private:
    FF_2_13::ObjectPtr<FF_2_13::IEditableSearchDirContainer> m_container;
    search_dirs_panel_t* m_panel = nullptr;
};

} // namespace commondlg3
