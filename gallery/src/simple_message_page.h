#pragma once

#include "demo_dialog.h"

#include <commondlg3/simple_message_panel.h>

class wxCheckBox;
class wxChoice;

namespace gallery {

/// A notice strip between other things of a page.
class simple_message_page_t : public demo_dialog_t
{
public:
    static constexpr char object_name[] = "simple_message_panel_t";

    /// @param data {"severity": 2, "text": ..., "shown": true}; null: a sample
    explicit simple_message_page_t(const nlohmann::json& data);

    void on_init_dialog() override;
    nlohmann::json get_state() const override;

private:
    void update();

    nlohmann::json m_data;
    commondlg3::simple_message_panel_t* m_strip = nullptr;
    wxChoice* m_severity = nullptr;
    wxTextCtrl* m_text = nullptr;
    wxCheckBox* m_shown = nullptr;
};

int open_simple_message_page(const nlohmann::json& data, wxWindow* parent);

} // namespace gallery
