#include "file_chooser_repairs.h"

namespace wx_helpers1 {
namespace {

// It stops reading and watching, whoever still holds it.
void end_of_files(gpointer files)
{
    g_object_run_dispose(G_OBJECT(files));
    g_object_unref(files);
}

// A list of files may outlive its chooser, and would go on following its folder, sorting by what the chooser
// knew and telling it about changes.
void forget_files(GtkWidget* widget, gpointer chooser)
{
    GtkEntryCompletion* names = GTK_IS_ENTRY(widget) ? gtk_entry_get_completion(GTK_ENTRY(widget)) : nullptr;
    gpointer listener = names ? widget : chooser;
    GtkTreeModel* files = names ? gtk_entry_completion_get_model(names) : nullptr;
    if (GTK_IS_TREE_VIEW(widget))
        files = gtk_tree_view_get_model(GTK_TREE_VIEW(widget));
    if (files) {
        g_signal_handlers_disconnect_matched(files, G_SIGNAL_MATCH_DATA, 0, 0, nullptr, nullptr, listener);
        g_object_set_data_full(G_OBJECT(names ? gpointer(names) : chooser), "commondlg3-files",
                               g_object_ref(files), end_of_files);
    }
    if (GTK_IS_CONTAINER(widget))
        gtk_container_forall(GTK_CONTAINER(widget), forget_files, chooser);
}

gboolean end_of_chooser(gpointer chooser)
{
    forget_files(static_cast<GtkWidget*>(chooser), chooser);
    gtk_widget_destroy(static_cast<GtkWidget*>(chooser));
    g_object_unref(chooser);
    return G_SOURCE_REMOVE;
}

// What has asked about files, and does not ask whether it is still there when it is answered, lives so long.
constexpr guint seconds_kept = 5;

gboolean end_of_button(gpointer button)
{
    g_object_unref(button);
    return G_SOURCE_REMOVE;
}

// The buttons of the folders above the one that is shown ask for their pictures, and make room at once for
// those of another folder; answered then, the toolkit ends the program.
void on_folder_left(GtkContainer*, GtkWidget* button, gpointer)
{
    g_timeout_add_seconds(seconds_kept, end_of_button, g_object_ref(button));
}

// A folder that is read to complete what is typed tells the field about it, also when that has turned to
// another or has gone; told then, the toolkit ends the program.
void follow_folder(GtkWidget* field, GtkTreeModel* folder)
{
    constexpr char key[] = "commondlg3-folder";
    gpointer last = g_object_get_data(G_OBJECT(field), key);
    if (last == folder)
        return;
    if (last)
        g_signal_handlers_disconnect_matched(last, G_SIGNAL_MATCH_DATA, 0, 0, nullptr, nullptr, field);
    g_object_set_data_full(G_OBJECT(field), key, folder ? g_object_ref(folder) : nullptr,
                           folder ? g_object_unref : nullptr);
}

void on_folder_to_complete(GtkEntryCompletion* names, GParamSpec*, gpointer field)
{
    follow_folder(GTK_WIDGET(field), gtk_entry_completion_get_model(names));
}

void on_field_left(GtkWidget* field, gpointer)
{
    follow_folder(field, nullptr);
}

// "Rename", pressed by Return, acts when the key is let go: on a file that nobody holds any more when the
// field for its name has gone meanwhile, as it does for a window that opens above.
void release_buttons(GtkWidget* widget, gpointer)
{
    if (GTK_IS_BUTTON(widget))
        gtk_widget_unrealize(widget);
    else if (GTK_IS_CONTAINER(widget))
        gtk_container_forall(GTK_CONTAINER(widget), release_buttons, nullptr);
}

void watch_question(GtkWidget* question)
{
    GtkWidget* over = gtk_popover_get_relative_to(GTK_POPOVER(question));
    if (over && gtk_widget_get_ancestor(over, GTK_TYPE_FILE_CHOOSER_WIDGET) &&
        !g_signal_handler_find(question, G_SIGNAL_MATCH_FUNC, 0, 0, nullptr, gpointer(release_buttons),
                               nullptr))
        g_signal_connect(question, "unmap", G_CALLBACK(release_buttons), nullptr);
}

// The field comes when somebody begins to type a path.
void watch_field(GtkWidget* field)
{
    GtkEntryCompletion* names = gtk_entry_get_completion(GTK_ENTRY(field));
    if (!names ||
        g_signal_handler_find(field, G_SIGNAL_MATCH_FUNC, 0, 0, nullptr, gpointer(on_field_left), nullptr))
        return;
    g_signal_connect_object(names, "notify::model", G_CALLBACK(on_folder_to_complete), field,
                            GConnectFlags(0));
    g_signal_connect(field, "destroy", G_CALLBACK(on_field_left), nullptr);
    on_folder_to_complete(names, nullptr, field);
}

gboolean on_shown(GSignalInvocationHint*, guint, const GValue* arguments, gpointer)
{
    auto* shown = static_cast<GtkWidget*>(g_value_get_object(&arguments[0]));
    if (GTK_IS_POPOVER(shown))
        watch_question(shown);
    else if (GTK_IS_ENTRY(shown) && g_strcmp0(G_OBJECT_TYPE_NAME(shown), "GtkFileChooserEntry") == 0)
        watch_field(shown);
    return TRUE;
}

constexpr char of_no_folder[] = "commondlg3-of-no-folder";

void on_other_files(GtkTreeView* list, GParamSpec*, GtkFileChooser* chooser)
{
    GFile* folder = gtk_file_chooser_get_current_folder_file(chooser);
    g_object_set_data(G_OBJECT(list), of_no_folder, folder ? nullptr : list);
    g_clear_object(&folder);
}

// The files that were found or used last stay in the list while a path is typed, and until a folder is read.
// The chooser takes them for that folder's: it would open another than the one that is clicked, or end the
// program.
gboolean on_list_event(GtkTreeView* list, GdkEvent*, GtkFileChooser* chooser)
{
    GFile* folder = g_object_get_data(G_OBJECT(list), of_no_folder)
                        ? gtk_file_chooser_get_current_folder_file(chooser)
                        : nullptr;
    if (folder) {
        gtk_tree_view_set_model(list, nullptr);
        g_object_unref(folder);
    }
    return FALSE;
}

void watch_folders(GtkWidget* widget, gpointer chooser)
{
    if (g_strcmp0(G_OBJECT_TYPE_NAME(widget), "GtkPathBar") == 0) {
        g_signal_connect(widget, "remove", G_CALLBACK(on_folder_left), nullptr);
    } else if (GTK_IS_TREE_VIEW(widget) && chooser) {
        g_signal_connect_object(widget, "notify::model", G_CALLBACK(on_other_files), chooser,
                                GConnectFlags(0));
        g_signal_connect_object(widget, "event", G_CALLBACK(on_list_event), chooser, GConnectFlags(0));
    } else if (GTK_IS_CONTAINER(widget)) {
        gpointer inside = GTK_IS_FILE_CHOOSER_WIDGET(widget) ? widget : chooser;
        gtk_container_forall(GTK_CONTAINER(widget), watch_folders, inside);
    }
}

// Lists that it has left for others, and that nothing leads to, are still answered what they have asked about
// their files, and call it: so the dialog goes without it, and it follows when that is over.
void keep_for_a_while(GtkWidget* widget, gpointer dialog)
{
    if (GTK_IS_FILE_CHOOSER_WIDGET(widget)) {
        g_object_ref(widget);
        g_signal_handlers_disconnect_matched(widget, G_SIGNAL_MATCH_DATA, 0, 0, nullptr, nullptr, dialog);
        gtk_container_remove(GTK_CONTAINER(gtk_widget_get_parent(widget)), widget);
        g_timeout_add_seconds(seconds_kept, end_of_chooser, widget);
    } else if (GTK_IS_CONTAINER(widget)) {
        gtk_container_forall(GTK_CONTAINER(widget), keep_for_a_while, dialog);
    }
}

void on_destroy(GtkWidget* dialog, gpointer)
{
    keep_for_a_while(dialog, dialog);
}

// Alt+R, the files that were used last: where a name is to be given, the chooser looks for its selected row in
// them before they are its list. There it offers them nowhere else.
void on_recent_files(GtkFileChooserWidget* chooser)
{
    const GtkFileChooserAction action = gtk_file_chooser_get_action(GTK_FILE_CHOOSER(chooser));
    if (action == GTK_FILE_CHOOSER_ACTION_OPEN || action == GTK_FILE_CHOOSER_ACTION_SELECT_FOLDER)
        g_signal_chain_from_overridden_handler(chooser);
}

void find_list(GtkWidget* widget, gpointer found)
{
    auto** list = static_cast<GtkTreeView**>(found);
    if (GTK_IS_TREE_VIEW(widget))
        *list = GTK_TREE_VIEW(widget);
    else if (GTK_IS_CONTAINER(widget) && !*list)
        gtk_container_forall(GTK_CONTAINER(widget), find_list, list);
}

// From the files that were found or used last, which are of no folder, back to one, until that is read: the
// chooser looks for the selected row of the list that is still seen in the one to come.
void empty_list_of_no_folder(GtkFileChooserWidget* chooser)
{
    if (GFile* folder = gtk_file_chooser_get_current_folder_file(GTK_FILE_CHOOSER(chooser))) {
        g_object_unref(folder);
        return;
    }
    GtkTreeView* list = nullptr;
    find_list(GTK_WIDGET(chooser), &list);
    if (list)
        gtk_tree_view_set_model(list, nullptr);
}

void on_location(GtkFileChooserWidget* chooser, const char* begun)
{
    empty_list_of_no_folder(chooser);
    g_signal_chain_from_overridden_handler(chooser, begun);
}

void on_location_toggled(GtkFileChooserWidget* chooser)
{
    empty_list_of_no_folder(chooser);
    g_signal_chain_from_overridden_handler(chooser);
}

void paste(GtkClipboard*, const gchar* text, gpointer kept)
{
    auto* chooser_or_null = static_cast<GWeakRef*>(kept);
    if (auto* chooser = static_cast<GtkWidget*>(g_weak_ref_get(chooser_or_null))) {
        const bool is_folder = text && g_str_has_prefix(text, "file:") &&
                               gtk_file_chooser_set_current_folder_uri(GTK_FILE_CHOOSER(chooser), text);
        if (text && !is_folder && gtk_widget_get_mapped(chooser))
            g_signal_emit_by_name(chooser, "location-popup", text);
        g_object_unref(chooser);
    }
    g_weak_ref_clear(chooser_or_null);
    g_free(chooser_or_null);
}

// Ctrl+V in the list of files: the chooser may have gone when another program gives its text at last.
void on_paste(GtkFileChooserWidget* chooser)
{
    auto* chooser_or_null = g_new0(GWeakRef, 1);
    g_weak_ref_init(chooser_or_null, chooser);
    gtk_clipboard_request_text(gtk_widget_get_clipboard(GTK_WIDGET(chooser), GDK_SELECTION_CLIPBOARD), paste,
                               chooser_or_null);
}

void replace_handler(const char* signal, GCallback handler)
{
    if (g_signal_lookup(signal, GTK_TYPE_FILE_CHOOSER_WIDGET) != 0)
        g_signal_override_class_handler(signal, GTK_TYPE_FILE_CHOOSER_WIDGET, handler);
}

} // namespace

void repair_file_chooser(GtkWidget* dialog)
{
    if (!GTK_IS_FILE_CHOOSER(dialog))
        return;
    if (g_signal_handler_find(dialog, G_SIGNAL_MATCH_FUNC, 0, 0, nullptr, gpointer(on_destroy), nullptr) ==
        0) {
        g_signal_connect(dialog, "destroy", G_CALLBACK(on_destroy), nullptr);
        watch_folders(dialog, nullptr);
    }
    // These for all choosers of the program.
    static bool repaired = false;
    if (repaired)
        return;
    repaired = true;
    g_signal_add_emission_hook(g_signal_lookup("map", GTK_TYPE_WIDGET), 0, on_shown, nullptr, nullptr);
    replace_handler("location-popup", G_CALLBACK(on_location));
    replace_handler("location-toggle-popup", G_CALLBACK(on_location_toggled));
    replace_handler("recent-shortcut", G_CALLBACK(on_recent_files));
    replace_handler("location-popup-on-paste", G_CALLBACK(on_paste));
}

} // namespace wx_helpers1
