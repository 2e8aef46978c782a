#include "wx_helpers1/list_cursor.h"

#include <wx/window.h>

#include <gtk/gtk.h>

namespace wx_helpers1 {

void move_cursor_to_selection(wxWindow* list)
{
    GtkWidget* widget = list ? static_cast<GtkWidget*>(list->GetHandle()) : nullptr;
    if (widget && !GTK_IS_TREE_VIEW(widget) && GTK_IS_BIN(widget))
        widget = gtk_bin_get_child(GTK_BIN(widget));
    if (!widget || !GTK_IS_TREE_VIEW(widget))
        return;
    GtkTreeModel* model = nullptr;
    GtkTreeIter row;
    if (!gtk_tree_selection_get_selected(gtk_tree_view_get_selection(GTK_TREE_VIEW(widget)), &model, &row))
        return;
    GtkTreePath* path = gtk_tree_model_get_path(model, &row);
    gtk_tree_view_set_cursor(GTK_TREE_VIEW(widget), path, nullptr, FALSE);
    gtk_tree_path_free(path);
}

} // namespace wx_helpers1
