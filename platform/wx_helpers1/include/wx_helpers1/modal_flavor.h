#pragma once

#include "wx_helpers1/export.h"
#include "wx_helpers1/help_callback.h"

#include <wx/dialog.h>
#include <wx/event.h>
#include <wx/weakref.h>

namespace wx_helpers1 {

/// Keeps account of the modal windows of the process. GUI thread.
class WX_HELPERS1_EXPORT modal_stack_t
{
public:
    /// The window that runs the innermost modal loop of ours, or null.
    static wxWindow* top();
    /// How many modal loops of ours are running.
    static int depth();

    /// One running modal loop; lives for the length of ShowModal(). Gives the focus back, at its end, to the
    /// window that had it, if that window is still there.
    class WX_HELPERS1_EXPORT entry_t
    {
    public:
        explicit entry_t(wxWindow* window);
        ~entry_t();
        entry_t(const entry_t&) = delete;
        entry_t& operator=(const entry_t&) = delete;

    private:
        wxWeakRef<wxWindow> m_focused;
    };
};

/// A dialog base whose modal runs go through the platform: the help key calls help_activated(), the focus
/// comes back to where it was, and ending a dialog that is not modal is harmless.
///
///     class my_dialog_t : public wx_helpers1::modal_flavor<wxDialog> { void help_activated() override; ...
///     };
///
/// Derive from this only for top-level dialogs; panels need none of it.
template <class Base>
class modal_flavor : public Base, public help_callback_t
{
public:
    modal_flavor() { this->Bind(wxEVT_CHAR_HOOK, &modal_flavor::on_help_key, this); }

    int ShowModal() override
    {
        modal_stack_t::entry_t entry(this);
        return Base::ShowModal();
    }

    void EndModal(int code) override
    {
        if (this->IsModal())
            Base::EndModal(code);
    }

private:
    void on_help_key(wxKeyEvent& event)
    {
        if (event.GetKeyCode() == WXK_F1 && event.GetModifiers() == wxMOD_NONE)
            help_activated();
        else
            event.Skip();
    }
};

} // namespace wx_helpers1
