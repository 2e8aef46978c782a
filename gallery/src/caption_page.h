#pragma once

#include "demo_dialog.h"

#include <commondlg3/caption_panel.h>

#include <string>

class wxChoice;
class wxListBox;

namespace gallery {

/// The heading of a page, with everything that its page can do to it.
class caption_page_t : public demo_dialog_t
{
public:
    static constexpr char object_name[] = "caption_panel_t";

    /// @param data {"caption": ..., "description": ..., "messages": [{"severity": 1, "text": ...}, ...],
    /// "read_only": false}; null: a sample
    explicit caption_page_t(const nlohmann::json& data);

    void on_init_dialog() override;
    nlohmann::json get_state() const override;

private:
    void add();
    void change();
    void remove();
    void show_selected();
    void clear();
    void fill_text();
    void changed(const char* what);
    std::string typed_text() const;
    int selected_id() const;

    nlohmann::json m_data;
    commondlg3::caption_panel_t* m_heading = nullptr;
    wxChoice* m_severity = nullptr;
    wxChoice* m_length = nullptr;
    wxTextCtrl* m_text = nullptr;
    wxListBox* m_messages = nullptr;
};

int open_caption_page(const nlohmann::json& data, wxWindow* parent);

} // namespace gallery
