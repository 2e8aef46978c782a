#pragma once

#include "commondlg3/dialog_base.h"
#include "commondlg3/preferences_page.h"
#include "commondlg3/settings_file.h"

#include <gen_helpers2/path.h>
#include <gen_helpers2/signal.h>

#include <memory>
#include <string>
#include <vector>

namespace commondlg3 {

/// A product's preferences: a list of pages, the chosen page, and OK, Apply and Cancel.
///
///     preferences_frame_t frame;
///     frame.add_page(std::make_shared<sampling_page_t>(file));
///     frame.add_page(std::make_shared<editors_page_t>(file));
///     frame.set_memory(windows);                        // page and size are kept there
///     frame.show_modal(parent);
///     if (frame.wants_restart()) ...
///
/// OK and Apply write what was changed, on all pages together: all of it is on the disk afterwards, or
/// nothing. Before, each changed page is asked whether it can be written; the first that cannot is shown,
/// with what is wrong. When the disk fails the user is told, the dialog stays open and the pages keep what
/// they hold. Whoever leaves with changes is asked whether to save them. Reading and writing is done by
/// another thread: a disk that hangs leaves a dialog that can be closed.
///
/// Pages with changes bear a dot in the list. The search field leaves the pages that bear all its words, and
/// marks the settings that do; Enter goes to the first of them. A context menu on a setting, and the menu
/// below the list, restore what the product begins with, or what is kept; that menu also exports all
/// settings into one file, and imports what the user chooses of one. When another program has written the
/// settings meanwhile, a line above the page says so and offers them.
///
/// A host may keep the frame and show it again, which is faster than making another: it then reads the
/// settings anew, and begins as a new one would.
///
/// It is not for settings that must be asked for before the product goes on: use a dialog of your own.
/// Ownership: the pages are shared. GUI thread.
/// @since 3.1
class COMMONDLG3_EXPORT preferences_frame_t : public dialog_base_t
{
public:
    preferences_frame_t();
    ~preferences_frame_t() override;

    // Before it is shown.

    /// Adds a page at the end of the list.
    void add_page(preferences_page_ptr_t page);
    /// The name of the page that is shown first; without one that which was seen last.
    void set_first_page(const std::string& name);
    /// Where page and size are remembered, below the child "preferences", when the dialog ends with OK.
    void set_memory(settings_file_ptr_t memory);
    /// The folder of the settings, whose files are written together; else the product's configuration
    /// directory.
    void set_settings_folder(const gen_helpers2::path_t& folder);

    // Afterwards.

    std::vector<preferences_page_ptr_t> get_pages() const;
    /// Whether the user wants what was written to take effect by a restart.
    bool wants_restart() const;

    /// A page has written this file of its own accord, and not by OK or Apply: that is not another program's.
    void take_as_ours(const gen_helpers2::path_t& file);

    /// A page is seen, by its name.
    gen_helpers2::signal_t<const std::string&>& get_page_signal();
    /// Something was written, or could not be.
    gen_helpers2::signal_t<bool>& get_applied_signal();

    bool Show(bool show = true) override;
    void on_init_dialog() override;
    void handle_ok(wxCommandEvent& event) override;
    void on_help() override;
    void end_dialog(int code) override;
    void fit_again() override;

private:
    class impl_t;
    std::unique_ptr<impl_t> m_impl;
};

} // namespace commondlg3
