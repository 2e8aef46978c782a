#include "least_sizes.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <map>

namespace wx_helpers1 {
namespace {

// What a class did itself.
struct original_t
{
    decltype(GtkWidgetClass::size_allocate) allocate;
    decltype(GtkWidgetClass::get_preferred_height_for_width) height_for_width;
    decltype(GtkWidgetClass::get_preferred_width_for_height) width_for_height;
};

std::map<const GtkWidgetClass*, original_t>& originals()
{
    static auto& all = *new std::map<const GtkWidgetClass*, original_t>;
    return all;
}

// A class made since has a copy of its parent's functions, and is not in the table itself.
const original_t& original_of(GtkWidget* widget)
{
    gpointer at = GTK_WIDGET_GET_CLASS(widget);
    while (originals().count(static_cast<GtkWidgetClass*>(at)) == 0)
        at = g_type_class_peek_parent(at);
    return originals()[static_cast<GtkWidgetClass*>(at)];
}

void allocate(GtkWidget* widget, GtkAllocation* given)
{
    int width = 0, height = 0;
    gtk_widget_get_preferred_width(widget, &width, nullptr);
    gtk_widget_get_preferred_height(widget, &height, nullptr);
    GtkAllocation enough = *given;
    enough.width = std::max(enough.width, width);
    enough.height = std::max(enough.height, height);
    original_of(widget).allocate(widget, &enough);
}

void height_for_width(GtkWidget* widget, gint width, gint* least, gint* natural)
{
    int needed = 0;
    gtk_widget_get_preferred_width(widget, &needed, nullptr);
    original_of(widget).height_for_width(widget, std::max(width, needed), least, natural);
}

void width_for_height(GtkWidget* widget, gint height, gint* least, gint* natural)
{
    int needed = 0;
    gtk_widget_get_preferred_height(widget, &needed, nullptr);
    original_of(widget).width_for_height(widget, std::max(height, needed), least, natural);
}

} // namespace

void keep_least_sizes()
{
    for (const GType type : {GTK_TYPE_SCROLLBAR, GTK_TYPE_CHECK_BUTTON, GTK_TYPE_RADIO_BUTTON,
                             GTK_TYPE_SPIN_BUTTON, GTK_TYPE_NOTEBOOK, GTK_TYPE_MENU_BAR}) {
        auto* widgets = static_cast<GtkWidgetClass*>(g_type_class_ref(type)); // kept
        if (widgets->size_allocate == allocate)
            continue;
        originals()[widgets] = {widgets->size_allocate, widgets->get_preferred_height_for_width,
                                widgets->get_preferred_width_for_height};
        widgets->size_allocate = allocate;
        widgets->get_preferred_height_for_width = height_for_width;
        widgets->get_preferred_width_for_height = width_for_height;
    }
}

} // namespace wx_helpers1
