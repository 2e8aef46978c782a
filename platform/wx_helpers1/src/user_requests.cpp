#include "user_requests.h"

#include "wx_helpers1/input_guard.h"

#include <gtk/gtk.h>

#include <optional>
#include <utility>

namespace wx_helpers1 {
namespace {

// Longer than any keyboard waits before a held key repeats.
constexpr std::int64_t longest_repeat_delay = 1500;

struct user_requests_t
{
    input_guard_times_t times;
    std::optional<std::int64_t> asked_at;
    held_keys_t held;
    bool following = false;
};

user_requests_t& requests()
{
    static auto& all = *new user_requests_t; // events come until the toolkit is gone
    return all;
}

bool is_typed(GtkWidget* toplevel, const GdkEventKey& event)
{
    GtkWidget* focus = GTK_IS_WINDOW(toplevel) ? gtk_window_get_focus(GTK_WINDOW(toplevel)) : nullptr;
    const bool many_lines = GTK_IS_TEXT_VIEW(focus) && gtk_text_view_get_editable(GTK_TEXT_VIEW(focus));
    if (!many_lines && !(GTK_IS_ENTRY(focus) && gtk_editable_get_editable(GTK_EDITABLE(focus))))
        return false;
    if (event.state & (GDK_CONTROL_MASK | GDK_MOD1_MASK | GDK_SUPER_MASK))
        return false;
    switch (event.keyval) {
    case GDK_KEY_Escape:
        return false;
    case GDK_KEY_Return:
    case GDK_KEY_KP_Enter:
    case GDK_KEY_Tab:
        return many_lines;
    default:
        return event.keyval < GDK_KEY_F1 || event.keyval > GDK_KEY_F35;
    }
}

void note_key(GtkWidget* widget, const GdkEventKey& event)
{
    user_requests_t& all = requests();
    const unsigned key = event.hardware_keycode;
    if (event.type == GDK_KEY_RELEASE) {
        all.held.erase(key);
        return;
    }
    const bool asks = !is_repeated(all.held, key) && !event.is_modifier &&
                      !is_typed(gtk_widget_get_toplevel(widget), event);
    all.held[key] = input_time();
    if (asks)
        all.asked_at = input_time();
}

gboolean on_any_event(GSignalInvocationHint*, guint, const GValue* values, gpointer)
{
    const auto* event = static_cast<const GdkEvent*>(g_value_get_boxed(values + 1));
    switch (event->type) {
    case GDK_KEY_PRESS:
    case GDK_KEY_RELEASE:
        // An event comes to its window first and then to what has the focus there.
        if (auto* widget = static_cast<GtkWidget*>(g_value_get_object(values)); GTK_IS_WINDOW(widget))
            note_key(widget, event->key);
        break;
    case GDK_BUTTON_PRESS:
    case GDK_BUTTON_RELEASE:
    case GDK_TOUCH_BEGIN:
    case GDK_TOUCH_END:
        note_user_request();
        break;
    case GDK_FOCUS_CHANGE:
        if (!event->focus_change.in)
            requests().held.clear(); // another program may get their releases
        break;
    default:
        break;
    }
    return TRUE;
}

} // namespace

void set_input_guard_times(const input_guard_times_t& times)
{
    requests() = {times, {}, {}, requests().following};
}

const input_guard_times_t& get_input_guard_times()
{
    return requests().times;
}

std::int64_t input_time()
{
    const auto& now = requests().times.now;
    return now ? now() : g_get_monotonic_time() / 1000;
}

void follow_user_requests()
{
    if (std::exchange(requests().following, true))
        return;
    g_type_class_unref(g_type_class_ref(GTK_TYPE_WIDGET)); // its signals exist from then on
    g_signal_add_emission_hook(g_signal_lookup("event", GTK_TYPE_WIDGET), 0, on_any_event, nullptr, nullptr);
}

void note_user_request()
{
    requests().asked_at = input_time();
}

void forget_user_request()
{
    requests().asked_at.reset();
}

bool take_user_request()
{
    const auto asked_at = std::exchange(requests().asked_at, std::nullopt);
    return asked_at && input_time() - *asked_at <= requests().times.asked_within;
}

const held_keys_t& get_held_keys()
{
    return requests().held;
}

bool is_repeated(const held_keys_t& held, unsigned key)
{
    const auto found = held.find(key);
    return found != held.end() && input_time() - found->second < longest_repeat_delay;
}

} // namespace wx_helpers1
