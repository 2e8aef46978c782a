#pragma once

#include "file_page.h"
#include "page_icons.h"

#include <commondlg3/result_saving_pp.h>

#include <wx/weakref.h>

#include <string>
#include <vector>

namespace gallery {

/// Where results are saved, kept in the product's preferences.
class result_saving_page_t : public file_page_t
{
public:
    static constexpr char object_name[] = "pref.result_saving";

    explicit result_saving_page_t(commondlg3::settings_file_ptr_t store);

    std::string get_name() const override { return object_name; }
    std::string get_title() const override;
    std::string get_search_words() const override;
    wx_helpers1::wxStaticPicture get_icon() const override { return get_page_icon(page_icon_t::results); }
    gen_helpers2::error_code_t load() override;
    commondlg3::pref_base_t* create(wxWindow* parent) override;
    void show_kept() override;
    bool is_changed() const override;
    void store() override;
    gen_helpers2::variant_bag_t get_settings() const override;
    void set_settings(const gen_helpers2::variant_bag_t& settings) override;
    gen_helpers2::variant_bag_t get_defaults() const override;
    std::vector<setting_t> get_setting_controls() const override;
    nlohmann::json get_data() const override;

private:
    commondlg3::result_saving_data_t m_data;
    wxWeakRef<commondlg3::result_saving_pp_t> m_page;
};

/// Opens the page alone and reports by JSON lines; nothing is written. Null data: the stored settings.
int open_result_saving_page(const nlohmann::json& data, wxWindow* parent);

} // namespace gallery
