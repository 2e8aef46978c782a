#include "search_dirs_json.h"

#include "json_report.h"

#include <string>

namespace gallery {

using nlohmann::json;

json dirs_to_json(const FF_2_13::ObjectPtr<FF_2_13::IEditableSearchDirContainer>& container,
                  FF_2_13::search_category_t category)
{
    json dirs = json::array();
    if (container)
        for (const auto at = container->get_dirs(category); !at->at_end(); at->next())
            dirs.push_back({{"path", at->get_path()}, {"recursive", at->is_recursive()}});
    return dirs;
}

void dirs_from_json(const json& dirs,
                    const FF_2_13::ObjectPtr<FF_2_13::IEditableSearchDirContainer>& container,
                    FF_2_13::search_category_t category)
{
    if (!dirs.is_array())
        return;
    container->clear(category);
    const auto at = container->get_dirs(category);
    for (const json& dir : dirs)
        at->add(dir.is_string() ? dir.get<std::string>() : get_string(dir, "path", ""),
                get_bool(dir, "recursive", false));
}

} // namespace gallery
