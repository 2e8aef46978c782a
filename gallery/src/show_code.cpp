#include "show_code.h"

#include "json_report.h"
#include "missing_resource.h"
#include "open_source_dialog.h"

#include <cfgmgr2/product_locations.h>
#include <commondlg3/editor_launch.h>
#include <commondlg3/message_window.h>

#include <wx/weakref.h>
#include <wx/window.h>

#include <string>

namespace gallery {
namespace {

using commondlg3::editor_failure_t;
using commondlg3::message_window_t;

constexpr char code_object[] = "gallery";

// A command has the path in it; where there is none yet, the path is told by itself.
void show_failure(const editor_failure_t& failure, wxWindow* parent)
{
    if (!failure.command.empty()) {
        commondlg3::show_editor_failure(failure, parent);
        return;
    }
    message_window_t window;
    window.main_message = text("gallery.code_failed");
    window.supplemental_message = failure.reason == editor_failure_t::reason_t::no_command
                                      ? text("gallery.code_no_editor")
                                      : failure.get_text();
    window.details_message =
        message_window_t::get_message(catalog_name, "gallery.code_file", {{"file", failure.file}});
    commondlg3::show_modal(window, parent);
}

} // namespace

gen_helpers2::path_t source_of(const entry_t& entry)
{
    return cfgmgr2::IProductLocations::get()->get_resource_directory() / "gallery" / "src" / entry.source;
}

void show_code(const entry_t& entry, wxWindow* parent)
{
    const auto file = source_of(entry);
    const auto editor = get_users_editor(file.as_string());
    const wxWeakRef<wxWindow> alive(parent);
    const auto tell = [alive](const editor_failure_t& failure) {
        report_signal(code_object, "code_failed", failure.file);
        if (alive)
            show_failure(failure, alive.get());
    };
    if (commondlg3::open_in_editor(editor, file, 1, tell))
        report_signal(code_object, "code_shown", file.as_string());
}

} // namespace gallery
