#include "accessible_focus.h"

#include <gtk/gtk.h>

namespace wx_helpers1 {
namespace {

// The toolkit tells of the focus when it is idle, and by then has told that the caret moved, as all of the
// field was selected: a reader takes the field for one that it has named already. What is told once is not
// told again.
gboolean on_focus_in(GSignalInvocationHint*, guint, const GValue* values, gpointer)
{
    auto* widget = static_cast<GtkWidget*>(g_value_get_object(values));
    if (GTK_IS_ENTRY(widget) || GTK_IS_TEXT_VIEW(widget)) {
        G_GNUC_BEGIN_IGNORE_DEPRECATIONS
        atk_focus_tracker_notify(gtk_widget_get_accessible(widget));
        G_GNUC_END_IGNORE_DEPRECATIONS
    }
    return TRUE; // to be called again
}

} // namespace

void tell_focus_of_fields_at_once()
{
    static const gulong hook = [] {
        gpointer widgets = g_type_class_ref(GTK_TYPE_WIDGET); // which has the signal
        return g_signal_add_emission_hook(g_signal_lookup("focus-in-event", G_TYPE_FROM_CLASS(widgets)), 0,
                                          on_focus_in, nullptr, nullptr);
    }();
    static_cast<void>(hook);
}

} // namespace wx_helpers1
