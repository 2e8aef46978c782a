#include "cell_editor.h"

#include <gtk/gtk.h>

#include <cstdlib>
#include <utility>

namespace vdxpropgrid2 {

struct cell_editor_t::handlers_t
{
    static void started(GtkCellRenderer*, GtkCellEditable* editable, const char*, cell_editor_t* self)
    {
        self->adopt(editable);
    }

    static void edited(GtkCellRenderer*, const char* path, const char* text, cell_editor_t* self)
    {
        if (self->on_edited)
            self->on_edited(std::atoi(path), text);
    }

    static void changed(GtkEditable*, cell_editor_t* self)
    {
        if (self->on_typed)
            self->on_typed();
    }

    static void removed(GtkCellEditable*, cell_editor_t* self) { self->forget(); }

    // The toolkit would cancel; its own handler comes after this one.
    static gboolean lost_focus(GtkWidget*, GdkEvent*, cell_editor_t* self)
    {
        if (!self->m_menu_is_open)
            self->commit();
        return FALSE;
    }

    static void menu_opens(GtkEntry*, GtkWidget* menu, cell_editor_t* self)
    {
        self->m_menu_is_open = true;
        // The toolkit would look for the entry half a second after the menu has closed, whether it is there or not;
        // what becomes of it is decided by its focus here.
        g_signal_handlers_disconnect_by_data(menu, self->m_renderer);
        // By the entry, which may be gone before its menu.
        g_signal_connect_object(menu, "unmap", G_CALLBACK(menu_closed), self->m_entry, G_CONNECT_SWAPPED);
    }

    static void menu_closed(GObject* entry)
    {
        if (auto* self = static_cast<cell_editor_t*>(g_object_get_data(entry, "vdxpropgrid2-editor")))
            self->m_menu_is_open = false;
    }

    static void paste(GtkEntry* entry, cell_editor_t* self)
    {
        g_signal_stop_emission_by_name(entry, "paste-clipboard");
        if (self->on_paste)
            self->on_paste();
    }
};

cell_editor_t::cell_editor_t(GtkTreeView* tree, GtkTreeViewColumn* column, GtkCellRenderer* renderer)
    : m_tree(tree), m_column(column), m_renderer(renderer)
{
    g_object_ref(m_renderer);
    g_object_set(m_renderer, "editable", FALSE, nullptr);
    g_signal_connect(m_renderer, "editing-started", G_CALLBACK(handlers_t::started), this);
    g_signal_connect(m_renderer, "edited", G_CALLBACK(handlers_t::edited), this);
}

cell_editor_t::~cell_editor_t()
{
    forget();
    g_signal_handlers_disconnect_by_data(m_renderer, this);
    g_object_unref(m_renderer);
}

void cell_editor_t::start(int row, const std::string& text, const std::string& typed)
{
    commit();
    m_text = text;
    GtkTreePath* path = gtk_tree_path_new_from_indices(row, -1);
    g_object_set(m_renderer, "editable", TRUE, nullptr);
    gtk_widget_grab_focus(GTK_WIDGET(m_tree));
    gtk_tree_view_set_cursor_on_cell(m_tree, path, m_column, m_renderer, TRUE);
    gtk_tree_path_free(path);
    if (!m_entry)
        g_object_set(m_renderer, "editable", FALSE, nullptr);
    else if (!typed.empty()) {
        gtk_entry_set_text(GTK_ENTRY(m_entry), typed.c_str());
        gtk_editable_set_position(GTK_EDITABLE(m_entry), -1);
    }
}

void cell_editor_t::adopt(void* editable)
{
    forget();
    if (!GTK_IS_ENTRY(editable))
        return;
    m_entry = g_object_ref(editable); // the toolkit may destroy it without having ended the editing
    m_menu_is_open = false;
    gtk_entry_set_text(GTK_ENTRY(m_entry), m_text.c_str());
    atk_object_set_name(gtk_widget_get_accessible(GTK_WIDGET(m_entry)), m_name.c_str());
    gtk_editable_select_region(GTK_EDITABLE(m_entry), 0, -1);
    g_object_set_data(G_OBJECT(m_entry), "vdxpropgrid2-editor", this);
    g_signal_connect(m_entry, "changed", G_CALLBACK(handlers_t::changed), this);
    g_signal_connect(m_entry, "remove-widget", G_CALLBACK(handlers_t::removed), this);
    g_signal_connect(m_entry, "destroy", G_CALLBACK(handlers_t::removed), this);
    g_signal_connect(m_entry, "focus-out-event", G_CALLBACK(handlers_t::lost_focus), this);
    g_signal_connect(m_entry, "populate-popup", G_CALLBACK(handlers_t::menu_opens), this);
    g_signal_connect(m_entry, "paste-clipboard", G_CALLBACK(handlers_t::paste), this);
}

void cell_editor_t::forget()
{
    if (!m_entry)
        return;
    g_signal_handlers_disconnect_by_data(m_entry, this);
    g_object_set_data(G_OBJECT(m_entry), "vdxpropgrid2-editor", nullptr);
    g_object_unref(std::exchange(m_entry, nullptr));
    g_object_set(m_renderer, "editable", FALSE, nullptr);
    if (on_finished)
        on_finished();
}

bool cell_editor_t::is_changed() const
{
    return m_entry && m_text != gtk_entry_get_text(GTK_ENTRY(m_entry));
}

bool cell_editor_t::commit()
{
    if (!m_entry)
        return false;
    auto* editable = GTK_CELL_EDITABLE(g_object_ref(m_entry));
    gtk_cell_editable_editing_done(editable);
    gtk_cell_editable_remove_widget(editable);
    g_object_unref(editable);
    return true;
}

bool cell_editor_t::cancel()
{
    if (!m_entry)
        return false;
    g_object_set(m_entry, "editing-canceled", TRUE, nullptr);
    return commit();
}

void cell_editor_t::insert(const std::string& text)
{
    if (!m_entry)
        return;
    gtk_editable_delete_selection(GTK_EDITABLE(m_entry));
    int at = gtk_editable_get_position(GTK_EDITABLE(m_entry));
    gtk_editable_insert_text(GTK_EDITABLE(m_entry), text.c_str(), static_cast<int>(text.size()), &at);
    gtk_editable_set_position(GTK_EDITABLE(m_entry), at);
}

} // namespace vdxpropgrid2
