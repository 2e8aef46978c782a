#include "wx_helpers1/clipboard.h"

#include "wx_helpers1/text.h"

#include <wx/clipbrd.h>
#include <wx/log.h>

#include <gtk/gtk.h>

namespace wx_helpers1 {

bool copy_to_clipboard(const std::string& text)
{
    const wxLogNull silent;
    wxClipboardLocker lock(wxTheClipboard);
    if (!lock)
        return false;
    // wxClipboard would not answer those who ask it for an empty text, and loses what it could not become the
    // owner of.
    const std::string shown = to_label(text).utf8_string();
    gtk_clipboard_set_text(gtk_clipboard_get(GDK_SELECTION_CLIPBOARD), shown.data(),
                           static_cast<int>(shown.length()));
    return true;
}

} // namespace wx_helpers1
