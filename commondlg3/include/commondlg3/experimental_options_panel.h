#pragma once

#include "commondlg3/feature_config.h"
#include "commondlg3/pref_base.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <vector>

class wxButton;
class wxCheckBox;
class wxScrolledWindow;
class wxSearchCtrl;
class wxSizerItem;

namespace commondlg3 {

class simple_message_panel_t;

/// The preference page on which users turn on features that are not finished.
///
///     list->load();
///     active->load();
///     auto* page = new experimental_options_panel_t(list, active);
///     page->create(parent);                                            // the parent owns it
///     ...
///     if (page->save_settings() && page->is_restart_requested() && page->prompt_restart_now())
///         restart();
///
/// The page shows a check box a feature, and writes the user's choice as a whole: a feature that the product
/// no longer lists is gone from it with the next save. A change takes effect when the product starts again,
/// which the page says as soon as there is one. Ownership: the two configurations are shared with the host;
/// either may be missing. Settings that are finished do not belong here. GUI thread.
class COMMONDLG3_EXPORT experimental_options_panel_t : public pref_base_t
{
public:
    /// A feature, and whether its box is ticked. Features are told apart by their variable.
    struct feature_info_t
    {
        std::string name;
        std::string description;
        std::string env_variable;
        bool enabled = false;

        friend bool operator==(const feature_info_t& a, const feature_info_t& b)
        {
            return a.name == b.name && a.description == b.description && a.env_variable == b.env_variable &&
                   a.enabled == b.enabled;
        }
        friend bool operator!=(const feature_info_t& a, const feature_info_t& b) { return !(a == b); }
    };

    /// What the page shows beyond the features.
    /// @since 3.1
    enum flags_t : unsigned
    {
        search_features = 1, ///< a field that finds features, where there are more than ten
        show_changes = 2,    ///< which features are in another state than when the program started
        offer_reset = 4      ///< a button that turns all features off
    };

    experimental_options_panel_t(boost::shared_ptr<feature_list_config_t> features,
                                 boost::shared_ptr<active_features_config_t> active, unsigned flags = 0);
    ~experimental_options_panel_t() override;

    void on_init_dialog() override;
    void on_update_ui_settings() override;
    /// Takes the features from the list and their states from the choice.
    void load_settings();
    /// Writes the choice; whether that succeeded. Without a place to write to: whether anything was changed.
    /// What could not be written stays changed. A page that never got its features writes nothing.
    bool save_settings() override;
    /// The two halves of it, for a host that writes the choice itself: puts the states into the choice, and
    /// takes them for the stored ones.
    /// @since 3.1
    void take_choice();
    /// The second half.
    /// @since 3.1
    void set_unchanged();

    /// Sets a feature's box as if the user had; whether there is such a feature.
    /// @since 3.1
    bool set_enabled(const std::string& env_variable, bool enabled);
    /// Whether some feature is in another state than the one that was loaded or last saved.
    [[nodiscard]] bool is_changed() const;
    bool is_experimental_on() const;
    /// Whether the last save_settings() had a change to save.
    bool is_restart_requested() const { return m_restart_requested; }
    /// Asks the user, in a modal window.
    [[nodiscard]] bool prompt_restart_now() const;

    /// The variables of the features that were on when the program started, for `show_changes`; before
    /// create(). Without them the choice counts as it was when the page was filled first.
    /// @since 3.1
    void set_on_at_start(std::vector<std::string> env_variables);

    /// Adds one at the end; what is there already changes nothing.
    void add_feature(const feature_info_t& feature);
    const std::vector<feature_info_t>& get_features() const { return m_features; }

    virtual void on_checkbox(wxCommandEvent& event);
    /// @since 3.1
    virtual void on_search(wxCommandEvent& event);
    /// Turns all features off, also those that the search has hidden.
    /// @since 3.1
    virtual void on_reset(wxCommandEvent& event);

protected:
    /// Adds the features of the list, all of them off.
    void load_feature_list();
    /// Adds the controls of one feature.
    void add_checkbox(const std::string& name, const std::string& description, bool enabled);

private:
    struct row_t
    {
        wxCheckBox* box;
        wxStaticText* description;
        bool stored; ///< the state that was loaded or last saved
        wxSizerItem* gap;
        wxStaticText* change = nullptr; ///< made when it is needed
    };

    bool has_controls() const;
    void remove_features();
    bool owns(const wxCheckBox* box) const;
    void show_state();
    void make_extras();
    void show_change(std::size_t row);
    std::string get_status() const;
    bool is_searched() const;
    void rewrap();
    void on_size(wxSizeEvent& event);

    boost::shared_ptr<feature_list_config_t> m_feature_list;
    boost::shared_ptr<active_features_config_t> m_active;
    std::vector<feature_info_t> m_features;
    std::vector<row_t> m_rows; ///< one a feature
    std::vector<std::string> m_on_at_start;
    bool m_knows_start = false;
    unsigned m_flags;
    std::size_t m_found = 0; ///< by the search
    wxSearchCtrl* m_search = nullptr;
    wxButton* m_reset = nullptr;
    bool m_restart_requested = false;
    bool m_loading = false;
    bool m_loaded_features = false;
    wxStaticText* m_description = nullptr;
    wxStaticText* m_status = nullptr;
    wxScrolledWindow* m_list = nullptr;
    int m_least_width = 0; ///< the list's, in the layout
    simple_message_panel_t* m_notice = nullptr;
};

} // namespace commondlg3
