#include "json_report.h"
#include "missing_resource.h"
#include "page_frame.h"
#include "search_dirs_json.h"
#include "search_dirs_page.h"

#include <commondlg3/file_finder_pp.h>
#include <commondlg3/resources.h>
#include <commondlg3/search_dirs_panel.h>
#include <wx_helpers1/painted.h>

// The pages of directories alone, for scripts and pictures.
namespace gallery {
namespace {

using namespace FF_2_13;
using nlohmann::json;

const std::pair<const char*, search_category_t> categories[] = {{"binaries", category_binaries},
                                                                {"symbols", category_symbols},
                                                                {"sources", category_sources},
                                                                {"others", category_others}};

// One of each that can be said about a row.
json sample_dirs()
{
    return {"/usr/include", "/usr/src/render/missing", "/etc/passwd",
            "/usr/include", "/usr/../usr/lib",         "/lib",
            "src/generated"};
}

json sample_lists()
{
    return {
        {"sources", {{{"path", "/usr/include"}, {"recursive", true}}, "/usr/include/linux", "/etc/passwd"}},
        {"binaries", {"/usr/lib", "/usr/bin"}}};
}

/// Another container whose saving fails, as on a disk that is full.
class unsaved_t : public gen_helpers2::ref_counted_of_t<IEditableSearchDirContainer>
{
public:
    explicit unsaved_t(ObjectPtr<IEditableSearchDirContainer> lists) : m_lists(std::move(lists)) {}
    ObjectPtr<ISearchDirIterator> get_dirs(search_category_t category) override
    {
        return m_lists->get_dirs(category);
    }
    std::size_t count(search_category_t category) const override { return m_lists->count(category); }
    void clear(search_category_t category) override { m_lists->clear(category); }
    gen_helpers2::error_code_t save() override
    {
        return gen_helpers2::error_code_t::io_error("search_directories.xml: No space left on device");
    }

private:
    ObjectPtr<IEditableSearchDirContainer> m_lists;
};

ObjectPtr<IEditableSearchDirContainer> lists_from(const json& data)
{
    auto lists = make_search_dir_container(nullptr);
    for (const auto& [name, category] : categories)
        if (data.is_object() && data.contains(name))
            dirs_from_json(data[name], lists, category);
    if (get_bool(data, "save_fails", false))
        lists = new unsaved_t(lists);
    return lists;
}

json lists_to_json(const ObjectPtr<IEditableSearchDirContainer>& lists)
{
    json data = json::object();
    for (const auto& [name, category] : categories)
        data[name] = dirs_to_json(lists, category);
    return data;
}

// Shows the page that `make` makes, and reports its end with `state`.
int open_alone(const char* object, const char* title, wxWindow* parent,
               const std::function<commondlg3::pref_base_t*()>& make, const std::function<json()>& state)
{
    const std::string file = commondlg3::create_resource_filename("commondlg3.dat", "commondlg.xrc");
    int result = 0;
    json ended = json::object();
    if (check_resource(file, object, parent) && check_resource(resource_file(), "dlg.page_frame", parent)) {
        auto* page = make();
        page_frame_t frame(page, text(title));
        page->get_end_signal().connect(&frame, [object](commondlg3::generic_base_t<wxPanel>*, int code) {
            report_signal(object, "end", code);
        });
        wx_helpers1::when_next_window_is_painted([object](wxTopLevelWindow*) { report_opened(object); });
        result = frame.show_modal(parent);
        ended = state();
    }
    report_result(object, result, ended);
    return result;
}

} // namespace

std::optional<search_category_t> category_of_page(const std::string& object)
{
    const std::string base = search_dirs_page_t::object_name;
    if (object == base)
        return category_sources;
    for (const auto& [name, category] : categories)
        if (object == base + "." + name)
            return category;
    return {};
}

int open_search_dirs_tab(const json& data, wxWindow* parent, search_category_t usual_category)
{
    const auto category = static_cast<search_category_t>(get_int(data, "category", usual_category));
    const auto lists = make_search_dir_container(nullptr);
    dirs_from_json(data.is_object() && data.contains("dirs") ? data["dirs"] : sample_dirs(), lists, category);
    return open_alone(
        search_dirs_page_t::object_name, "preferences.page.search_dirs", parent,
        [&] { return new commondlg3::search_dirs_tab_t(lists, category, get_int(data, "error_mode", 1)); },
        [&] {
            json state = lists_to_json(lists);
            state["dirs"] = dirs_to_json(lists, category);
            return state;
        });
}

int open_search_dirs_panel(const json& data, wxWindow* parent)
{
    const auto lists = lists_from(data.is_object() ? data : sample_lists());
    return open_alone(
        "panel.search_dir", "preferences.page.search_dirs", parent,
        [&] { return new commondlg3::search_dirs_panel_t(lists); }, [&] { return lists_to_json(lists); });
}

int open_file_finder_page(const json& data, wxWindow* parent)
{
    const auto lists = lists_from(data.is_object() ? data : sample_lists());
    return open_alone(
        "pref.file_finder_pp", "preferences.page.search_dirs", parent,
        [&] { return new commondlg3::file_finder_pp_t(lists); }, [&] { return lists_to_json(lists); });
}

} // namespace gallery
