#pragma once

#include <wx/colour.h>
#include <wx/dc.h>
#include <wx/font.h>
#include <wx/html/htmlcell.h>

#include <memory>
#include <string>

namespace vdxcfrw7 {

/// Reads bodies in the look of a theme. Making one costs more than many bodies do: keep it.
class html_reader_t
{
public:
    html_reader_t();
    ~html_reader_t();

    /// The device context must live as long as it is read with.
    void set_look(const wxFont& font, const wxColour& ink, const wxColour& link, wxDC& dc);
    std::unique_ptr<wxHtmlContainerCell> read(const std::string& html);

private:
    class parser_t;
    std::unique_ptr<parser_t> m_parser;
    std::string m_body_tag;
};

/// A message body laid out by the toolkit's HTML, which is given nothing to open: neither files nor the
/// network.
class html_body_t
{
public:
    html_body_t(const std::string& html, html_reader_t& reader);

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
