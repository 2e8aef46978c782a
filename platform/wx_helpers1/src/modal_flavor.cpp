#include "wx_helpers1/modal_flavor.h"

#include "file_chooser_repairs.h"
#include "parent_watch.h"
#include "widget_handler.h"

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
        : m_is_wanted(std::move(is_wanted)), m_mapped(window, "map-event", G_CALLBACK(on_mapped), this)
    {
        constexpr guint patience_ms = 1000;
        m_source = g_timeout_add(patience_ms, on_time, this);
    }
    ~mapping_watch_t() { stop(); }
    mapping_watch_t(const mapping_watch_t&) = delete;
    mapping_watch_t& operator=(const mapping_watch_t&) = delete;

private:
    void stop()
    {
        if (m_source)
            g_source_remove(m_source);
        m_source = 0;
        m_mapped.disconnect();
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
            GtkWidget* window = self->m_mapped.get_widget();
            if (gtk_widget_get_visible(window))
                gtk_widget_hide(window);
            gtk_widget_show(window);
        }
        return G_SOURCE_CONTINUE;
    }

    std::function<bool()> m_is_wanted;
    widget_handler_t m_mapped;
    guint m_source = 0;
};

// Of modal windows the toolkit gives keys and clicks to the one that was shown last. One that comes up late,
// or once more, while another is above it would take them, and could not use them.
class modal_order_t
{
public:
    explicit modal_order_t(GtkWidget* window) : m_shown(window, "show", G_CALLBACK(on_shown), this)
    {
        in_order().push_back(this);
    }
    ~modal_order_t() { in_order().erase(std::find(in_order().begin(), in_order().end(), this)); }
    modal_order_t(const modal_order_t&) = delete;
    modal_order_t& operator=(const modal_order_t&) = delete;

private:
    static std::vector<const modal_order_t*>& in_order()
    {
        static std::vector<const modal_order_t*> windows;
        return windows;
    }

    static void on_shown(GtkWidget*, const modal_order_t* self)
    {
        const auto all = in_order(); // what a window tells of itself runs handlers
        for (auto above = std::find(all.begin(), all.end(), self) + 1; above != all.end(); ++above) {
            GtkWidget* window = (*above)->m_shown.get_widget();
            if (!gtk_widget_get_mapped(window) || !gtk_window_get_modal(GTK_WINDOW(window)))
                continue;
            gtk_window_set_modal(GTK_WINDOW(window), FALSE);
            gtk_window_set_modal(GTK_WINDOW(window), TRUE);
            gdk_window_raise(gtk_widget_get_window(window));
        }
    }

    widget_handler_t m_shown;
};

// The toolkit ends the loop of its dialogs only while no other runs inside it: one that ends below another
// window would be gone, and never come back.
class loop_end_watch_t
{
public:
    explicit loop_end_watch_t(wxDialog& dialog)
        : m_dialog(dialog), m_hidden(dialog.GetHandle(), "hide", G_CALLBACK(on_hidden), this)
    {
        m_source = g_idle_add_full(G_PRIORITY_HIGH, on_begun, this, nullptr);
    }
    ~loop_end_watch_t()
    {
        if (m_source)
            g_source_remove(m_source);
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
    widget_handler_t m_hidden;
    wxEventLoopBase* m_loop = nullptr;
    guint m_source = 0;
};

bool is_below(const wxWindow* window, const wxWindow* ancestor)
{
    for (; window; window = window->GetParent())
        if (window == ancestor)
            return true;
    return false;
}

// A window that the window manager's requests to close are kept from.
class blocked_window_t
{
public:
    blocked_window_t(wxWindow* window, std::shared_ptr<state_t> by)
        : m_window(window),
          m_by(std::move(by)),
          m_event(window->GetHandle(), "event", G_CALLBACK(on_event), this)
    {
    }

private:
    // One that was there, hidden, when the run began may be shown by a run above it.
    static gboolean on_event(GtkWidget*, GdkEvent* event, const blocked_window_t* self)
    {
        if (event->type != GDK_DELETE)
            return FALSE;
        for (auto above = runs().rbegin(); above != runs().rend() && *above != self->m_by; ++above)
            if ((*above)->dialog && is_below(self->m_window, (*above)->dialog))
                return FALSE;
        return TRUE;
    }

    wxWeakRef<wxWindow> m_window;
    std::shared_ptr<state_t> m_by;
    widget_handler_t m_event;
};

// A modal window keeps keys and clicks from the others by itself, but not these requests.
std::list<blocked_window_t> block_others(const std::shared_ptr<state_t>& run)
{
    std::list<blocked_window_t> blocked;
    for (wxWindow* window : wxTopLevelWindows)
        if (GTK_IS_WINDOW(window->GetHandle()) && !is_below(window, run->dialog))
            blocked.emplace_back(window, run);
    return blocked;
}

// Where the control that had the focus is gone or hidden, the toolkit gives keys to nobody: Escape would not
// end the dialog, nor F1 help. So they are dealt with as the toolkit does it, and then by the dialog itself.
gboolean on_unclaimed_key(GtkWidget* widget, GdkEvent* event, const state_t* run)
{
    auto* window = GTK_WINDOW(widget);
    if (event->type != GDK_KEY_PRESS || gtk_window_get_focus(window) || !run->dialog ||
        !run->dialog->m_wxwindow)
        return FALSE;
    if (!gtk_window_activate_key(window, &event->key) &&
        !GTK_WIDGET_GET_CLASS(widget)->key_press_event(widget, &event->key))
        gtk_widget_event(run->dialog->m_wxwindow, event);
    return TRUE;
}

// The focus may stay with a window below: some window managers give it only to a window that the user asked
// for just then. The toolkit gives keys to the modal one all the same, but shows no focus in it, and Tab does
// not leave a button. So the first key that comes has the focus follow.
gboolean on_key_without_focus(GtkWidget* widget, GdkEvent* event, gpointer)
{
    if (event->type == GDK_KEY_PRESS && !gtk_window_is_active(GTK_WINDOW(widget)))
        gdk_window_focus(gtk_widget_get_window(widget), event->key.time);
    return FALSE;
}

// What each window needs that is modal, from before it is shown to its end.
struct modal_watches_t
{
    modal_watches_t(GtkWidget* window, std::function<bool()> is_wanted)
        : mapping(window, std::move(is_wanted)),
          order(window),
          focus(window, "event", G_CALLBACK(on_key_without_focus), nullptr)
    {
    }

    mapping_watch_t mapping;
    modal_order_t order;
    widget_handler_t focus;
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
    const modal_watches_t watches(dialog.GetHandle(), [&dialog] { return dialog.IsShown(); });
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
    const auto blocked = block_others(state);
    const modal_watches_t watches(dialog->GetHandle(),
                                  [&state] { return state->dialog && state->dialog->IsShown(); });
    // Behind those, as it keeps the keys that it deals with.
    const widget_handler_t keys(dialog->GetHandle(), "event", G_CALLBACK(on_unclaimed_key), state.get());
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
