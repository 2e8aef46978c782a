#pragma once

#include "commondlg3/caption_panel.h"

#include <string>

class wxStaticText;

namespace commondlg3 {

/// What is wrong with one control, said on a line of its own below it: a picture, a word and a sentence.
///
///     m_trouble = std::make_unique<field_message_t>(from_xrc<static_picture_ctrl_t>(this, "m_icon"),
///                                                   from_xrc<wxStaticText>(this, "m_note"), m_field);
///     ...
///     if (m_trouble->say(caption_panel_t::severity_t::error, text))
///         rewrap();                                   // with m_trouble->get_label() among the labels
///
/// Screen readers say the line after the control's name, and at once when it changes: the last of what is
/// set when a control's verdict changes. The windows belong to the page. Without one of them nothing is
/// shown. GUI thread.
class field_message_t
{
public:
    field_message_t(wx_helpers1::static_picture_ctrl_t* icon, wxStaticText* label, wxWindow* field);

    /// An empty text hides the line. @return whether anything changed
    bool say(caption_panel_t::severity_t severity, const std::string& text);
    wxStaticText* get_label() const { return m_label; }

private:
    wx_helpers1::static_picture_ctrl_t* m_icon;
    wxStaticText* m_label;
    wxWindow* m_field;
    std::string m_line;
};

} // namespace commondlg3
