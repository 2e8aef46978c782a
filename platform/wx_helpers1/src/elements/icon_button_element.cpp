#include "wx_helpers1/elements/icon_button_element.h"

#include <wx/dc.h>
#include <wx/window.h>

namespace wx_helpers1 {

void icon_button_element_t::set_picture(int flags, const wxStaticPicture& picture)
{
    for (std::size_t i = 0; i < states; ++i)
        if (flags & (1 << i))
            m_pictures[i] = picture;
    damage();
}

void icon_button_element_t::set_name(const std::string& name)
{
    if (name == m_description.name)
        return;
    m_description.name = name;
    description_changed();
}

void icon_button_element_t::set_expanded(bool expanded)
{
    if (m_description.expandable && m_description.expanded == expanded)
        return;
    m_description.expandable = true;
    m_description.expanded = expanded;
    description_changed();
}

void icon_button_element_t::set_focus_rect(const wxRect& rect)
{
    if (rect == m_focus_rect)
        return;
    damage();
    m_focus_rect = rect;
    damage();
}

void icon_button_element_t::activate()
{
    const auto signal = m_clicked; // a slot may destroy this element
    signal.emit();
}

wxSize icon_button_element_t::get_best_size() const
{
    return m_pictures[0].get_size();
}

wxRect icon_button_element_t::get_focus_rect() const
{
    return m_focus_rect.IsEmpty() ? get_rect() : m_focus_rect;
}

void icon_button_element_t::draw(wxDC& dc, wxWindow& window) const
{
    std::size_t index = 0;
    while (index + 1 < states && !(get_state() & (1 << index)))
        ++index;
    const wxStaticPicture& picture = m_pictures[index].is_empty() ? m_pictures[0] : m_pictures[index];
    if (picture.is_empty())
        return;
    const wxBitmap bitmap = picture.get_bundle().GetBitmapFor(&window);
    const wxRect& rect = get_rect();
    const wxSize size = picture.get_size();
    dc.DrawBitmap(bitmap, rect.x + (rect.width - size.x) / 2, rect.y + (rect.height - size.y) / 2, true);
}

} // namespace wx_helpers1
