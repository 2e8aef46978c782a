#include "wx_helpers1/elements/element.h"

#include "wx_helpers1/elements/element_adapter.h"

#include <wx/window.h>

namespace wx_helpers1 {

element_t::~element_t()
{
    if (m_adapter)
        m_adapter->forget(this);
}

void element_t::adopt(std::unique_ptr<element_t> child)
{
    child->m_parent = this;
    child->set_adapter(m_adapter);
    m_children.push_back(std::move(child));
    m_children.back()->description_changed();
}

void element_t::set_adapter(element_adapter_t* adapter)
{
    m_adapter = adapter;
    for (const auto& child : m_children)
        child->set_adapter(adapter);
}

void element_t::set_rect(const wxRect& rect)
{
    if (rect == m_rect)
        return;
    damage();
    m_rect = rect;
    damage();
}

wxSize element_t::get_best_size() const
{
    return wxSize(0, 0);
}

void element_t::show(bool shown)
{
    if (shown == m_shown)
        return;
    m_shown = true; // so that its place is repainted either way
    damage();
    m_shown = shown;
}

void element_t::enable(bool enabled)
{
    if (enabled == m_enabled)
        return;
    m_enabled = enabled;
    damage();
}

bool element_t::is_enabled() const
{
    return m_enabled && (!m_parent || m_parent->is_enabled());
}

bool element_t::is_active() const
{
    return false;
}

void element_t::activate() {}

wxRect element_t::get_focus_rect() const
{
    return m_rect;
}

element_description_t element_t::describe() const
{
    return {};
}

element_state::flag_t element_t::get_state() const
{
    const wxWindow* window = get_window();
    if (!is_enabled() || (window && !window->IsEnabled()))
        return element_state::disabled;
    if (!m_adapter)
        return element_state::normal;
    // Dragged out of, a button springs back; a key has no place to be dragged to.
    if (m_adapter->m_pressed == this && (m_adapter->m_hovered == this || m_adapter->m_key != 0))
        return element_state::pressed;
    return m_adapter->m_hovered == this ? element_state::hovered : element_state::normal;
}

bool element_t::is_focused() const
{
    return m_adapter && m_adapter->m_focused == this;
}

element_t* element_t::hit_test(const wxPoint& point)
{
    if (!m_shown || !m_enabled)
        return nullptr;
    for (auto child = m_children.rbegin(); child != m_children.rend(); ++child)
        if (element_t* hit = (*child)->hit_test(point))
            return hit;
    if (!m_rect.Contains(point))
        return nullptr;
    if (m_target)
        return m_target->m_shown && m_target->is_enabled() ? m_target : nullptr;
    return is_active() ? this : nullptr;
}

void element_t::collect_active(std::vector<element_t*>& found)
{
    if (!m_shown || !m_enabled)
        return;
    if (is_active())
        found.push_back(this);
    for (const auto& child : m_children)
        child->collect_active(found);
}

void element_t::draw(wxDC&, wxWindow&) const {}

void element_t::damage() const
{
    if (m_adapter && m_shown)
        m_adapter->damage(is_focused() ? get_focus_rect().Union(m_rect) : m_rect);
}

void element_t::description_changed() const
{
    if (m_adapter)
        m_adapter->describe_again();
}

wxWindow* element_t::get_window() const
{
    return m_adapter ? m_adapter->m_window : nullptr;
}

void element_t::draw_all(wxDC& dc, wxWindow& window, const wxRect& damaged) const
{
    if (!m_shown)
        return;
    if (damaged.Intersects(m_rect))
        draw(dc, window);
    for (const auto& child : m_children)
        child->draw_all(dc, window, damaged);
}

} // namespace wx_helpers1
