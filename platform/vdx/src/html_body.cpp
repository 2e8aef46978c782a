#include "html_body.h"

#include "html_markup.h"

#include <wx_helpers1/text.h>

#include <wx/html/winpars.h>

#include <algorithm>

namespace vdxcfrw7 {
namespace {

class parser_t : public wxHtmlWinParser
{
public:
    wxFSFile* OpenURL(wxHtmlURLType, const wxString&) const override { return nullptr; }
};

std::string hex(const wxColour& colour)
{
    return colour.GetAsString(wxC2S_HTML_SYNTAX).utf8_string();
}

} // namespace

html_body_t::html_body_t(const std::string& html, const wxFont& font, const wxColour& ink,
                         const wxColour& link, wxDC& dc)
{
    parser_t parser;
    parser.SetDC(&dc, 1.0);
    parser.SetStandardFonts(font.GetPointSize(), font.GetFaceName());
    const std::string page =
        "<body text=\"" + hex(ink) + "\" link=\"" + hex(link) + "\">" + safe_markup(html) + "</body>";
    m_cell.reset(static_cast<wxHtmlContainerCell*>(parser.Parse(wx_helpers1::to_label(page))));
    if (m_cell)
        m_cell->SetIndent(0, wxHTML_INDENT_ALL, wxHTML_UNITS_PIXELS);
}

int html_body_t::set_width(int width)
{
    if (m_cell && width != m_width) {
        m_width = width;
        m_cell->Layout(std::max(1, width));
        m_height = m_cell->GetHeight();
    }
    return m_height;
}

void html_body_t::draw(wxDC& dc, int x, int y, int visible_top, int visible_bottom) const
{
    if (!m_cell)
        return;
    wxDefaultHtmlRenderingStyle style;
    wxHtmlRenderingInfo info;
    info.SetStyle(&style);
    m_cell->Draw(dc, x, y, visible_top, visible_bottom, info);
}

} // namespace vdxcfrw7
