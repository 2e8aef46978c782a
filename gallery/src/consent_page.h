#pragma once

#include "file_page.h"
#include "page_icons.h"
#include "usage_record.h"

#include <wx/weakref.h>

#include <string>
#include <utility>
#include <vector>

namespace gallery {

/// Consent to the collection of usage data, kept in the product's preferences.
class consent_page_t : public file_page_t
{
public:
    static constexpr char object_name[] = "pref.optin";

    using file_page_t::file_page_t;

    std::string get_name() const override { return object_name; }
    std::string get_title() const override;
    std::string get_search_words() const override;
    wx_helpers1::wxStaticPicture get_icon() const override { return get_page_icon(page_icon_t::usage); }
    gen_helpers2::error_code_t load() override;
    commondlg3::pref_base_t* create(wxWindow* parent) override;
    void show_kept() override;
    bool is_changed() const override;
    void store() override;
    gen_helpers2::variant_bag_t get_settings() const override;
    void set_settings(const gen_helpers2::variant_bag_t& settings) override;
    gen_helpers2::variant_bag_t get_defaults() const override;
    bool is_exported() const override { return false; }
    void stored() override;
    nlohmann::json get_data() const override;

private:
    opt_in_pp_t::user_consent_t m_stored = opt_in_pp_t::user_consent_t::not_decided;
    wxWeakRef<opt_in_pp_t> m_page;
};

/// Opens the page alone and reports by JSON lines; nothing is written. Null data: the stored answer.
int open_consent_page(const nlohmann::json& data, wxWindow* parent);

constexpr char consent_dialog_object[] = "dlg.optin";
/// The same for the dialog of the first start.
int open_consent_dialog(const nlohmann::json& data, wxWindow* parent);
/// Asks a user who has not decided yet, and keeps the answer.
void ask_for_consent_once(wxWindow* parent);

} // namespace gallery
