#include "json_report.h"
#include "missing_resource.h"
#include "search_dirs_json.h"
#include "search_dirs_page.h"
#include "window_run.h"

#include <commondlg3/file_finder_pp.h>
#include <commondlg3/search_dirs_panel.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>

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

// {"/usr/include": [3, 5]}: three of five files are there.
std::optional<commondlg3::search_dirs_tab_t::found_files_t> found_files_in(const json& found,
                                                                           const std::string& dir)
{
    if (!found.is_object() || !found.contains(dir) || !found[dir].is_array() || found[dir].size() != 2)
        return std::nullopt;
    return commondlg3::search_dirs_tab_t::found_files_t{found[dir][0].get<int>(), found[dir][1].get<int>()};
}

// Shows the page that `make` makes, and reports its end with `state`.
int open_alone(const char* object, wxWindow* parent, const std::function<commondlg3::pref_base_t*()>& make,
               const std::function<json()>& state)
{
    return window_run_t::run(
        object, parent, {library_layout(object), own_layout("dlg.page_frame")},
        [&](window_run_t& run) { run.show_page(make(), text("preferences.page.search_dirs"), state); });
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

int open_search_dirs_tab(const json& data, wxWindow* parent)
{
    const auto category = static_cast<search_category_t>(get_int(data, "category", category_sources));
    const auto lists = make_search_dir_container(nullptr);
    for (const auto& [name, each] : categories)
        if (data.is_object() && data.contains(name))
            dirs_from_json(data[name], lists, each);
    if (!data.is_object() || data.contains("dirs") || lists->count(category) == 0)
        dirs_from_json(data.is_object() && data.contains("dirs") ? data["dirs"] : sample_dirs(), lists,
                       category);
    return open_alone(
        search_dirs_page_t::object_name, parent,
        [&] {
            auto* tab = new commondlg3::search_dirs_tab_t(lists, category, get_int(data, "error_mode", 1));
            tab->set_extras(static_cast<unsigned>(get_int(data, "extras", 0)));
            if (data.is_object() && data.contains("found"))
                tab->set_found_files(
                    [found = data["found"]](const std::string& dir) { return found_files_in(found, dir); });
            return tab;
        },
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
        "panel.search_dir", parent, [&] { return new commondlg3::search_dirs_panel_t(lists); },
        [&] { return lists_to_json(lists); });
}

int open_file_finder_page(const json& data, wxWindow* parent)
{
    const auto lists = lists_from(data.is_object() ? data : sample_lists());
    return open_alone(
        "pref.file_finder_pp", parent, [&] { return new commondlg3::file_finder_pp_t(lists); },
        [&] { return lists_to_json(lists); });
}

} // namespace gallery
