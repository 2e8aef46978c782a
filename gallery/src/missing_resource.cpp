#include "missing_resource.h"

#include "json_report.h"
#include "window_run.h"

#include <commondlg3/message_window.h>
#include <commondlg3/resources.h>
#include <gen_helpers2/log.h>
#include <wx_helpers1/resource_loader.h>

namespace gallery {
namespace {

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

bool can_show_messages()
{
    const std::string library_file = commondlg3::create_resource_filename("commondlg3.dat", "commondlg.xrc");
    return is_there(library_file, "dlg.error_warning_dialog") &&
           is_there(library_file, "panel.error_warning");
}

bool check_resource(const std::string& file, const std::string& object, wxWindow* parent)
{
    if (is_there(file, object))
        return true;
    const auto window = commondlg3::message_window_t::simple_error_wnd(catalog_name, "error.missing_resource",
                                                                       "error.missing_resource_details", {},
                                                                       {{"object", object}, {"file", file}});
    report_error(object, window.supplemental_message);
    if (can_show_messages()) {
        report_when_opened("dlg.error_warning_dialog");
        commondlg3::show_modal(window, parent);
    } else {
        gen_helpers2::log_error("gallery", window.main_message + "\n" + window.supplemental_message);
    }
    return false;
}

} // namespace gallery
