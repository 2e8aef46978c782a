#include "more_renderer.h"

#include <gtk/gtk-a11y.h>

#include <memory>

namespace vdxpropgrid2 {
namespace {

void init_class(gpointer table, gpointer)
{
    static GtkCellRendererClass* const parent = GTK_CELL_RENDERER_CLASS(g_type_class_peek_parent(table));
    GtkCellRendererClass* own = GTK_CELL_RENDERER_CLASS(table);
    gtk_cell_renderer_class_set_accessible_type(own, GTK_TYPE_TEXT_CELL_ACCESSIBLE);
    own->render = [](GtkCellRenderer* cell, cairo_t* cr, GtkWidget* widget, const GdkRectangle* background,
                     const GdkRectangle* area, GtkCellRendererState state) {
        gchar* text = nullptr;
        g_object_get(cell, "text", &text, nullptr);
        const std::unique_ptr<gchar, decltype(&g_free)> kept(text, g_free);
        g_object_set(cell, "text", "…", nullptr);
        parent->render(cell, cr, widget, background, area, state);
        g_object_set(cell, "text", text, nullptr);
    };
}

} // namespace

// The toolkit has made the renderer: it gets a class derived from its own, of the same size.
void draw_dots(GtkCellRenderer* renderer)
{
    static const GType base = G_OBJECT_TYPE(renderer);
    static const GType type = [] {
        GTypeQuery query;
        g_type_query(base, &query);
        return g_type_register_static_simple(base, "VdxMoreRenderer", query.class_size, init_class,
                                             query.instance_size, nullptr, static_cast<GTypeFlags>(0));
    }();
    if (G_OBJECT_TYPE(renderer) == base)
        reinterpret_cast<GTypeInstance*>(renderer)->g_class =
            static_cast<GTypeClass*>(g_type_class_ref(type));
}

} // namespace vdxpropgrid2
