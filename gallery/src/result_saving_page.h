#pragma once

#include "preferences_page.h"
#include "settings_store.h"

#include <commondlg3/result_saving_pp.h>

#include <wx/weakref.h>

#include <string>

namespace gallery {

/// Where results are saved, kept in the product's preferences.
class result_saving_page_t : public preferences_page_t
{
public:
    static constexpr char object_name[] = "pref.result_saving";

    explicit result_saving_page_t(settings_store_ptr_t store);

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
    commondlg3::result_saving_data_t m_data;
    wxWeakRef<commondlg3::result_saving_pp_t> m_page;
    bool m_unwritten = false;
};

/// Opens the page alone and reports by JSON lines; nothing is written. Null data: the stored settings.
int open_result_saving_page(const nlohmann::json& data, wxWindow* parent);

} // namespace gallery
