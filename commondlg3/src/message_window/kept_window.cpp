#include "kept_window.h"

#include "commondlg3/error_warning_dialog.h"
#include "commondlg3/resources.h"

#include <cfgmgr2/message_catalog.h>

#include <wx/weakref.h>

namespace commondlg3 {
namespace {

struct kept_t
{
    wxWeakRef<error_warning_dialog_t> dialog;
    std::string language;
    bool in_use = false;
};

kept_t& kept()
{
    static auto& window = *new kept_t; // the toolkit is gone before statics are
    return window;
}

// A window that came from another archive or speaks another language is of no use any more.
bool serves(const kept_t& window, const wxWindow* parent)
{
    return window.dialog && window.dialog->GetParent() == parent &&
           window.language == cfgmgr2::get_language() && !window.dialog->IsBeingDeleted() &&
           window.dialog->get_resource_file() == create_resource_filename("commondlg3.dat", "commondlg.xrc");
}

} // namespace

int run_message_window(const message_window_t& window, wxWindow* parent)
{
    kept_t& only = kept();
    if (only.in_use || !parent) {
        error_warning_dialog_t dialog(window);
        return dialog.show_modal(parent);
    }
    if (serves(only, parent)) {
        only.dialog->set_window(window);
    } else {
        if (only.dialog)
            only.dialog->Destroy();
        auto* dialog = new error_warning_dialog_t(window);
        only.dialog = dialog;
        only.language = cfgmgr2::get_language();
    }
    only.in_use = true;
    const int id = only.dialog->show_modal(parent);
    only.in_use = false;
    if (!only.dialog)
        return id; // its parent was closed while it was shown
    error_warning_dialog_t* const dialog = only.dialog;
    if (dialog->is_loaded() && !dialog->get_panel()->is_scrolled()) {
        dialog->set_window({}); // neither check box nor picture outlives its message
        return id;
    }
    // What failed to load is tried again, and the toolkit complains when scroll bars are taken off a window
    // that has shrunk. A window that is being destroyed is there until the loop turns: it must not be taken
    // for the next.
    only.dialog = nullptr;
    if (dialog->is_loaded())
        dialog->Destroy();
    else
        delete dialog;
    return id;
}

} // namespace commondlg3
