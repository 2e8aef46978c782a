#pragma once

#include "page_icons.h"
#include "preferences_page.h"

#include <commondlg3/experimental_options_panel.h>

#include <wx/weakref.h>

#include <string>
#include <vector>

namespace gallery {

/// Experimental features, kept in a file of their own beside the preferences.
class experimental_page_t : public preferences_page_t
{
public:
    static constexpr char object_name[] = "panel.experimental";

    std::string get_name() const override { return object_name; }
    std::string get_title() const override;
    std::string get_search_words() const override;
    wx_helpers1::wxStaticPicture get_icon() const override { return get_page_icon(page_icon_t::experiments); }
    gen_helpers2::error_code_t load() override;
    commondlg3::pref_base_t* create(wxWindow* parent) override;
    void show_kept() override;
    bool is_changed() const override;
    void store() override;
    gen_helpers2::error_code_t save() override;
    std::vector<gen_helpers2::path_t> get_files() const override;
    gen_helpers2::variant_bag_t get_settings() const override;
    void set_settings(const gen_helpers2::variant_bag_t& settings) override;
    gen_helpers2::variant_bag_t get_defaults() const override;
    void stored() override;
    std::vector<setting_t> get_setting_controls() const override;
    bool prompt_restart() override;
    nlohmann::json get_data() const override;

private:
    boost::shared_ptr<commondlg3::feature_list_config_t> m_list;
    boost::shared_ptr<commondlg3::active_features_config_impl_t> m_active;
    wxWeakRef<commondlg3::experimental_options_panel_t> m_page;
    bool m_restart_due = false;
};

/// Opens the page alone and reports by JSON lines; nothing is written. Null data: the product's own features.
int open_experimental_page(const nlohmann::json& data, wxWindow* parent);

} // namespace gallery
