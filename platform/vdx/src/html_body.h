#pragma once

#include <wx/colour.h>
#include <wx/dc.h>
#include <wx/font.h>
#include <wx/html/htmlcell.h>

#include <memory>
#include <string>

namespace vdxcfrw7 {

/// A message body laid out by the toolkit's HTML, which is given nothing to open: neither files nor the
/// network.
class html_body_t
{
public:
    /// Bodies longer than this, in bytes, are shown as plain text: laying them out would stop the program.
    static constexpr std::size_t longest = 64 * 1024;

    html_body_t(const std::string& html, const wxFont& font, const wxColour& ink, const wxColour& link,
                wxDC& dc);

    /// Lays it out for a width and returns its height, both in pixels.
    int set_width(int width);
    int get_height() const { return m_height; }
    void draw(wxDC& dc, int x, int y, int visible_top, int visible_bottom) const;

private:
    std::unique_ptr<wxHtmlContainerCell> m_cell;
    int m_width = -1;
    int m_height = 0;
};

} // namespace vdxcfrw7
