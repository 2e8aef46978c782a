#include "window_run.h"

#include "json_report.h"
#include "missing_resource.h"
#include "page_frame.h"

#include <commondlg3/resources.h>
#include <wx_helpers1/input_guard.h>
#include <wx_helpers1/painted.h>

#include <algorithm>

namespace gallery {

layout_t own_layout(const std::string& object)
{
    return {resource_file(), object};
}

layout_t library_layout(const std::string& object)
{
    return {commondlg3::create_resource_filename("commondlg3.dat", "commondlg.xrc"), object};
}

int window_run_t::run(const std::string& object, wxWindow* parent, const std::vector<layout_t>& layouts,
                      const std::function<void(window_run_t&)>& run)
{
    window_run_t window(object, parent);
    const auto is_there = [parent](const layout_t& layout) {
        return check_resource(layout.file, layout.object, parent);
    };
    if (std::all_of(layouts.begin(), layouts.end(), is_there))
        run(window);
    report_result(object, window.m_result, window.m_data);
    return window.m_result;
}

void window_run_t::show(const std::function<int()>& show_modal)
{
    report_when_opened(m_object);
    m_result = show_modal();
}

void window_run_t::show(commondlg3::dialog_base_t& dialog)
{
    show([&] { return dialog.show_modal(m_parent); });
}

void window_run_t::show_page(commondlg3::pref_base_t* page, const std::string& title,
                             const std::function<nlohmann::json()>& data_of)
{
    page_frame_t frame(page, title);
    report_end_of(*page, m_object);
    show(frame);
    set_data(data_of());
}

void report_when_opened(const std::string& object)
{
    wx_helpers1::when_next_window_is_painted([object](wxTopLevelWindow* window) {
        wx_helpers1::when_input_is_taken(window, [object] { report_opened(object); });
    });
}

void report_end_of(commondlg3::pref_base_t& page, const std::string& object)
{
    page.get_end_signal().connect(&page, [object](commondlg3::generic_base_t<wxPanel>*, int code) {
        report_signal(object, "end", code);
    });
}

} // namespace gallery
