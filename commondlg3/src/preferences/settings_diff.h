#pragma once

#include "commondlg3/preferences_page.h"

#include <gen_helpers2/variant_bag.h>

#include <string>
#include <vector>

namespace commondlg3 {

/// One setting that two bags have differently.
struct setting_change_t
{
    std::string name;
    std::string title; ///< as people know it
    std::string before;
    std::string after;
};

/// What would change if `after` were put over `before`: names that only `after` has count, those that it lacks
/// do not. The page must be made, for its titles.
std::vector<setting_change_t> find_changes(const preferences_page_t& page,
                                           const gen_helpers2::variant_bag_t& before,
                                           const gen_helpers2::variant_bag_t& after);

/// Those settings of `after` that are not as in `before`.
gen_helpers2::variant_bag_t pick_changed(const gen_helpers2::variant_bag_t& before,
                                         const gen_helpers2::variant_bag_t& after);

/// All that `from` has of these names.
gen_helpers2::variant_bag_t pick_settings(const gen_helpers2::variant_bag_t& from,
                                          const std::vector<std::string>& names);

/// The page's title of a setting, or what stands beside its control; the name when there is neither.
std::string get_setting_title(const preferences_page_t& page, const std::string& name);

} // namespace commondlg3
