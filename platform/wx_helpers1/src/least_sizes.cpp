#include "least_sizes.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace wx_helpers1 {
namespace {

// What stands in front of a class's own functions; the classes derived from it chain up to it as before.
template <std::size_t Number>
struct guard_t
{
    static void allocate(GtkWidget* widget, GtkAllocation* given)
    {
        int width = 0, height = 0;
        gtk_widget_get_preferred_width(widget, &width, nullptr);
        gtk_widget_get_preferred_height(widget, &height, nullptr);
        GtkAllocation enough = *given;
        enough.width = std::max(enough.width, width);
        enough.height = std::max(enough.height, height);
        own_allocate(widget, &enough);
    }

    static void height_for_width(GtkWidget* widget, gint width, gint* least, gint* natural)
    {
        int needed = 0;
        gtk_widget_get_preferred_width(widget, &needed, nullptr);
        own_height_for_width(widget, std::max(width, needed), least, natural);
    }

    static void width_for_height(GtkWidget* widget, gint height, gint* least, gint* natural)
    {
        int needed = 0;
        gtk_widget_get_preferred_height(widget, &needed, nullptr);
        own_width_for_height(widget, std::max(height, needed), least, natural);
    }

    static void put_before(GType type)
    {
        auto* widgets = static_cast<GtkWidgetClass*>(g_type_class_ref(type)); // kept
        own_allocate = std::exchange(widgets->size_allocate, allocate);
        own_height_for_width = std::exchange(widgets->get_preferred_height_for_width, height_for_width);
        own_width_for_height = std::exchange(widgets->get_preferred_width_for_height, width_for_height);
    }

    static inline decltype(GtkWidgetClass::size_allocate) own_allocate = nullptr;
    static inline decltype(GtkWidgetClass::get_preferred_height_for_width) own_height_for_width = nullptr;
    static inline decltype(GtkWidgetClass::get_preferred_width_for_height) own_width_for_height = nullptr;
};

template <std::size_t... Numbers>
void put_guards_before(const std::array<GType, sizeof...(Numbers)>& types, std::index_sequence<Numbers...>)
{
    (guard_t<Numbers>::put_before(types[Numbers]), ...);
}

} // namespace

void keep_least_sizes()
{
    if (guard_t<0>::own_allocate)
        return;
    // Not buttons and entries: the toolkit gives them too little room at large fonts, and squeezed they are still
    // whole, where a button in its least size was cut off.
    const std::array<GType, 6> types = {GTK_TYPE_SCROLLBAR,   GTK_TYPE_CHECK_BUTTON, GTK_TYPE_RADIO_BUTTON,
                                        GTK_TYPE_SPIN_BUTTON, GTK_TYPE_NOTEBOOK,     GTK_TYPE_MENU_BAR};
    put_guards_before(types, std::make_index_sequence<types.size()>());
}

} // namespace wx_helpers1
