#include "field_message.h"

#include "commondlg3/text_utils.h"
#include "severity.h"

#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/static_picture_ctrl.h>

#include <wx/stattext.h>
#include <wx/textentry.h>

namespace commondlg3 {

field_message_t::field_message_t(wx_helpers1::static_picture_ctrl_t* icon, wxStaticText* label,
                                 wxWindow* field)
    : m_icon(icon), m_label(label), m_field(field)
{
    if (m_icon)
        m_icon->Hide();
    if (m_label)
        m_label->Hide();
    wx_helpers1::set_described_by(m_field, m_label);
}

bool field_message_t::say(caption_panel_t::severity_t severity, const std::string& text)
{
    if (!m_icon || !m_label || !m_field)
        return false;
    std::string line;
    if (!text.empty())
        line = translate_message("caption.message", {{"severity", severity_name(severity)}, {"text", text}});
    wx_helpers1::set_accessible_description(m_field, line);
    if (line == m_line)
        return false;
    m_line = line;
    m_icon->set_picture(caption_panel_t::get_picture(severity));
    wx_helpers1::set_label_text(m_label, line);
    m_icon->Show(!text.empty());
    m_label->Show(!text.empty());
    // A page that opens is read as a whole, and of a text that has the focus readers say the description
    // themselves; in a list it is the entry that has it for them.
    const bool is_said = m_field->HasFocus() && dynamic_cast<wxTextEntry*>(m_field);
    if (m_field->IsShownOnScreen() && !is_said)
        wx_helpers1::announce(m_field, line);
    return true;
}

} // namespace commondlg3
