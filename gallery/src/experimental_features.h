/// The experimental features of the product that the gallery plays.
#pragma once

#include <commondlg3/experimental_options_panel.h>

#include <string>
#include <vector>

namespace gallery {

/// Names of the variables that switch them on.
constexpr char list_object_names_variable[] = "VORBEX_LIST_OBJECT_NAMES";
constexpr char remember_window_size_variable[] = "VORBEX_REMEMBER_WINDOW_SIZE";

/// What the product ships, read anew.
boost::shared_ptr<commondlg3::feature_list_config_t> load_feature_list();
/// What the user turned on, read anew.
boost::shared_ptr<commondlg3::active_features_config_impl_t> load_active_features();

/// Sets the variables of the features that are on, at the product's start; those set already stay as they
/// are.
void set_feature_variables();
/// Takes those away that set_feature_variables() set, so that a program started from here decides anew.
void unset_feature_variables();
/// The variables of the features that were on then.
std::vector<std::string> features_on_at_start();
bool is_feature_on(const char* env_variable);

} // namespace gallery
