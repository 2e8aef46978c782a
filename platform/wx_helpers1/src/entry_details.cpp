#include "wx_helpers1/entry_details.h"

#include <wx/listbox.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <utility>

namespace wx_helpers1 {
namespace {

constexpr char details_name[] = "commondlg3-entry-details";
constexpr int icon_size = 16;
constexpr int largest_scale = 3;

using details_t = std::vector<entry_detail_t>;

struct shown_details_t
{
    details_t details;
};

const entry_detail_t* detail_of(GtkTreeModel* model, GtkTreeIter* row, gpointer data)
{
    const auto& details = static_cast<shown_details_t*>(data)->details;
    GtkTreePath* path = gtk_tree_model_get_path(model, row);
    const int index = path ? gtk_tree_path_get_indices(path)[0] : -1;
    gtk_tree_path_free(path);
    return index >= 0 && static_cast<std::size_t>(index) < details.size()
               ? &details[static_cast<std::size_t>(index)]
               : nullptr;
}

void show_icon(GtkTreeViewColumn*, GtkCellRenderer* cell, GtkTreeModel* model, GtkTreeIter* row,
               gpointer data)
{
    const entry_detail_t* detail = detail_of(model, row, data);
    GIcon* icon = nullptr;
    if (detail && detail->icon.pixels) {
        icon = G_ICON(g_object_ref(detail->icon.pixels.get()));
    } else if (detail) {
        // Of several names the theme prefers its own to one of the application's: it is asked for one alone.
        const std::string& own = detail->icon.name;
        const bool has_own =
            !own.empty() && gtk_icon_theme_has_icon(gtk_icon_theme_get_default(), own.c_str());
        const std::string& name = has_own ? own : detail->icon.fallback;
        icon = name.empty() ? nullptr : g_themed_icon_new(name.c_str());
    }
    g_object_set(cell, "gicon", icon, nullptr);
    if (icon)
        g_object_unref(icon);
}

void show_state(GtkTreeViewColumn*, GtkCellRenderer* cell, GtkTreeModel* model, GtkTreeIter* row,
                gpointer data)
{
    const entry_detail_t* detail = detail_of(model, row, data);
    g_object_set(cell, "text", detail ? detail->state.c_str() : "", nullptr);
}

void show_place(GtkTreeViewColumn*, GtkCellRenderer* cell, GtkTreeModel* model, GtkTreeIter* row,
                gpointer data)
{
    const entry_detail_t* detail = detail_of(model, row, data);
    g_object_set(cell, "text", detail ? detail->place.c_str() : "", nullptr);
}

void add_columns(GtkTreeView* tree, shown_details_t* shown)
{
    GtkTreeViewColumn* entries = gtk_tree_view_get_column(tree, 0);
    GtkCellRenderer* icon = gtk_cell_renderer_pixbuf_new();
    gtk_cell_renderer_set_fixed_size(icon, icon_size + icon_size / 2, icon_size);
    gtk_cell_layout_pack_start(GTK_CELL_LAYOUT(entries), icon, FALSE);
    gtk_cell_layout_reorder(GTK_CELL_LAYOUT(entries), icon, 0);
    gtk_tree_view_column_set_cell_data_func(entries, icon, show_icon, shown, nullptr);
    for (const auto show : {show_state, show_place}) {
        GtkCellRenderer* text = gtk_cell_renderer_text_new();
        GtkTreeViewColumn* column = gtk_tree_view_column_new();
        if (show == show_place) {
            g_object_set(text, "ellipsize", PANGO_ELLIPSIZE_MIDDLE, nullptr);
            gtk_tree_view_column_set_expand(column, TRUE);
        }
        gtk_tree_view_column_pack_start(column, text, TRUE);
        gtk_tree_view_column_set_cell_data_func(column, text, show, shown, nullptr);
        gtk_tree_view_append_column(tree, column);
    }
}

gboolean tell_changed(GtkTreeModel* model, GtkTreePath* path, GtkTreeIter* row, gpointer)
{
    gtk_tree_model_row_changed(model, path, row);
    return FALSE;
}

} // namespace

entry_icon_t load_entry_icon(const std::string& icon, const std::string& fallback)
{
    if (icon.empty() || icon.front() != '/')
        return {icon, fallback, nullptr};
    const int pixels = icon_size * largest_scale;
    GdkPixbuf* read = gdk_pixbuf_new_from_file_at_size(icon.c_str(), pixels, pixels, nullptr);
    return {std::string(), fallback, std::shared_ptr<void>(read, [](void* object) {
                if (object)
                    g_object_unref(object);
            })};
}

void set_entry_details(wxListBox* list, std::vector<entry_detail_t> details)
{
    GtkWidget* child = list && list->GetHandle() ? gtk_bin_get_child(GTK_BIN(list->GetHandle())) : nullptr;
    if (!child || !GTK_IS_TREE_VIEW(child))
        return;
    auto* shown = static_cast<shown_details_t*>(g_object_get_data(G_OBJECT(child), details_name));
    if (!shown) {
        shown = new shown_details_t;
        g_object_set_data_full(G_OBJECT(child), details_name, shown,
                               [](gpointer data) { delete static_cast<shown_details_t*>(data); });
        add_columns(GTK_TREE_VIEW(child), shown);
    }
    const bool is_same = std::equal(shown->details.begin(), shown->details.end(), details.begin(),
                                    details.end(), [](const entry_detail_t& a, const entry_detail_t& b) {
                                        return a.state == b.state && a.place == b.place &&
                                               a.icon.name == b.icon.name && a.icon.pixels == b.icon.pixels;
                                    });
    shown->details = std::move(details);
    if (is_same)
        return;
    gtk_tree_model_foreach(gtk_tree_view_get_model(GTK_TREE_VIEW(child)), tell_changed, nullptr);
}

} // namespace wx_helpers1
