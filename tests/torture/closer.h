#pragma once

#include "support.h"

#include <wx/checkbox.h>
#include <wx/dialog.h>
#include <wx/timer.h>

#include <set>

namespace test {

inline void change_something(wxWindow& window)
{
    for (wxWindow* child : window.GetChildren()) {
        auto* box = wxDynamicCast(child, wxCheckBox);
        if (box && box->IsEnabled() && box->IsShown()) {
            box->SetValue(!box->GetValue());
            send(wxEVT_CHECKBOX, box, box->GetValue());
        }
        change_something(*child);
    }
}

/// Ends every window that opens: by OK, and where that does not end it, by closing.
class closer_t : public wxTimer
{
public:
    closer_t() { Start(5); }
    int count() const { return static_cast<int>(m_seen.size()); }

private:
    void Notify() override
    {
        wxDialog* top = nullptr;
        for (wxWindow* window : wxTopLevelWindows)
            if (auto* dialog = wxDynamicCast(window, wxDialog); dialog && dialog->IsShown())
                top = dialog;
        if (!top)
            return;
        // Whoever is asked whether to save would be asked again for as long as that fails.
        wxWindow* ok = top->FindWindow("m_btn_discard");
        if (ok)
            m_seen.erase(top);
        else
            ok = top->FindWindow("m_btn_ok");
        if (!m_seen.insert(top).second || !ok) {
            wxQueueEvent(top, new wxCloseEvent(wxEVT_CLOSE_WINDOW, top->GetId()));
            return;
        }
        change_something(*top);
        // Not from here: the timer must go on in the loop of what that opens.
        auto* pressed = new wxCommandEvent(wxEVT_BUTTON, ok->GetId());
        pressed->SetEventObject(ok);
        wxQueueEvent(ok, pressed);
    }

    std::set<wxWindow*> m_seen;
};

} // namespace test
