#include "wx_helpers1/layout_direction.h"

#include <gtk/gtk.h>

namespace wx_helpers1 {

void set_right_to_left(bool right_to_left)
{
    gtk_widget_set_default_direction(right_to_left ? GTK_TEXT_DIR_RTL : GTK_TEXT_DIR_LTR);
}

} // namespace wx_helpers1
