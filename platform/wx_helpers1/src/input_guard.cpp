#include "wx_helpers1/input_guard.h"

#include "user_requests.h"

#include "wx_helpers1/guarded.h"

#include <wx/toplevel.h>

#include <gtk/gtk.h>

#include <utility>
#include <vector>

namespace wx_helpers1 {
namespace {

constexpr char guard_key[] = "commondlg3-input-guard";
constexpr double pale = 0.5;
// A window that is never painted must not stay shut.
constexpr std::int64_t longest_until_painted = 2000;

// Lives as long as the widget of its window.
class held_back_t
{
public:
    explicit held_back_t(GtkWidget* window) : m_window(window)
    {
        g_signal_connect(window, "show", G_CALLBACK(on_show), this);
        g_signal_connect(window, "hide", G_CALLBACK(on_hide), this);
        g_signal_connect(window, "event", G_CALLBACK(on_event), this);
        g_signal_connect_after(window, "draw", G_CALLBACK(on_draw), this);
    }
    ~held_back_t() { stop(false); }
    held_back_t(const held_back_t&) = delete;
    held_back_t& operator=(const held_back_t&) = delete;

    void ignore_held_keys()
    {
        m_held = get_held_keys();
        forget_presses(m_window, nullptr);
    }
    bool is_waiting() const { return m_source != 0; }
    void when_taken(std::function<void()> callback) { m_callbacks.push_back(std::move(callback)); }

private:
    static void on_show(GtkWidget*, gpointer data) { static_cast<held_back_t*>(data)->start(); }
    static void on_hide(GtkWidget*, gpointer data) { static_cast<held_back_t*>(data)->stop(false); }

    static gboolean on_event(GtkWidget*, GdkEvent* event, gpointer data)
    {
        auto* self = static_cast<held_back_t*>(data);
        if (event->type == GDK_FOCUS_CHANGE && !event->focus_change.in)
            self->m_held.clear(); // their releases may go elsewhere
        if (event->type == GDK_KEY_RELEASE)
            self->m_held.erase(event->key.hardware_keycode);
        if (event->type != GDK_KEY_PRESS || !self->holds_back(event->key))
            return FALSE;
        forget_user_request(); // it was meant for something else
        return TRUE;
    }

    static gboolean on_button_event(GtkWidget*, GdkEvent* event, gpointer)
    {
        switch (event->type) {
        case GDK_BUTTON_PRESS:
        case GDK_2BUTTON_PRESS:
        case GDK_3BUTTON_PRESS:
        case GDK_BUTTON_RELEASE:
        case GDK_TOUCH_BEGIN:
        case GDK_TOUCH_END:
            forget_user_request();
            return TRUE;
        default:
            return FALSE;
        }
    }

    static gboolean on_draw(GtkWidget*, cairo_t*, gpointer data)
    {
        auto* self = static_cast<held_back_t*>(data);
        if (self->is_waiting() && !std::exchange(self->m_painted, true))
            self->end_in(get_input_guard_times().wait);
        return FALSE;
    }

    static gboolean on_time(gpointer data)
    {
        auto* self = static_cast<held_back_t*>(data);
        const auto left = self->m_ends_at - input_time();
        if (left > 0)
            self->end_in(left); // the clock of a program that has one of its own
        else
            self->stop(true);
        return G_SOURCE_REMOVE;
    }

    // A button that is hidden forgets that it was pressed.
    static void forget_presses(GtkWidget* widget, gpointer)
    {
        if (GTK_IS_BUTTON(widget)) {
            if (gtk_widget_get_mapped(widget) && gtk_widget_get_state_flags(widget) & GTK_STATE_FLAG_ACTIVE) {
                gtk_widget_unmap(widget);
                gtk_widget_map(widget);
            }
        } else if (GTK_IS_CONTAINER(widget)) {
            gtk_container_forall(GTK_CONTAINER(widget), forget_presses, nullptr);
        }
    }

    static void add_button(GtkWidget* widget, gpointer data)
    {
        if (GTK_IS_BUTTON(widget))
            static_cast<held_back_t*>(data)->m_buttons.push_back(GTK_WIDGET(g_object_ref(widget)));
        else if (GTK_IS_CONTAINER(widget))
            gtk_container_forall(GTK_CONTAINER(widget), add_button, data);
    }

    bool holds_back(const GdkEventKey& event)
    {
        // Of a key that was held while another program had the keyboard, only the repeats are heard of.
        const bool held = is_repeated(m_held, event.hardware_keycode);
        if (held || is_waiting())
            m_held[event.hardware_keycode] = input_time();
        return held || is_waiting();
    }

    void end_in(std::int64_t milliseconds)
    {
        if (m_source)
            g_source_remove(m_source);
        m_ends_at = input_time() + milliseconds;
        m_source = g_timeout_add(static_cast<guint>(milliseconds), on_time, this);
    }

    void start()
    {
        stop(false);
        m_held = get_held_keys();
        const auto wait = get_input_guard_times().wait;
        if (take_user_request() || wait <= 0)
            return;
        m_painted = false;
        add_button(m_window, this);
        for (GtkWidget* button : m_buttons) {
            gtk_widget_set_opacity(button, pale);
            g_signal_connect(button, "event", G_CALLBACK(on_button_event), this);
        }
        end_in(wait + longest_until_painted);
    }

    void stop(bool tell)
    {
        if (m_source)
            g_source_remove(m_source);
        m_source = 0;
        for (GtkWidget* button : m_buttons) {
            g_signal_handlers_disconnect_by_data(button, this);
            gtk_widget_set_opacity(button, 1);
            g_object_unref(button);
        }
        m_buttons.clear();
        const auto callbacks = std::exchange(m_callbacks, {});
        if (tell)
            for (const auto& callback : callbacks)
                guarded(callback); // one that ends the window may end this
    }

    GtkWidget* m_window;
    std::vector<GtkWidget*> m_buttons; // while it waits
    held_keys_t m_held;                // since before it was shown
    guint m_source = 0;                // while it waits
    bool m_painted = false;
    std::int64_t m_ends_at = 0;
    std::vector<std::function<void()>> m_callbacks;
};

held_back_t* guard_of(wxTopLevelWindow* window)
{
    GtkWidget* widget = window ? window->GetHandle() : nullptr;
    return widget ? static_cast<held_back_t*>(g_object_get_data(G_OBJECT(widget), guard_key)) : nullptr;
}

void delete_guard(gpointer guard)
{
    delete static_cast<held_back_t*>(guard);
}

} // namespace

void guard_input(wxTopLevelWindow* window)
{
    follow_user_requests();
    if (window && window->GetHandle() && !guard_of(window))
        g_object_set_data_full(G_OBJECT(window->GetHandle()), guard_key, new held_back_t(window->GetHandle()),
                               delete_guard);
}

void ignore_held_keys(wxTopLevelWindow* window)
{
    if (held_back_t* guard = guard_of(window))
        guard->ignore_held_keys();
}

bool is_input_held_back(wxTopLevelWindow* window)
{
    const held_back_t* guard = guard_of(window);
    return guard && guard->is_waiting();
}

void when_input_is_taken(wxTopLevelWindow* window, std::function<void()> callback)
{
    held_back_t* guard = guard_of(window);
    if (guard && guard->is_waiting())
        guard->when_taken(std::move(callback));
    else
        callback();
}

} // namespace wx_helpers1
