/// @file
/// Which experimental features a product ships, and which of them its user turned on.
///
/// Two files, both bags (see gen_helpers2/variant_bag_file.h), because their authors differ: the list belongs
/// to the product and is only read, the choice belongs to the user and is written whole each time. A feature
/// is identified by the environment variable that switches it on.
///
///     auto list = boost::make_shared<feature_list_config_impl_t>(product_directory);
///     auto active = boost::make_shared<active_features_config_impl_t>(gen_helpers2::path_t());
///     list->load();
///     active->load();
///     for (int i = 0; i < list->get_count(); ++i)
///         if (active->is_turned_on(list->get_feature(i))) ...
///
/// To let the user choose, hand both to experimental_options_panel_t. Texts are UTF-8 bytes. Not safe to use
/// one object in several threads.
#pragma once

#include "commondlg3/export.h"

#include <gen_helpers2/path.h>

#include <string>
#include <unordered_set>
#include <vector>

namespace commondlg3 {

/// The features that there are.
class COMMONDLG3_EXPORT feature_list_config_t
{
public:
    /// What the product says of a feature.
    struct feature_info_t
    {
        std::string name;         ///< the label of its check box
        std::string description;  ///< shown below it
        std::string env_variable; ///< switches the feature on; identifies it
    };

    virtual ~feature_list_config_t();

    /// Reads the file anew. One that is missing or cannot be understood is an empty list, which the log
    /// explains.
    virtual void load() = 0;
    virtual int get_count() const = 0;
    /// An empty record when the index is not below get_count().
    virtual feature_info_t get_feature(int index) const = 0;
};

/// The list in "evaluation_features.cfg" of a directory.
class COMMONDLG3_EXPORT feature_list_config_impl_t : public feature_list_config_t
{
public:
    explicit feature_list_config_impl_t(const gen_helpers2::path_t& directory);

    void load() override;
    int get_count() const override;
    feature_info_t get_feature(int index) const override;

private:
    gen_helpers2::path_t m_directory;
    std::vector<feature_info_t> m_features;
};

/// The same list with texts in the user's language: a name or a description that is a key of the product's
/// catalog stands for its text there; any other is shown as it is. The file stays one for all languages.
///
///     translated_feature_list_t list(product_directory, "product");
/// @since 3.1
class COMMONDLG3_EXPORT translated_feature_list_t : public feature_list_config_impl_t
{
public:
    /// @param catalog its name, as cfgmgr2::getMessageCatalog() takes it
    translated_feature_list_t(const gen_helpers2::path_t& directory, const std::string& catalog);

    feature_info_t get_feature(int index) const override;

private:
    std::string m_catalog;
};

/// The features that are turned on. A host reads them at its start, to set the variables that they name.
class COMMONDLG3_EXPORT active_features_config_t
{
public:
    using feature_info_t = feature_list_config_t::feature_info_t;

    virtual ~active_features_config_t();

    /// Forgets the list, not the file.
    virtual void clear() = 0;
    /// Adds what the file holds to the list; a name that is in it already stays where it is. A file that is
    /// missing or cannot be understood changes nothing.
    virtual void load() = 0;
    /// Writes the whole list, each name once; false, with the file as it was, when it cannot be written. One
    /// that could not be understood is kept as `<file>.damaged`; one that cannot be read is not replaced.
    [[nodiscard]] virtual bool save() = 0;
    /// Adds a feature to the list. To turn one off, clear the list and turn the others on.
    virtual void turn_on(const feature_info_t& feature) = 0;
    /// Whether it is in the list.
    virtual bool is_turned_on(const feature_info_t& feature) = 0;
    /// The file; empty where the choice is not kept in one.
    virtual std::string get_config_filename() const;
};

/// The choice in "active_evaluation_features.cfg" of a directory; of the product's configuration directory
/// when none is given.
class COMMONDLG3_EXPORT active_features_config_impl_t : public active_features_config_t
{
public:
    explicit active_features_config_impl_t(const gen_helpers2::path_t& directory);

    void clear() override;
    void load() override;
    bool save() override;
    void turn_on(const feature_info_t& feature) override;
    bool is_turned_on(const feature_info_t& feature) override;
    std::string get_config_filename() const override;

    /// The variables of the features that are on, in the order of the file.
    const std::vector<std::string>& get_env_variables() const { return m_env_variables; }

private:
    void add(const std::string& env_variable);

    gen_helpers2::path_t m_directory;
    std::vector<std::string> m_env_variables; ///< each once
    std::unordered_set<std::string> m_known;  ///< the same
    bool m_unread = false; ///< the file is there and could not be read: it is not written over
};

} // namespace commondlg3
