#pragma once

#include <wx/event.h>
#include <wx/weakref.h>
#include <wx/window.h>

#include <functional>
#include <string>
#include <vector>

class wxButton;
class wxPanel;

namespace commondlg3 {

class simple_message_panel_t;

/// A line above the page with a warning and what can be done about it; made when it is first needed.
class frame_notice_t
{
public:
    struct action_t
    {
        std::string label;
        std::function<void()> chosen;
    };

    /// @param place from the layout, hidden while there is nothing to say
    explicit frame_notice_t(wxPanel* place) : m_place(place) {}

    /// @param actions a button each, two at most
    void show(const std::string& text, const std::vector<action_t>& actions);
    void hide();
    bool is_shown() const;
    /// To its first button.
    void set_focus();

private:
    void make();

    wxPanel* m_place;
    wxWeakRef<wxWindow> m_before; ///< that had the focus
    simple_message_panel_t* m_message = nullptr;
    std::vector<wxButton*> m_buttons;
    std::vector<action_t> m_actions;
};

} // namespace commondlg3
