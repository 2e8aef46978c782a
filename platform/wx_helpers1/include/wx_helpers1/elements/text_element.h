#pragma once

#include "wx_helpers1/elements/element.h"

#include <wx/colour.h>
#include <wx/font.h>

#include <string>

namespace wx_helpers1 {

/// A text in one line, centred in its height; what does not fit ends in an ellipsis. '&' shows as itself.
/// GUI thread.
class WX_HELPERS1_EXPORT text_element_t : public element_t
{
public:
    /// UTF-8, in one line.
    void set_text(const std::string& text);
    const std::string& get_text() const { return m_text; }
    /// Without one it has the window's.
    void set_font(const wxFont& font);
    /// The ink, and that of a disabled text.
    void set_colours(const wxColour& enabled, const wxColour& disabled);

    /// (0, 0) for an empty text, and before it is part of a window.
    wxSize get_best_size() const override;

protected:
    void draw(wxDC& dc, wxWindow& window) const override;

private:
    std::string m_text;
    wxFont m_font;
    wxColour m_colour;
    wxColour m_disabled_colour;
};

} // namespace wx_helpers1
