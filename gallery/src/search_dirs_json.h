/// The file finder's directories in what scripts give and get.
#pragma once

#include <ff/search_directories.h>

#include <nlohmann/json.hpp>

namespace gallery {

/// [{"path": "/usr/src", "recursive": false}, ...]; empty without a container.
nlohmann::json dirs_to_json(const FF_2_13::ObjectPtr<FF_2_13::IEditableSearchDirContainer>& container,
                            FF_2_13::search_category_t category);
/// The same back; a string stands for a path that is not recursive. What is neither is passed over.
void dirs_from_json(const nlohmann::json& dirs,
                    const FF_2_13::ObjectPtr<FF_2_13::IEditableSearchDirContainer>& container,
                    FF_2_13::search_category_t category);

} // namespace gallery
