#include "small_dialogs.h"

#include "json_report.h"
#include "missing_resource.h"

#include <commondlg3/ask_dlg.h>
#include <commondlg3/clipboard_dlg.h>
#include <commondlg3/resources.h>
#include <wx_helpers1/painted.h>

namespace gallery {
namespace {

bool has_layout(const char* object, wxWindow* parent)
{
    return check_resource(commondlg3::create_resource_filename("commondlg3.dat", "commondlg.xrc"), object,
                          parent);
}

} // namespace

int open_ask_dialog(const nlohmann::json& data, wxWindow* parent)
{
    int result = 0;
    nlohmann::json ended = nlohmann::json::object();
    if (has_layout(ask_object, parent)) {
        commondlg3::ask_dlg_t dialog;
        dialog.set_filename(get_string(data, "filename", ""));
        wx_helpers1::when_next_window_is_painted([](wxTopLevelWindow*) { report_opened(ask_object); });
        result = dialog.show_modal(parent);
        ended = {{"filename", dialog.get_filename()}};
    }
    report_result(ask_object, result, ended);
    return result;
}

int open_clipboard_dialog(wxWindow* parent)
{
    int result = 0;
    if (has_layout(clipboard_object, parent)) {
        commondlg3::clipboard_dlg_t dialog;
        wx_helpers1::when_next_window_is_painted([](wxTopLevelWindow*) { report_opened(clipboard_object); });
        result = dialog.show_modal(parent);
    }
    report_result(clipboard_object, result, nlohmann::json::object());
    return result;
}

} // namespace gallery
