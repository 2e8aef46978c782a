#pragma once

#include "preferences_page.h"
#include "settings_store.h"

#include <commondlg3/editor_pp.h>

#include <wx/weakref.h>

#include <string>
#include <utility>

namespace gallery {

/// The programs that open source files, kept in the product's preferences.
class editor_page_t : public preferences_page_t
{
public:
    static constexpr char object_name[] = "pref.editor";

    explicit editor_page_t(settings_store_ptr_t store) : m_store(std::move(store)) {}

    std::string get_object() const override { return object_name; }
    std::string get_title() const override;
    std::string get_search_words() const override;
    gen_helpers2::error_code_t load() override { return m_store->load(); }
    commondlg3::pref_base_t* create(wxWindow* parent) override;
    bool is_changed() const override;
    gen_helpers2::error_code_t apply() override;
    nlohmann::json get_data() const override;

private:
    settings_store_ptr_t m_store;
    wxWeakRef<commondlg3::editor_pp_t> m_page;
    bool m_unwritten = false;
};

/// What the desktop knows, then what was kept; on an error the former alone.
commondlg3::editor_data_t load_editors(gen_helpers2::error_code_t& result);

/// Opens the page alone and reports by JSON lines; nothing is written. Null data: load_editors().
int open_editor_page(const nlohmann::json& data, wxWindow* parent);

} // namespace gallery
