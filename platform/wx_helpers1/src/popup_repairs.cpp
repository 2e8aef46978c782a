#include "popup_repairs.h"

#include <gtk/gtk.h>

namespace wx_helpers1 {
namespace {

gboolean hide(gpointer popover)
{
    auto* widget = static_cast<GtkWidget*>(popover);
    if (!gtk_widget_get_visible(widget) || gtk_widget_get_mapped(widget))
        return G_SOURCE_REMOVE; // it ended otherwise, or has come back
    gtk_widget_hide(widget);
    if (gtk_widget_has_grab(widget)) // it keeps it where it had not quite appeared
        gtk_grab_remove(widget);
    return G_SOURCE_REMOVE;
}

// Later: it may go while it is being shown, and some are destroyed when they hide.
gboolean on_gone(GSignalInvocationHint*, guint, const GValue* arguments, gpointer)
{
    auto* widget = static_cast<GtkWidget*>(g_value_get_object(&arguments[0]));
    if (GTK_IS_POPOVER(widget) && gtk_widget_get_visible(widget) && !gtk_widget_in_destruction(widget))
        g_idle_add_full(G_PRIORITY_DEFAULT, hide, g_object_ref(widget), g_object_unref);
    return TRUE;
}

gboolean on_button(GtkWidget*, GdkEventButton* event, gpointer)
{
    return gdk_event_triggers_context_menu(reinterpret_cast<GdkEvent*>(event));
}

gboolean on_menu_key(GtkWidget*, gpointer)
{
    return TRUE;
}

void on_emoji(GtkWidget* field, gpointer)
{
    g_signal_stop_emission_by_name(field, "insert-emoji");
}

void keep_emoji_out(GtkWidget* field)
{
    g_object_set(field, "input-hints", GTK_INPUT_HINT_NO_EMOJI, nullptr);
    if (g_signal_lookup("insert-emoji", GTK_TYPE_ENTRY) != 0)
        g_signal_connect(field, "insert-emoji", G_CALLBACK(on_emoji), nullptr);
}

void keep_plain(GtkWidget* widget, gpointer)
{
    if (GTK_IS_ENTRY(widget)) {
        if (g_signal_handler_find(widget, G_SIGNAL_MATCH_FUNC, 0, 0, nullptr, gpointer(on_menu_key), nullptr))
            return;
        g_signal_connect(widget, "button-press-event", G_CALLBACK(on_button), nullptr);
        g_signal_connect(widget, "popup-menu", G_CALLBACK(on_menu_key), nullptr);
        keep_emoji_out(widget);
    } else if (GTK_IS_CONTAINER(widget)) {
        gtk_container_forall(GTK_CONTAINER(widget), keep_plain, nullptr);
    }
}

// A click while another button is held opens a menu of a bar beside the one that is open. The toolkit, which
// tells screen readers of one selected entry at a time, may end the process at the next one.
gboolean on_press(GSignalInvocationHint*, guint, const GValue* arguments, gpointer)
{
    auto* bar = static_cast<GtkWidget*>(g_value_get_object(&arguments[0]));
    if (!GTK_IS_MENU_BAR(bar))
        return TRUE;
    GtkWidget* item = gtk_get_event_widget(static_cast<GdkEvent*>(g_value_get_boxed(&arguments[1])));
    while (item && gtk_widget_get_parent(item) != bar)
        item = gtk_widget_get_parent(item);
    const GtkWidget* selected = gtk_menu_shell_get_selected_item(GTK_MENU_SHELL(bar));
    if (item && selected && selected != item && gtk_widget_is_sensitive(item))
        gtk_menu_shell_select_item(GTK_MENU_SHELL(bar), item); // which ends the other
    return TRUE;
}

// Of all that pops up, only what a list shows for what is typed is a modal window.
gboolean on_popup(GSignalInvocationHint*, guint, const GValue* arguments, gpointer)
{
    auto* widget = static_cast<GtkWidget*>(g_value_get_object(&arguments[0]));
    if (GTK_IS_WINDOW(widget) && gtk_window_get_window_type(GTK_WINDOW(widget)) == GTK_WINDOW_POPUP &&
        gtk_window_get_modal(GTK_WINDOW(widget)))
        keep_plain(widget, nullptr);
    else if (GTK_IS_ENTRY(widget) && GTK_IS_TREE_VIEW(gtk_widget_get_parent(widget)))
        keep_emoji_out(widget); // the field of a row ends with its focus, which a chooser of emoji takes
    return TRUE;
}

// The button of a choice looks pressed until its menu hides.
void release(GtkWidget* part, gpointer)
{
    if (GTK_IS_TOGGLE_BUTTON(part))
        gtk_toggle_button_set_active(GTK_TOGGLE_BUTTON(part), FALSE);
    else if (GTK_IS_CONTAINER(part))
        gtk_container_forall(GTK_CONTAINER(part), release, nullptr);
}

bool looks_for_hidden_menus = false;

gboolean end_hidden_menus(gpointer)
{
    looks_for_hidden_menus = false;
    GtkWidget* grabbing = gtk_grab_get_current();
    if (!grabbing || gtk_widget_get_mapped(grabbing))
        return G_SOURCE_REMOVE;
    if (GTK_IS_MENU(grabbing))
        if (GtkWidget* from = gtk_menu_get_attach_widget(GTK_MENU(grabbing)); GTK_IS_COMBO_BOX(from))
            release(from, nullptr);
    // With the menu goes the bar that it was to come up from.
    for (; grabbing && GTK_IS_MENU_SHELL(grabbing); grabbing = gtk_grab_get_current()) {
        gtk_menu_shell_cancel(GTK_MENU_SHELL(grabbing));
        if (gtk_grab_get_current() == grabbing) // it was never begun
            gtk_grab_remove(grabbing);
    }
    return G_SOURCE_REMOVE;
}

// A menu that comes up, or should have, selects an item. At once: it would complain of the next event.
gboolean on_select(GSignalInvocationHint*, guint, const GValue*, gpointer)
{
    if (!looks_for_hidden_menus)
        g_idle_add_full(G_PRIORITY_HIGH, end_hidden_menus, nullptr, nullptr);
    looks_for_hidden_menus = true;
    return TRUE;
}

} // namespace

void repair_popups()
{
    static bool repaired = false;
    if (repaired)
        return;
    repaired = true;
    g_signal_add_emission_hook(g_signal_lookup("unmap", GTK_TYPE_WIDGET), 0, on_gone, nullptr, nullptr);
    g_signal_add_emission_hook(g_signal_lookup("map", GTK_TYPE_WIDGET), 0, on_popup, nullptr, nullptr);
    g_signal_add_emission_hook(g_signal_lookup("button-press-event", GTK_TYPE_WIDGET), 0, on_press, nullptr,
                               nullptr);
    g_type_class_ref(GTK_TYPE_MENU_ITEM); // its signals are there when it is
    g_signal_add_emission_hook(g_signal_lookup("select", GTK_TYPE_MENU_ITEM), 0, on_select, nullptr, nullptr);
}

} // namespace wx_helpers1
