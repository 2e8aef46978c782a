#include "wx_helpers1/tooltip.h"

#include "wx_helpers1/text.h"
#include "wx_helpers1/wrap_text.h"

#include <wx/window.h>

#include <gtk/gtk.h>

namespace wx_helpers1 {
namespace {

constexpr char delay_key[] = "wx_helpers1-tooltip-hide-delay";
constexpr char until_key[] = "wx_helpers1-tooltip-hide-at";

GtkWidget* widget_of(wxWindow* window)
{
    return window && window->GetHandle() ? GTK_WIDGET(window->GetHandle()) : nullptr;
}

gint64 stored(GtkWidget* widget, const char* key)
{
    return GPOINTER_TO_SIZE(g_object_get_data(G_OBJECT(widget), key));
}

void store(GtkWidget* widget, const char* key, gint64 value)
{
    g_object_set_data(G_OBJECT(widget), key, GSIZE_TO_POINTER(static_cast<gsize>(value)));
}

gboolean ask_again(gpointer widget)
{
    gtk_widget_trigger_tooltip_query(GTK_WIDGET(widget));
    return G_SOURCE_REMOVE;
}

// The toolkit asks before it shows a tool tip and again whenever told to: past its time the answer is no.
gboolean on_query(GtkWidget* widget, gint, gint, gboolean, GtkTooltip*, gpointer)
{
    const gint64 now = g_get_monotonic_time();
    const gint64 delay = stored(widget, delay_key) * 1000;
    if (delay == 0)
        return FALSE;
    const gint64 until = stored(widget, until_key);
    if (until == 0) {
        store(widget, until_key, now + delay);
        g_timeout_add_full(G_PRIORITY_DEFAULT, static_cast<guint>(delay / 1000 + 1), ask_again,
                           g_object_ref(widget), g_object_unref);
        return FALSE;
    }
    if (now < until)
        return FALSE;
    g_signal_stop_emission_by_name(widget, "query-tooltip");
    return FALSE;
}

gboolean on_leave(GtkWidget* widget, GdkEvent*, gpointer)
{
    store(widget, until_key, 0);
    return FALSE;
}

} // namespace

void SetTooltip(wxWindow* window, const std::string& text, int max_width, bool only_when_changed)
{
    if (!window)
        return;
    const wxString shown = to_label(max_width > 0 ? wrap_text(text, max_width, window) : text);
    if (only_when_changed && window->GetToolTipText() == shown)
        return;
    if (shown.empty())
        window->UnsetToolTip();
    else
        window->SetToolTip(shown);
}

void wxCustomTooltip::SetHideDelay(wxWindow* window, int milliseconds)
{
    GtkWidget* widget = widget_of(window);
    if (!widget)
        return;
    store(widget, delay_key, milliseconds > 0 ? milliseconds : 0);
    store(widget, until_key, 0);
    if (!g_signal_handler_find(widget, G_SIGNAL_MATCH_FUNC, 0, 0, nullptr,
                               reinterpret_cast<gpointer>(on_query), nullptr)) {
        g_signal_connect(widget, "query-tooltip", G_CALLBACK(on_query), nullptr);
        g_signal_connect(widget, "leave-notify-event", G_CALLBACK(on_leave), nullptr);
    }
}

int wxCustomTooltip::GetHideDelay(wxWindow* window)
{
    GtkWidget* widget = widget_of(window);
    return widget ? static_cast<int>(stored(widget, delay_key)) : 0;
}

} // namespace wx_helpers1
