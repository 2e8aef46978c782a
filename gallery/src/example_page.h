#pragma once

#include "example_record.h"

#include <commondlg3/pref_base.h>

#include <nlohmann/json.hpp>

namespace gallery {

/// A preference page as a product makes one on the library's base.
class example_page_t : public commondlg3::pref_base_t
{
public:
    static constexpr char object_name[] = "pref.example";

    explicit example_page_t(const example_record_t& record);
    const example_record_t& get_data() const { return m_record; }

    void set_max_text_limit() override;
    void on_init_dialog() override;
    void on_update_ui_settings() override;
    void on_help() override;
    bool save_settings() override;

private:
    example_record_t m_record;
    wxTextCtrl* m_name = nullptr;
    wxTextCtrl* m_notes = nullptr;
};

/// Opens it in a window of its own and reports by JSON lines. Null data: an empty record.
int open_example_page(const nlohmann::json& data, wxWindow* parent);

} // namespace gallery
