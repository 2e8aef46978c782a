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
    // The toolkit would not answer those who ask it for an empty text.
    if (text.empty()) {
        gtk_clipboard_set_text(gtk_clipboard_get(GDK_SELECTION_CLIPBOARD), "", 0);
        return true;
    }
    return wxTheClipboard->SetData(new wxTextDataObject(to_label(text)));
}

} // namespace wx_helpers1
