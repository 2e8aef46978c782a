#include "missing_resource.h"

#include "json_report.h"

#include <commondlg3/message_window.h>
#include <commondlg3/resources.h>
#include <wx_helpers1/painted.h>
#include <wx_helpers1/resource_loader.h>
#include <wx_helpers1/text.h>

#include <wx/msgdlg.h>

namespace gallery {
namespace {

constexpr char catalog_name[] = "gallery";

using wx_helpers1::resource_loader_t;

bool is_there(const std::string& file, const std::string& object)
{
    return resource_loader_t(file, catalog_name).examine(object) == resource_loader_t::state_t::ok;
}

} // namespace

std::string resource_file()
{
    return commondlg3::create_resource_filename("gallery.dat", "gallery.xrc");
}

std::string text(const std::string& key)
{
    return commondlg3::message_window_t::get_message(catalog_name, key, {});
}

bool check_resource(const std::string& file, const std::string& object, wxWindow* parent)
{
    if (is_there(file, object))
        return true;
    const auto window = commondlg3::message_window_t::simple_error_wnd(catalog_name, "error.missing_resource",
                                                                       "error.missing_resource_details", {},
                                                                       {{"object", object}, {"file", file}});
    report_error(object, window.supplemental_message);
    const std::string library_file = commondlg3::create_resource_filename("commondlg3.dat", "commondlg.xrc");
    if (is_there(library_file, "dlg.error_warning_dialog") && is_there(library_file, "panel.error_warning")) {
        wx_helpers1::when_next_window_is_painted(
            [](wxTopLevelWindow*) { report_opened("dlg.error_warning_dialog"); });
        commondlg3::show_modal(window, parent);
    } else {
        wxMessageBox(wx_helpers1::to_label(window.main_message + "\n\n" + window.supplemental_message),
                     wx_helpers1::to_label(text("gallery.title")), wxOK | wxICON_ERROR, parent);
    }
    return false;
}

} // namespace gallery
