#include "silenced_page.h"

#include "json_report.h"
#include "message_entries.h"
#include "missing_resource.h"
#include "preferences_page.h"
#include "window_run.h"

#include <commondlg3/settings_file.h>
#include <gen_helpers2/log.h>

#include <string>
#include <utility>

namespace gallery {
namespace {

using commondlg3::silenced_message_t;
using commondlg3::silenced_messages_t;
using nlohmann::json;

silenced_message_t silenced_from(const json& data)
{
    const auto window = message_from(data);
    silenced_message_t message;
    message.name = get_string(data, "name", window.main_message);
    message.main_message = window.main_message;
    message.supplemental_message = window.supplemental_message;
    message.details_message = window.details_message;
    message.button_type = window.button_type;
    message.icon_type = window.icon_type;
    message.answer = get_int(data, "answer", message.answer);
    message.silenced_at = get_int(data, "silenced_at", 0);
    return message;
}

json json_of(const commondlg3::silenced_messages_pp_t& page)
{
    json listed = json::array();
    for (const silenced_message_t& message : page.get_messages())
        listed.push_back(message.name);
    return {{"silenced", std::move(listed)}, {"restored", page.get_restored()}};
}

} // namespace

silenced_messages_t load_silenced_messages()
{
    commondlg3::settings_file_t store(preferences_file);
    if (const auto read = store.load(); read.failed())
        gen_helpers2::log_warning("gallery", "silenced messages are unknown: " + read.as_string());
    return silenced_messages_t(store.get());
}

int open_silenced_page(const json& data, wxWindow* parent)
{
    return window_run_t::run(silenced_object, parent,
                             {library_layout(silenced_object), own_layout("dlg.page_frame")},
                             [&](window_run_t& run) {
                                 silenced_messages_t silenced = load_silenced_messages();
                                 if (data.is_object() && data.contains("messages")) {
                                     silenced = silenced_messages_t(cfgmgr2::make_memory_property_storage());
                                     for (const json& each : data["messages"])
                                         silenced.silence(silenced_from(each));
                                 }
                                 auto* page = new commondlg3::silenced_messages_pp_t(silenced);
                                 run.show_page(page, text("preferences.page.silenced"), [page, &silenced] {
                                     if (const auto saved = silenced.save(); saved.failed())
                                         report_error(silenced_object, saved.as_string());
                                     return json_of(*page);
                                 });
                             });
}

} // namespace gallery
