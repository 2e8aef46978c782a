#pragma once

#include "wx_helpers1/export.h"
#include "wx_helpers1/help_callback.h"

#include <wx/dialog.h>
#include <wx/event.h>
#include <wx/modalhook.h>

#include <functional>
#include <memory>

namespace wx_helpers1 {

/// Keeps account of the modal windows of the process. GUI thread.
class WX_HELPERS1_EXPORT modal_stack_t
{
public:
    /// The window that runs the innermost modal loop of ours, or null.
    static wxWindow* top();
    /// How many modal loops of ours are running.
    static int depth();
};

/// Shows a dialog of the toolkit's own, a chooser, modally. When its parent goes meanwhile it is ended with
/// wxID_CANCEL, and left without a parent rather than destroyed with it: it may live on the caller's stack.
/// @since 3.1
WX_HELPERS1_EXPORT int show_modal_chooser(wxDialog& dialog);

/// The modal run of a dialog: a loop that cannot outlive what the user sees of it.
///
/// It ends when the dialog is ended, is hidden, or is destroyed, when its parent is destroyed, and when a
/// modal run below it ends, whose caller could not go on otherwise. A dialog whose parent goes is left
/// without one rather than destroyed with it, so that it may live on its caller's stack. A request to end
/// that comes while the dialog is still being opened is kept. Other windows cannot be closed by the user
/// meanwhile.
///
/// Part of modal_flavor; GUI thread.
/// @since 3.1
class WX_HELPERS1_EXPORT modal_run_t
{
public:
    modal_run_t();
    /// Ends the run: the dialog is being destroyed.
    ~modal_run_t();
    modal_run_t(const modal_run_t&) = delete;
    modal_run_t& operator=(const modal_run_t&) = delete;

    /// Shows the dialog, waits until the run ends, and answers with its code. `this` and the dialog may be
    /// gone then.
    /// @param over the window that the dialog stands over; may be null
    /// @param leave_parent takes the dialog from its parent, which is being destroyed
    int run(wxDialog* dialog, wxWindow* over, const std::function<void()>& leave_parent);
    /// Ends the run, and those that were begun during it, and hides the dialog. Nothing when none is running.
    void end(int code);
    bool is_running() const;
    /// Whether the last run ended without anybody choosing: with its parent, or with a run below it.
    bool was_abandoned() const;

    struct state_t;

private:
    std::shared_ptr<state_t> m_state; // the loop holds it too
};

/// A dialog base whose modal runs go through the platform: they end whatever becomes of the window
/// (modal_run_t), the help key calls help_activated(), the focus comes back to where it was, and ending a
/// dialog that is not modal is harmless.
///
///     class my_dialog_t : public wx_helpers1::modal_flavor<wxDialog>
///     {
///         void help_activated() override;
///     };
///
/// Derive from this only for top-level dialogs; panels need none of it.
template <class Base>
class modal_flavor : public Base, public help_callback_t
{
public:
    modal_flavor() { this->Bind(wxEVT_CHAR_HOOK, &modal_flavor::on_help_key, this); }

    /// The code that the dialog ended with; wxID_CANCEL when it was abandoned.
    int ShowModal() override
    {
        const int answer_of_hook = wxModalDialogHook::CallEnter(this);
        if (answer_of_hook != wxID_NONE)
            return answer_of_hook;
        return m_modal.run(this, this->GetParentForModalDialog(), [this] {
            this->GetParent()->RemoveChild(this);
            this->SetParent(nullptr);
        });
    }

    void EndModal(int code) override { m_modal.end(code); }
    bool IsModal() const override { return m_modal.is_running(); }
    /// Whether the last modal run ended without an answer, because its parent went.
    /// @since 3.1
    bool was_abandoned() const { return m_modal.was_abandoned(); }

private:
    void on_help_key(wxKeyEvent& event)
    {
        if (event.GetKeyCode() == WXK_F1 && event.GetModifiers() == wxMOD_NONE)
            help_activated();
        else
            event.Skip();
    }

    modal_run_t m_modal;
};

} // namespace wx_helpers1
