#pragma once

#include <commondlg3/dialog_base.h>

#include <nlohmann/json.hpp>

#include <string>

namespace gallery {

/// A window around one panel of the library, with controls that do to it what a product does. Its theme can
/// be switched while it is open.
class demo_dialog_t : public commondlg3::dialog_base_t
{
public:
    /// @param object the name that a script knows the panel by; must outlive the window
    explicit demo_dialog_t(const char* object);

    /// Shows the window and reports its opening and its end.
    int run(wxWindow* parent);
    /// What a script is told when the window has ended.
    virtual nlohmann::json get_state() const = 0;

protected:
    /// Where the controls are: what scrolls in the dialog, on small screens.
    wxWindow* get_area();
    /// For on_init_dialog(): puts the panel at that place among the controls, with this margin, in pixels,
    /// where Tab finds it after that window, or first.
    void insert_panel(wxWindow* panel, int place, int margin, wxWindow* after = nullptr);
    /// For on_init_dialog(), as the last thing.
    void finish_layout();

private:
    void switch_theme(bool dark);

    const char* m_object;
};

} // namespace gallery
