#include "vdx/visual_element.h"

#include <wx_helpers1/clipboard.h>
#include <wx_helpers1/text.h>

#include <wx/clipbrd.h>
#include <wx/log.h>

#include <string>

namespace vdxcfrw7 {

bool CopyToClipboard(const CVisualElement& element)
{
    const std::string html = element.GetHTML();
    return html.empty() ? wx_helpers1::copy_to_clipboard(element.GetText())
                        : CopyToClipboard(element.GetText(), html);
}

bool CopyToClipboard(const std::string& text, const std::string& html)
{
    const wxLogNull silent;
    wxClipboardLocker lock(wxTheClipboard);
    if (!lock)
        return false;
    auto* data = new wxDataObjectComposite;
    data->Add(new wxTextDataObject(wx_helpers1::to_label(text)), true);
    data->Add(new wxHTMLDataObject(wx_helpers1::to_label(html)));
    return wxTheClipboard->SetData(data);
}

} // namespace vdxcfrw7
