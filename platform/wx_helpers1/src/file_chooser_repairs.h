/// What the toolkit's chooser of files does wrong, and would end the program by.
#pragma once

#include <gtk/gtk.h>

namespace wx_helpers1 {

/// Before one is shown; does nothing to another dialog.
void repair_file_chooser(GtkWidget* dialog);

} // namespace wx_helpers1
