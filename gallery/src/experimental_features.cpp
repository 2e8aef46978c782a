#include "experimental_features.h"

#include "missing_resource.h"

#include <cfgmgr2/product_locations.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace gallery {
namespace {

std::vector<std::string> variables_set_here;

} // namespace

boost::shared_ptr<commondlg3::feature_list_config_t> load_feature_list()
{
    const boost::shared_ptr<commondlg3::feature_list_config_t> list(new commondlg3::translated_feature_list_t(
        cfgmgr2::IProductLocations::get()->get_resource_directory(), catalog_name));
    list->load();
    return list;
}

boost::shared_ptr<commondlg3::active_features_config_impl_t> load_active_features()
{
    // Below the configuration directory, as no other is given.
    const boost::shared_ptr<commondlg3::active_features_config_impl_t> active(
        new commondlg3::active_features_config_impl_t(gen_helpers2::path_t()));
    active->load();
    return active;
}

void set_feature_variables()
{
    const auto list = load_feature_list();
    const auto active = load_active_features();
    for (int i = 0; i < list->get_count(); ++i) {
        const auto feature = list->get_feature(i);
        const char* variable = feature.env_variable.c_str();
        if (!*variable || !active->is_turned_on(feature) || std::getenv(variable))
            continue;
        setenv(variable, "1", 1);
        variables_set_here.push_back(variable);
    }
}

void unset_feature_variables()
{
    for (const std::string& variable : variables_set_here)
        unsetenv(variable.c_str());
    variables_set_here.clear();
}

std::vector<std::string> features_on_at_start()
{
    std::vector<std::string> on;
    const auto list = load_feature_list();
    for (int i = 0; i < list->get_count(); ++i)
        if (const std::string variable = list->get_feature(i).env_variable; is_feature_on(variable.c_str()))
            on.push_back(variable);
    return on;
}

bool is_feature_on(const char* env_variable)
{
    const char* value = std::getenv(env_variable);
    return value && *value && *value != '0';
}

} // namespace gallery
