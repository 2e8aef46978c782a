#include "small_dialogs.h"

#include "json_report.h"
#include "window_run.h"

#include <commondlg3/ask_dlg.h>
#include <commondlg3/clipboard_dlg.h>

namespace gallery {

int open_ask_dialog(const nlohmann::json& data, wxWindow* parent)
{
    return window_run_t::run(ask_object, parent, {library_layout(ask_object)}, [&](window_run_t& run) {
        commondlg3::ask_dlg_t dialog;
        dialog.set_filename(get_string(data, "filename", ""));
        run.show(dialog);
        run.set_data({{"filename", dialog.get_filename()}});
    });
}

int open_clipboard_dialog(const nlohmann::json&, wxWindow* parent)
{
    return window_run_t::run(clipboard_object, parent, {library_layout(clipboard_object)},
                             [](window_run_t& run) {
                                 commondlg3::clipboard_dlg_t dialog;
                                 run.show(dialog);
                             });
}

} // namespace gallery
