#include "wx_helpers1/elements/text_element.h"

#include "wx_helpers1/text.h"

#include <wx/control.h>
#include <wx/dc.h>
#include <wx/window.h>

namespace wx_helpers1 {

void text_element_t::set_text(const std::string& text)
{
    if (text == m_text)
        return;
    m_text = text;
    damage();
}

void text_element_t::set_font(const wxFont& font)
{
    if (font == m_font)
        return;
    m_font = font;
    damage();
}

void text_element_t::set_colours(const wxColour& enabled, const wxColour& disabled)
{
    m_colour = enabled;
    m_disabled_colour = disabled;
    damage();
}

wxSize text_element_t::get_best_size() const
{
    const wxWindow* window = get_window();
    if (!window || m_text.empty())
        return wxSize(0, 0);
    wxSize size;
    window->GetTextExtent(to_label(m_text), &size.x, &size.y, nullptr, nullptr,
                          m_font.IsOk() ? &m_font : nullptr);
    return size;
}

void text_element_t::draw(wxDC& dc, wxWindow& window) const
{
    if (m_text.empty())
        return;
    dc.SetFont(m_font.IsOk() ? m_font : window.GetFont());
    const wxColour& colour = get_state() == element_state::disabled ? m_disabled_colour : m_colour;
    dc.SetTextForeground(colour.IsOk() ? colour : window.GetForegroundColour());
    const wxRect& rect = get_rect();
    const wxString shown =
        wxControl::Ellipsize(to_label(m_text), dc, wxELLIPSIZE_END, rect.width, wxELLIPSIZE_FLAGS_NONE);
    dc.DrawText(shown, rect.x, rect.y + (rect.height - dc.GetCharHeight()) / 2);
}

} // namespace wx_helpers1
