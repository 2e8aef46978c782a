#include "wx_helpers1/modal_flavor.h"

#include "file_chooser_repairs.h"
#include "parent_watch.h"

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/weakref.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <list>
#include <vector>

namespace wx_helpers1 {

struct modal_run_t::state_t
{
    wxDialog* dialog = nullptr; // null once it is destroyed
    bool running = false;
    bool abandoned = false;
    int code = wxID_CANCEL;
};

namespace {

using state_t = modal_run_t::state_t;

std::vector<std::shared_ptr<state_t>>& runs()
{
    static std::vector<std::shared_ptr<state_t>> stack;
    return stack;
}

// The toolkit's own loop waits until somebody tells it to end. This one looks at each turn whether there
// still is a window that somebody could end it by.
class modal_loop_t : public wxGUIEventLoop
{
public:
    explicit modal_loop_t(std::shared_ptr<state_t> state) : m_state(std::move(state)) {}

    void ScheduleExit(int = 0) override
    {
        m_shouldExit = true;
        g_main_context_wakeup(nullptr);
    }

protected:
    int DoRun() override
    {
        while (!m_shouldExit && m_state->running && m_state->dialog && m_state->dialog->IsShown())
            g_main_context_iteration(nullptr, TRUE);
        OnExit();
        if (wxTheApp)
            wxTheApp->RethrowStoredException(); // a handler's, which could not pass through the dispatch
        return 0;
    }

private:
    std::shared_ptr<state_t> m_state;
};

// A window that was asked for may never come up: the toolkit waits for what the window manager says about its
// frame, and a window manager that still takes an earlier showing of the window away forgets the next. Until
// it was there once it is asked for again.
class mapping_watch_t
{
public:
    /// `is_wanted` is asked before the window is shown once more.
    mapping_watch_t(GtkWidget* window, std::function<bool()> is_wanted)
        : m_is_wanted(std::move(is_wanted)), m_widget(GTK_WIDGET(g_object_ref(window)))
    {
        constexpr guint patience_ms = 1000;
        m_mapped = g_signal_connect(m_widget, "map-event", G_CALLBACK(on_mapped), this);
        m_source = g_timeout_add(patience_ms, on_time, this);
    }
    ~mapping_watch_t()
    {
        stop();
        g_object_unref(m_widget);
    }
    mapping_watch_t(const mapping_watch_t&) = delete;
    mapping_watch_t& operator=(const mapping_watch_t&) = delete;

private:
    void stop()
    {
        if (m_source)
            g_source_remove(m_source);
        m_source = 0;
        if (m_mapped && g_signal_handler_is_connected(m_widget, m_mapped))
            g_signal_handler_disconnect(m_widget, m_mapped);
        m_mapped = 0;
    }

    static gboolean on_mapped(GtkWidget*, GdkEvent*, gpointer data)
    {
        static_cast<mapping_watch_t*>(data)->stop();
        return FALSE;
    }

    static gboolean on_time(gpointer data)
    {
        const auto* self = static_cast<mapping_watch_t*>(data);
        if (self->m_is_wanted()) {
            if (gtk_widget_get_visible(self->m_widget))
                gtk_widget_hide(self->m_widget);
            gtk_widget_show(self->m_widget);
        }
        return G_SOURCE_CONTINUE;
    }

    std::function<bool()> m_is_wanted;
    GtkWidget* m_widget;
    gulong m_mapped = 0;
    guint m_source = 0;
};

// The toolkit ends the loop of its dialogs only while no other runs inside it: one that ends below another
// window would be gone, and never come back.
class loop_end_watch_t
{
public:
    explicit loop_end_watch_t(wxDialog& dialog)
        : m_dialog(dialog), m_widget(GTK_WIDGET(g_object_ref(dialog.GetHandle())))
    {
        m_source = g_idle_add_full(G_PRIORITY_HIGH, on_begun, this, nullptr);
        m_hidden = g_signal_connect(m_widget, "hide", G_CALLBACK(on_hidden), this);
    }
    ~loop_end_watch_t()
    {
        if (m_source)
            g_source_remove(m_source);
        if (g_signal_handler_is_connected(m_widget, m_hidden))
            g_signal_handler_disconnect(m_widget, m_hidden);
        g_object_unref(m_widget);
    }
    loop_end_watch_t(const loop_end_watch_t&) = delete;
    loop_end_watch_t& operator=(const loop_end_watch_t&) = delete;

private:
    // The first thing that the loop does.
    static gboolean on_begun(gpointer data)
    {
        auto* self = static_cast<loop_end_watch_t*>(data);
        self->m_loop = wxEventLoopBase::GetActive();
        self->m_source = 0;
        return G_SOURCE_REMOVE;
    }

    static void on_hidden(GtkWidget*, loop_end_watch_t* self)
    {
        constexpr guint interval_ms = 50;
        if (!self->m_source)
            self->m_source = g_timeout_add(interval_ms, on_time, self);
    }

    static gboolean on_time(gpointer data)
    {
        auto* self = static_cast<loop_end_watch_t*>(data);
        const bool has_ended = !self->m_dialog.IsModal();
        if (has_ended && wxEventLoopBase::GetActive() != self->m_loop)
            return G_SOURCE_CONTINUE;
        if (has_ended)
            self->m_loop->ScheduleExit();
        self->m_source = 0;
        return G_SOURCE_REMOVE;
    }

    wxDialog& m_dialog;
    GtkWidget* m_widget;
    wxEventLoopBase* m_loop = nullptr;
    gulong m_hidden = 0;
    guint m_source = 0;
};

bool is_below(const wxWindow* window, const wxWindow* ancestor)
{
    for (; window; window = window->GetParent())
        if (window == ancestor)
            return true;
    return false;
}

// A modal window keeps keys and clicks from the others by itself, but not the requests of the window manager.
class other_windows_t
{
public:
    explicit other_windows_t(const std::shared_ptr<state_t>& run)
    {
        for (wxWindow* window : wxTopLevelWindows) {
            GtkWidget* widget = window->GetHandle();
            if (!GTK_IS_WINDOW(widget) || is_below(window, run->dialog))
                continue;
            auto& blocked =
                m_blocked.emplace_back(blocked_t{window, run, GTK_WIDGET(g_object_ref(widget)), 0});
            blocked.handler = g_signal_connect(widget, "event", G_CALLBACK(on_event), &blocked);
        }
    }
    ~other_windows_t()
    {
        for (const blocked_t& one : m_blocked) {
            if (g_signal_handler_is_connected(one.widget, one.handler))
                g_signal_handler_disconnect(one.widget, one.handler);
            g_object_unref(one.widget);
        }
    }
    other_windows_t(const other_windows_t&) = delete;
    other_windows_t& operator=(const other_windows_t&) = delete;

private:
    struct blocked_t
    {
        wxWeakRef<wxWindow> window;
        std::shared_ptr<state_t> by;
        GtkWidget* widget;
        gulong handler;
    };

    // One that was there, hidden, when the run began may be shown by a run above it.
    static gboolean on_event(GtkWidget*, GdkEvent* event, const blocked_t* blocked)
    {
        if (event->type != GDK_DELETE)
            return FALSE;
        for (auto above = runs().rbegin(); above != runs().rend() && *above != blocked->by; ++above)
            if ((*above)->dialog && is_below(blocked->window, (*above)->dialog))
                return FALSE;
        return TRUE;
    }

    std::list<blocked_t> m_blocked;
};

// Where the control that had the focus is gone or hidden, the toolkit gives keys to nobody: Escape would not
// end the dialog, nor F1 help.
class unclaimed_keys_t
{
public:
    explicit unclaimed_keys_t(const std::shared_ptr<state_t>& run)
        : m_run(run),
          m_widget(GTK_WIDGET(g_object_ref(run->dialog->GetHandle()))),
          m_handler(g_signal_connect(m_widget, "event", G_CALLBACK(on_event), this))
    {
    }
    ~unclaimed_keys_t()
    {
        if (g_signal_handler_is_connected(m_widget, m_handler))
            g_signal_handler_disconnect(m_widget, m_handler);
        g_object_unref(m_widget);
    }
    unclaimed_keys_t(const unclaimed_keys_t&) = delete;
    unclaimed_keys_t& operator=(const unclaimed_keys_t&) = delete;

private:
    // As the toolkit does it, and then the dialog itself.
    static gboolean on_event(GtkWidget* widget, GdkEvent* event, const unclaimed_keys_t* self)
    {
        const wxDialog* dialog = self->m_run->dialog;
        auto* window = GTK_WINDOW(widget);
        if (event->type != GDK_KEY_PRESS || gtk_window_get_focus(window) || !dialog || !dialog->m_wxwindow)
            return FALSE;
        if (!gtk_window_activate_key(window, &event->key) &&
            !GTK_WIDGET_GET_CLASS(widget)->key_press_event(widget, &event->key))
            gtk_widget_event(dialog->m_wxwindow, event);
        return TRUE;
    }

    std::shared_ptr<state_t> m_run;
    GtkWidget* m_widget;
    gulong m_handler;
};

// Ends the runs above this one and then this one. A run above cannot return before those above it have.
void end_run(const std::shared_ptr<state_t>& state, int code, bool abandoned)
{
    if (!state->running)
        return;
    const auto stack = runs(); // hiding a window runs handlers
    for (auto above = stack.rbegin(); above != stack.rend() && *above != state; ++above)
        end_run(*above, wxID_CANCEL, true);
    // A menu that is open runs a loop of its own, which waits for the menu.
    GtkWidget* grabbing = gtk_grab_get_current();
    if (grabbing && GTK_IS_MENU_SHELL(grabbing))
        gtk_menu_shell_cancel(GTK_MENU_SHELL(grabbing));
    state->running = false;
    state->abandoned = abandoned;
    state->code = code;
    g_main_context_wakeup(nullptr);
    if (wxDialog* dialog = state->dialog) {
        dialog->SetReturnCode(code);
        dialog->Hide();
    }
}

// The run's place among the others, from its beginning to its end, also by an exception.
class listed_run_t
{
public:
    explicit listed_run_t(std::shared_ptr<state_t> state)
        : m_state(std::move(state)), m_focused(wxWindow::FindFocus())
    {
        if (wxWindow* captured = wxWindow::GetCapture())
            captured->GTKReleaseMouseAndNotify(); // what is grabbed would stay so behind the modal window
        runs().push_back(m_state);
    }
    ~listed_run_t()
    {
        runs().erase(std::find(runs().begin(), runs().end(), m_state));
        m_state->running = false;
        if (wxDialog* dialog = m_state->dialog) {
            gtk_window_set_modal(GTK_WINDOW(dialog->GetHandle()), FALSE);
            dialog->Hide(); // it may have been ended before it was shown
            wxModalDialogHook::CallExit(dialog);
        }
        if (m_focused && m_focused->IsShownOnScreen())
            m_focused->SetFocus();
    }
    listed_run_t(const listed_run_t&) = delete;
    listed_run_t& operator=(const listed_run_t&) = delete;

private:
    std::shared_ptr<state_t> m_state;
    wxWeakRef<wxWindow> m_focused;
};

} // namespace

wxWindow* modal_stack_t::top()
{
    return runs().empty() ? nullptr : runs().back()->dialog;
}

int modal_stack_t::depth()
{
    return static_cast<int>(runs().size());
}

int show_modal_chooser(wxDialog& dialog)
{
    const parent_watch_t parent(dialog.GetParent(), [&dialog] {
        dialog.GetParent()->RemoveChild(&dialog);
        dialog.SetParent(nullptr);
        if (dialog.IsModal())
            dialog.EndModal(wxID_CANCEL);
    });
    if (!dialog.GetHandle())
        return dialog.ShowModal();
    repair_file_chooser(dialog.GetHandle());
    const mapping_watch_t mapping(dialog.GetHandle(), [&dialog] { return dialog.IsShown(); });
    const loop_end_watch_t end(dialog);
    return dialog.ShowModal();
}

modal_run_t::modal_run_t() : m_state(std::make_shared<state_t>()) {}

modal_run_t::~modal_run_t()
{
    m_state->dialog = nullptr;
    end_run(m_state, wxID_CANCEL, true);
}

int modal_run_t::run(wxDialog* dialog, wxWindow* over, const std::function<void()>& leave_parent)
{
    const std::shared_ptr<state_t> state = m_state;
    if (state->running)
        return wxID_CANCEL;
    // One that was hidden before the display had it on the screen: the toolkit, told so late, takes it for shown.
    if (dialog->IsShown() && !gtk_widget_get_visible(dialog->GetHandle()))
        dialog->wxDialog::Show(false);
    *state = {};
    state->dialog = dialog;
    state->running = true;
    const listed_run_t listed(state);
    const parent_watch_t parent(dialog->GetParent(), [&] {
        if (!state->dialog)
            return;
        leave_parent();
        end_run(state, wxID_CANCEL, true);
    });
    const other_windows_t blocked(state);
    const unclaimed_keys_t keys(state);
    const mapping_watch_t mapping(dialog->GetHandle(),
                                  [&state] { return state->dialog && state->dialog->IsShown(); });
    if (over && GTK_IS_WINDOW(over->GetHandle()))
        gtk_window_set_transient_for(GTK_WINDOW(dialog->GetHandle()), GTK_WINDOW(over->GetHandle()));
    gtk_window_set_modal(GTK_WINDOW(dialog->GetHandle()), TRUE);
    dialog->Show(true);
    modal_loop_t(state).Run();
    return state->code;
}

void modal_run_t::end(int code)
{
    end_run(m_state, code, false);
}

bool modal_run_t::is_running() const
{
    return m_state->running;
}

bool modal_run_t::was_abandoned() const
{
    return m_state->abandoned;
}

} // namespace wx_helpers1
