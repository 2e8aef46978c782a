#include "html_body.h"

#include "html_markup.h"

#include <wx_helpers1/text.h>

#include <wx/html/winpars.h>

#include <algorithm>

namespace vdxcfrw7 {
namespace {

std::string hex(const wxColour& colour)
{
    return colour.GetAsString(wxC2S_HTML_SYNTAX).utf8_string();
}

} // namespace

class html_reader_t::parser_t : public wxHtmlWinParser
{
public:
    wxFSFile* OpenURL(wxHtmlURLType, const wxString&) const override { return nullptr; }
};

html_reader_t::html_reader_t() : m_parser(std::make_unique<parser_t>()) {}

html_reader_t::~html_reader_t() = default;

void html_reader_t::set_look(const wxFont& font, const wxColour& ink, const wxColour& link, wxDC& dc)
{
    m_parser->SetDC(&dc, 1.0);
    m_parser->SetStandardFonts(font.GetPointSize(), font.GetFaceName());
    m_body_tag = "<body text=\"" + hex(ink) + "\" link=\"" + hex(link) + "\">";
}

std::unique_ptr<wxHtmlContainerCell> html_reader_t::read(const std::string& html)
{
    const std::string page = m_body_tag + safe_markup(html) + "</body>";
    return std::unique_ptr<wxHtmlContainerCell>(
        static_cast<wxHtmlContainerCell*>(m_parser->Parse(wx_helpers1::to_label(page))));
}

html_body_t::html_body_t(const std::string& html, html_reader_t& reader) : m_cell(reader.read(html))
{
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
