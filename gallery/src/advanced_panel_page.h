#pragma once

#include "demo_dialog.h"

#include <commondlg3/advanced_panel.h>

#include <vector>

namespace gallery {

/// A panel that folds away, with another one in it.
class advanced_panel_page_t : public demo_dialog_t
{
public:
    static constexpr char object_name[] = "advanced_panel_t";

    /// @param data {"caption": ..., "style": 0, "open": true, "inner_open": true}; null: a sample
    explicit advanced_panel_page_t(const nlohmann::json& data);

    void on_init_dialog() override;
    nlohmann::json get_state() const override;

protected:
    void fit_again() override;

private:
    int get_margin() const;
    void add();
    void clear();
    void toggled(const char* name, bool opened);

    nlohmann::json m_data;
    commondlg3::advanced_panel_t* m_outer = nullptr;
    commondlg3::advanced_panel_t* m_inner = nullptr;
    std::vector<wxWindow*> m_added; ///< in the inner panel
};

int open_advanced_panel_page(const nlohmann::json& data, wxWindow* parent);

} // namespace gallery
