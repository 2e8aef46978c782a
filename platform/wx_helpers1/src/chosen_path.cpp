#include "wx_helpers1/chosen_path.h"
#include "wx_helpers1/text.h"

#include <wx/filedlg.h>

#include <gtk/gtk.h>

namespace wx_helpers1 {

std::string get_chosen_path(const wxFileDialog& dialog)
{
    const wxString path = dialog.GetPath();
    if (!path.empty() || !dialog.GetHandle() || !GTK_IS_FILE_CHOOSER(dialog.GetHandle()))
        return from_wx(path);
    gchar* chosen = gtk_file_chooser_get_filename(GTK_FILE_CHOOSER(dialog.GetHandle()));
    const std::string bytes = chosen ? chosen : "";
    g_free(chosen);
    return bytes;
}

} // namespace wx_helpers1
