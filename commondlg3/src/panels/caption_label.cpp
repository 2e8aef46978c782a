#include "commondlg3/caption_label.h"

#include <gen_helpers2/assertion.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>
#include <wx_helpers1/wrap_text.h>

#include <wx/bitmap.h>
#include <wx/dcmemory.h>

#include <algorithm>

namespace commondlg3 {
namespace {

constexpr char caption_label_unit[] = "caption";
constexpr int margin = 5;

bool fits(const std::string& lines, int room, wxDC& dc)
{
    return room <= 0 || dc.GetMultiLineTextExtent(wx_helpers1::to_label(lines)).x <= room;
}

} // namespace

caption_label_t::caption_label_t(wxWindow* parent, const std::string& text,
                                 wxWindow* window_for_get_parent_size)
    : wxStaticText(parent, wxID_ANY, wxString()),
      m_text(text),
      m_window_for_get_parent_size(window_for_get_parent_size)
{
    GH2_ASSERT(m_window_for_get_parent_size != NULL, caption_label_unit);
    wx_helpers1::set_wrap_width(this, 0); // the lines are broken here, not by the toolkit
    wx_helpers1::set_label_text(this, text);
}

void caption_label_t::set_label(const std::string& text)
{
    if (text == m_text)
        return;
    m_text = text;
    m_wrapped = false;
}

bool caption_label_t::wrap_to_width(int width)
{
    const int room = width - m_delta;
    const wx_helpers1::ui_settings_t* settings = wx_helpers1::ui_settings_t::get();
    if (room < -1 || !settings)
        return false;
    const wxFont font = settings->get_font(wx_helpers1::ui_font::text);
    const wxFont own_font = GetFont();
    const int look = settings->get_change_count(); // the same font may have another size by now
    if (m_wrapped && room == m_wrapped_width && look == m_wrapped_look && own_font == m_wrapped_own_font)
        return false;
    // Measures as one of the label does, which would ask the theme for its colours first.
    wxBitmap pixel(1, 1);
    wxMemoryDC dc(pixel);
    dc.SetFont(font);
    int lines = 1;
    std::string wrapped = wx_helpers1::wrap_text(m_text, room, this, lines, margin, dc);
    // A label in a wider font than the text's must not lose the ends of its lines.
    if (own_font != font) {
        dc.SetFont(own_font);
        if (!fits(wrapped, room - margin, dc)) {
            lines = 1;
            wrapped = wx_helpers1::wrap_text(m_text, room, this, lines, margin, dc);
        }
    }
    m_wrapped = true;
    m_wrapped_width = room;
    m_wrapped_look = look;
    m_wrapped_own_font = own_font;
    wx_helpers1::set_label_text(this, wrapped);
    const bool changed = lines != m_lines;
    m_lines = lines;
    return changed;
}

void caption_label_t::shift_delta(int by)
{
    m_delta = std::max(0, m_delta + by);
}

void caption_label_t::update_delta(int extra)
{
    if (m_window_for_get_parent_size)
        m_delta = std::max(m_delta, m_window_for_get_parent_size->GetSize().x - GetSize().x + extra);
}

// The toolkit's own way to this height lays the text out several times, once of them a character wide.
wxSize caption_label_t::DoGetBestSize() const
{
    const wxSize size(0, wx_helpers1::natural_size(const_cast<caption_label_t*>(this)).y);
    CacheBestSize(size);
    return size;
}

// Setting a text makes the toolkit size its label to it, in both directions: the width is the sizer's.
void caption_label_t::DoSetSize(int x, int y, int width, int height, int)
{
    wxStaticText::DoSetSize(x, y, width, height, wxSIZE_AUTO_HEIGHT);
}

} // namespace commondlg3
