#pragma once

#include "preferences_page.h"
#include "settings_store.h"
#include "usage_record.h"

#include <wx/weakref.h>

#include <string>
#include <utility>

namespace gallery {

/// Consent to the collection of usage data, kept in the product's preferences.
class consent_page_t : public preferences_page_t
{
public:
    static constexpr char object_name[] = "pref.optin";

    explicit consent_page_t(settings_store_ptr_t store) : m_store(std::move(store)) {}

    std::string get_object() const override { return object_name; }
    std::string get_title() const override;
    std::string get_search_words() const override;
    gen_helpers2::error_code_t load() override;
    commondlg3::pref_base_t* create(wxWindow* parent) override;
    bool is_changed() const override;
    gen_helpers2::error_code_t apply() override;
    nlohmann::json get_data() const override;

private:
    settings_store_ptr_t m_store;
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
