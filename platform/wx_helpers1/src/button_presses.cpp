#include "button_presses.h"

#include <gtk/gtk.h>

#include <utility>

namespace wx_helpers1 {
namespace {

decltype(GtkWidgetClass::unmap) own_unmap = nullptr;

void unmap(GtkWidget* button)
{
    own_unmap(button);
    // The one way to make it forget; it is realized again when it is shown.
    if (gtk_widget_get_state_flags(button) & GTK_STATE_FLAG_ACTIVE)
        gtk_widget_unrealize(button);
}

} // namespace

void forget_presses_of_hidden_buttons()
{
    if (own_unmap)
        return;
    auto* buttons = static_cast<GtkWidgetClass*>(g_type_class_ref(GTK_TYPE_BUTTON)); // kept
    own_unmap = std::exchange(buttons->unmap, unmap);
}

} // namespace wx_helpers1
