#include "wx_helpers1/clipboard.h"

#include "wx_helpers1/text.h"

#include <wx/clipbrd.h>
#include <wx/log.h>

namespace wx_helpers1 {

bool copy_to_clipboard(const std::string& text)
{
    const wxLogNull silent;
    wxClipboardLocker lock(wxTheClipboard);
    return !!lock && wxTheClipboard->SetData(new wxTextDataObject(to_label(text)));
}

} // namespace wx_helpers1
