#include "commondlg3/feature_config.h"

#include <cfgmgr2/message_catalog.h>
#include <cfgmgr2/product_locations.h>
#include <gen_helpers2/file.h>
#include <gen_helpers2/file_transaction.h>
#include <gen_helpers2/log.h>
#include <gen_helpers2/variant_bag_file.h>

namespace commondlg3 {
namespace {

constexpr char feature_config_unit[] = "feature_config";
constexpr char list_file[] = "evaluation_features.cfg";
constexpr char active_file[] = "active_evaluation_features.cfg";
constexpr char features_key[] = "features";
constexpr char feature_key[] = "feature";
constexpr char env_variable_key[] = "env_variable";
// Thousands of features fit; a file that is larger is none of ours and not worth its memory.
constexpr std::size_t max_file_bytes = std::size_t(16) * 1024 * 1024;

gen_helpers2::error_code_t read(const gen_helpers2::path_t& file, gen_helpers2::variant_bag_t& bag)
{
    gen_helpers2::finish_transaction(file.parent());
    if (file.is_missing())
        return {}; // the usual case: nothing to tell
    const auto result = gen_helpers2::load_variant_bag(file, bag, max_file_bytes);
    if (result.failed())
        gen_helpers2::log_warning(feature_config_unit, result.as_string());
    return result;
}

bool is_damaged(const gen_helpers2::error_code_t& state)
{
    return state == gen_helpers2::error_code_t::damaged("");
}

// What is there already must not be lost: it is looked at first.
gen_helpers2::error_code_t write(const gen_helpers2::variant_bag_t& bag, const gen_helpers2::path_t& file)
{
    gen_helpers2::make_private_folder(file.parent());
    gen_helpers2::variant_bag_t replaced;
    gen_helpers2::error_code_t state;
    if (!file.is_missing())
        state = gen_helpers2::load_variant_bag(file, replaced, max_file_bytes);
    if (state.succeeded())
        return gen_helpers2::save_variant_bag(bag, file);
    return is_damaged(state) ? gen_helpers2::save_over_damaged_file(bag, file) : state;
}

} // namespace

feature_list_config_t::~feature_list_config_t() = default;
active_features_config_t::~active_features_config_t() = default;

std::string active_features_config_t::get_config_filename() const
{
    return std::string();
}

feature_list_config_impl_t::feature_list_config_impl_t(const gen_helpers2::path_t& directory)
    : m_directory(directory)
{
}

void feature_list_config_impl_t::load()
{
    m_features.clear();
    gen_helpers2::variant_bag_t bag;
    if (read(m_directory / list_file, bag).failed())
        return;
    const gen_helpers2::variant_bag_t* features = bag.find_child(features_key);
    if (!features)
        return;
    features->for_each_child(feature_key, [this](const gen_helpers2::variant_bag_t& feature) {
        m_features.push_back({feature.find_text("name").value_or(""),
                              feature.find_text("description").value_or(""),
                              feature.find_text(env_variable_key).value_or("")});
    });
}

int feature_list_config_impl_t::get_count() const
{
    return static_cast<int>(m_features.size());
}

feature_list_config_t::feature_info_t feature_list_config_impl_t::get_feature(int index) const
{
    return index >= 0 && index < get_count() ? m_features[index] : feature_info_t();
}

translated_feature_list_t::translated_feature_list_t(const gen_helpers2::path_t& directory,
                                                     const std::string& catalog)
    : feature_list_config_impl_t(directory), m_catalog(catalog)
{
}

feature_list_config_t::feature_info_t translated_feature_list_t::get_feature(int index) const
{
    feature_info_t feature = feature_list_config_impl_t::get_feature(index);
    const auto catalog = cfgmgr2::getMessageCatalog(m_catalog);
    for (std::string* text : {&feature.name, &feature.description})
        if (catalog && catalog->has_message(*text))
            *text = catalog->message(*text).as_ustring();
    return feature;
}

active_features_config_impl_t::active_features_config_impl_t(const gen_helpers2::path_t& directory)
    : m_directory(directory)
{
}

void active_features_config_impl_t::clear()
{
    m_env_variables.clear();
    m_known.clear();
}

void active_features_config_impl_t::load()
{
    gen_helpers2::variant_bag_t bag;
    const auto result = read(gen_helpers2::path_t(get_config_filename()), bag);
    m_unread = result.failed() && !is_damaged(result);
    if (const gen_helpers2::variant_bag_t* features = bag.find_child(features_key))
        features->for_each_child(feature_key, [this](const gen_helpers2::variant_bag_t& feature) {
            add(feature.find_text(env_variable_key).value_or(""));
        });
}

bool active_features_config_impl_t::save()
{
    if (m_unread) {
        gen_helpers2::log_error(feature_config_unit, "what could not be read is not written over");
        return false;
    }
    gen_helpers2::variant_bag_t bag;
    gen_helpers2::variant_bag_t& features = bag.add_child(features_key);
    for (const std::string& env_variable : m_env_variables)
        features.add_child(feature_key).put(env_variable_key, env_variable);
    const auto result = write(bag, gen_helpers2::path_t(get_config_filename()));
    if (result.failed())
        gen_helpers2::log_error(feature_config_unit, result.as_string());
    return result.succeeded();
}

void active_features_config_impl_t::turn_on(const feature_info_t& feature)
{
    add(feature.env_variable);
}

bool active_features_config_impl_t::is_turned_on(const feature_info_t& feature)
{
    return m_known.count(feature.env_variable) != 0;
}

std::string active_features_config_impl_t::get_config_filename() const
{
    const gen_helpers2::path_t directory =
        m_directory.is_empty() ? cfgmgr2::IProductLocations::get()->get_config_directory() : m_directory;
    return (directory / active_file).as_string();
}

void active_features_config_impl_t::add(const std::string& env_variable)
{
    if (m_known.insert(env_variable).second)
        m_env_variables.push_back(env_variable);
}

} // namespace commondlg3
