#pragma once

#include <wx/textctrl.h>

#include <string>

namespace commondlg3 {

/// Whether a label would take noticeably long for this text: it measures all of it at once, and a line
/// without a blank again and again. Any thread.
bool is_long_text(const std::string& text);

/// The texts of a message that is too long for labels: read only, selectable, and measured as far as it is
/// seen.
class long_text_t : public wxTextCtrl
{
public:
    explicit long_text_t(wxWindow* parent);

    void set_texts(const std::string& main, const std::string& supplemental, const std::string& details);
    /// What the user has selected, as it stands in the texts.
    std::string get_selected() const;
    /// The height that the texts would take at this width, roughly; in pixels.
    int estimated_height(int width) const;
    /// Page Up, Page Down, Home and End; false for any other key.
    bool scroll_by_key(int key_code);
};

} // namespace commondlg3
