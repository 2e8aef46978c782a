#pragma once

#include "example_record.h"

#include <commondlg3/dialog_base.h>

#include <nlohmann/json.hpp>

#include <string>

namespace gallery {

/// A dialog as a product makes one on the library's base: limits on its fields, help, a record in and out.
class example_dialog_t : public commondlg3::dialog_base_t
{
public:
    static constexpr char object_name[] = "dlg.example";

    explicit example_dialog_t(const example_record_t& record);
    const example_record_t& get_data() const { return m_record; }

    void set_max_text_limit() override;
    void on_init_dialog() override;
    bool save_settings() override;

private:
    example_record_t m_record;
    wxTextCtrl* m_name = nullptr;
    wxTextCtrl* m_notes = nullptr;
};

/// Opens it and reports by JSON lines. Null data: an empty record.
int open_example_dialog(const nlohmann::json& data, wxWindow* parent);

/// Shows the host's help on a topic.
void show_help(const std::string& object, const std::string& topic, wxWindow* parent);

} // namespace gallery
