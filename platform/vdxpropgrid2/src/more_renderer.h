#pragma once

#include <gtk/gtk.h>

namespace vdxpropgrid2 {

/// Has a renderer of texts draw three dots instead of its text, which screen readers go on reading.
void draw_dots(GtkCellRenderer* renderer);

} // namespace vdxpropgrid2
