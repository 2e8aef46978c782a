#include "preferences_entry.h"

#include "json_report.h"
#include "preferences_page.h"
#include "restart.h"
#include "silenced_preferences.h"
#include "window_run.h"

#include <commondlg3/preferences_frame.h>

#include <memory>
#include <string>

namespace gallery {
namespace {

nlohmann::json data_of(const commondlg3::preferences_frame_t& frame)
{
    nlohmann::json data = nlohmann::json::object();
    for (const auto& page : frame.get_pages())
        if (const auto* ours = dynamic_cast<const preferences_page_t*>(page.get()))
            data[page->get_name()] = ours->get_data();
        else if (dynamic_cast<const silenced_preferences_t*>(page.get())) {
            nlohmann::json& silenced = data[page->get_name()]["silenced"] = nlohmann::json::array();
            for (const auto& name : page->get_settings())
                silenced.push_back(std::string(name.name()));
        }
    return data;
}

} // namespace

std::unique_ptr<commondlg3::preferences_frame_t> make_preferences(const std::string& first_page)
{
    auto frame = std::make_unique<commondlg3::preferences_frame_t>();
    for (const auto& page : make_preferences_pages())
        frame->add_page(page);
    frame->set_memory(std::make_shared<commondlg3::settings_file_t>("windows.xml"));
    frame->set_first_page(first_page);
    return frame;
}

int open_preferences(const nlohmann::json& data, wxWindow* parent)
{
    const auto layout = library_layout("dlg.preferences_frame");
    return window_run_t::run(preferences_object, parent, {layout}, [&](window_run_t& run) {
        const auto preferences = make_preferences(get_string(data, "page", ""));
        commondlg3::preferences_frame_t& frame = *preferences;
        frame.get_page_signal().connect(
            &frame, [](const std::string& page) { report_signal(preferences_object, "page", page); });
        frame.get_applied_signal().connect(
            &frame, [](bool written) { report_signal(preferences_object, "apply", written); });
        frame.get_help_signal().connect(
            &frame, [](const std::string& topic) { report_signal(preferences_object, "help", topic); });
        run.show(frame);
        run.set_data(data_of(frame));
        if (frame.wants_restart()) {
            report_signal(preferences_object, "restart", true);
            request_restart();
        }
    });
}

} // namespace gallery
