#include "kept_window.h"

#include "commondlg3/error_warning_dialog.h"
#include "commondlg3/resources.h"

#include <cfgmgr2/message_catalog.h>
#include <gen_helpers2/log.h>

#include <wx/weakref.h>

#include <string>

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

class in_use_t
{
public:
    explicit in_use_t(kept_t& window) : m_window(window) { m_window.in_use = true; }
    ~in_use_t() { m_window.in_use = false; }
    in_use_t(const in_use_t&) = delete;
    in_use_t& operator=(const in_use_t&) = delete;

private:
    kept_t& m_window;
};

constexpr int no_answer = 0; // no button's identifier

// A window that came from another archive or speaks another language is of no use any more.
bool serves(const kept_t& window, const wxWindow* parent)
{
    return window.dialog && window.dialog->GetParent() == parent &&
           window.language == cfgmgr2::get_language() && !window.dialog->IsBeingDeleted() &&
           window.dialog->get_resource_file() == create_resource_filename("commondlg3.dat", "commondlg.xrc");
}

// The text of a message must not vanish with the layout that was to show it.
void log_unshown(const error_warning_dialog_t& dialog)
{
    gen_helpers2::log_error("commondlg3.message_window", "a message could not be shown: " +
                                                             dialog.get_panel()->get_text_for_clipboard({}));
}

int run_once(const message_window_t& window, const message_options_t& options, wxWindow* parent)
{
    error_warning_dialog_t dialog(window, options);
    const int id = dialog.show_modal(parent);
    if (!dialog.is_loaded())
        log_unshown(dialog);
    return dialog.was_abandoned() ? no_answer : id;
}

} // namespace

int run_message_window(const message_window_t& window, const message_options_t& options, wxWindow* parent)
{
    kept_t& only = kept();
    if (only.in_use || !parent)
        return run_once(window, options, parent);
    if (serves(only, parent)) {
        only.dialog->set_window(window, options);
    } else {
        if (only.dialog)
            only.dialog->Destroy();
        auto* dialog = new error_warning_dialog_t(window, options);
        only.dialog = dialog;
        only.language = cfgmgr2::get_language();
    }
    const in_use_t in_use(only);
    const int id = only.dialog->show_modal(parent);
    if (!only.dialog)
        return no_answer; // somebody destroyed it while it was shown
    error_warning_dialog_t* const dialog = only.dialog;
    const bool abandoned = dialog->was_abandoned();
    if (dialog->is_loaded() && !abandoned && dialog->GetParent() && !dialog->get_panel()->is_scrolled()) {
        dialog->set_window({}); // neither check box nor picture outlives its message
        return id;
    }
    // What failed to load is tried again, and the toolkit complains when scroll bars are taken off a window
    // that has shrunk. One whose parent went, answered or not, would stay for good, and the program with it. A
    // window that is being destroyed is there until the loop turns: it must not be taken for the next.
    only.dialog = nullptr;
    if (dialog->is_loaded()) {
        dialog->Destroy();
    } else {
        log_unshown(*dialog);
        delete dialog;
    }
    return abandoned ? no_answer : id;
}

} // namespace commondlg3
