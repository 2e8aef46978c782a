#pragma once

#include <ff/search_directories.h>

#include <string>
#include <utility>
#include <vector>

namespace test {

using container_t = FF_2_13::ObjectPtr<FF_2_13::IEditableSearchDirContainer>;
/// Paths, and whether the folders below them are searched.
using dirs_t = std::vector<std::pair<std::string, bool>>;

inline container_t open_dirs(const std::string& file)
{
    gen_helpers2::error_code_t result;
    return FF_2_13::make_search_dir_container(cfgmgr2::open_property_storage(file, result));
}

inline dirs_t dirs_of(const container_t& container, int category)
{
    dirs_t dirs;
    const auto at = container->get_dirs(static_cast<FF_2_13::search_category_t>(category));
    for (; !at->at_end(); at->next())
        dirs.emplace_back(at->get_path(), at->is_recursive());
    return dirs;
}

} // namespace test
