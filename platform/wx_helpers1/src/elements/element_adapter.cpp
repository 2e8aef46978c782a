#include "wx_helpers1/elements/element_adapter.h"

#include "element_accessible.h"

#include <wx/dcclient.h>
#include <wx/renderer.h>
#include <wx/weakref.h>
#include <wx/window.h>

#include <algorithm>
#include <vector>

namespace wx_helpers1 {
namespace {

bool operates(int key)
{
    return key == WXK_SPACE || key == WXK_RETURN || key == WXK_NUMPAD_ENTER;
}

} // namespace

struct element_adapter_t::accessible_t
{
    explicit accessible_t(element_adapter_t& adapter) : control(adapter) {}
    element_accessible_t control;
};

element_adapter_t::element_adapter_t(wxWindow* window) : m_window(window)
{
    window->Bind(wxEVT_PAINT, &element_adapter_t::on_paint, this);
    for (const auto& type : {wxEVT_ENTER_WINDOW, wxEVT_LEAVE_WINDOW, wxEVT_MOTION, wxEVT_LEFT_DOWN,
                             wxEVT_LEFT_DCLICK, wxEVT_LEFT_UP})
        window->Bind(type, &element_adapter_t::on_mouse, this);
    window->Bind(wxEVT_MOUSE_CAPTURE_LOST, &element_adapter_t::on_capture_lost, this);
    window->Bind(wxEVT_SET_FOCUS, &element_adapter_t::on_focus, this);
    window->Bind(wxEVT_KILL_FOCUS, &element_adapter_t::on_focus, this);
    window->Bind(wxEVT_KEY_DOWN, &element_adapter_t::on_key_down, this);
    window->Bind(wxEVT_KEY_UP, &element_adapter_t::on_key_up, this);
}

element_adapter_t::~element_adapter_t()
{
    set_root(nullptr);
    if (m_window->HasCapture()) // it goes while a button of the mouse is down
        m_window->ReleaseMouse();
}

void element_adapter_t::set_root(std::unique_ptr<element_t> root)
{
    if (m_root)
        m_root->set_adapter(nullptr);
    m_hovered = m_pressed = m_focused = nullptr;
    m_root = std::move(root);
    if (m_root) {
        m_root->set_adapter(this);
        describe_again();
        m_window->Refresh();
    }
}

void element_adapter_t::forget(const element_t* element)
{
    for (element_t** known : {&m_hovered, &m_pressed, &m_focused})
        if (*known == element)
            *known = nullptr;
}

void element_adapter_t::damage(const wxRect& rect)
{
    if (!rect.IsEmpty())
        m_window->RefreshRect(rect);
}

element_t* element_adapter_t::first_active() const
{
    std::vector<element_t*> active;
    if (m_root)
        m_root->collect_active(active);
    return active.empty() ? nullptr : active.front();
}

bool element_adapter_t::activate_first()
{
    element_t* first = m_window->IsEnabled() ? first_active() : nullptr;
    if (first)
        activate(first);
    return first != nullptr;
}

bool element_adapter_t::describe_first(element_description_t& description) const
{
    const element_t* first = first_active();
    if (first)
        description = first->describe();
    return first != nullptr;
}

void element_adapter_t::describe_again()
{
    element_description_t description;
    if (!describe_first(description))
        return;
    if (!m_accessible)
        m_accessible = std::make_unique<accessible_t>(*this);
    m_accessible->control.update(m_window, description);
}

// The element may take its window with it.
void element_adapter_t::activate(element_t* element)
{
    element->activate();
}

void element_adapter_t::set_hovered(element_t* element)
{
    if (element == m_hovered)
        return;
    element_t* before = std::exchange(m_hovered, element);
    for (element_t* each : {before, element})
        if (each)
            each->damage();
}

void element_adapter_t::set_pressed(element_t* element)
{
    if (element == m_pressed)
        return;
    element_t* before = std::exchange(m_pressed, element);
    for (element_t* each : {before, element})
        if (each)
            each->damage();
}

void element_adapter_t::set_focused(element_t* element)
{
    if (element == m_focused)
        return;
    if (m_focused)
        m_focused->damage(); // while it still has the mark
    m_focused = element;
    if (m_focused)
        m_focused->damage();
}

bool element_adapter_t::move_focus(bool forward)
{
    std::vector<element_t*> active;
    if (m_root)
        m_root->collect_active(active);
    if (!forward)
        std::reverse(active.begin(), active.end());
    auto next = std::find(active.begin(), active.end(), m_focused);
    if (next == active.end() || ++next == active.end())
        return false;
    set_focused(*next);
    return true;
}

void element_adapter_t::on_paint(wxPaintEvent&)
{
    wxPaintDC dc(m_window);
    if (!m_root)
        return;
    m_root->draw_all(dc, *m_window, m_window->GetUpdateRegion().GetBox());
    if (m_focused && m_focused->is_shown())
        wxRendererNative::Get().DrawFocusRect(m_window, dc, m_focused->get_focus_rect());
}

void element_adapter_t::on_mouse(wxMouseEvent& event)
{
    event.Skip();
    const wxEventType type = event.GetEventType();
    element_t* hit = type == wxEVT_LEAVE_WINDOW || !m_root ? nullptr : m_root->hit_test(event.GetPosition());
    if (m_pressed && hit != m_pressed)
        hit = nullptr;
    set_hovered(hit);
    if (type == wxEVT_LEFT_DOWN || type == wxEVT_LEFT_DCLICK) {
        if (!hit)
            return;
        if (m_window->CanAcceptFocus())
            m_window->SetFocus();
        set_focused(hit);
        set_pressed(hit);
        if (!m_window->HasCapture())
            m_window->CaptureMouse();
    } else if (type == wxEVT_LEFT_UP) {
        if (m_window->HasCapture()) // what was pressed may have gone meanwhile
            m_window->ReleaseMouse();
        if (!m_pressed || m_key != 0)
            return;
        element_t* pressed = m_pressed;
        set_pressed(nullptr);
        if (hit == pressed) {
            event.Skip(false);
            activate(pressed);
        }
    }
}

void element_adapter_t::on_capture_lost(wxMouseCaptureLostEvent&)
{
    set_pressed(nullptr);
    set_hovered(nullptr);
}

void element_adapter_t::on_focus(wxFocusEvent& event)
{
    event.Skip();
    if (event.GetEventType() == wxEVT_SET_FOCUS) {
        if (!m_focused)
            set_focused(first_active());
        return;
    }
    set_focused(nullptr);
    if (m_key != 0) {
        m_key = 0;
        set_pressed(nullptr);
    }
}

void element_adapter_t::on_key_down(wxKeyEvent& event)
{
    const int key = event.GetKeyCode();
    if (m_focused && operates(key) && !event.HasAnyModifiers()) {
        // A key that is held down presses once.
        if (m_key == 0 && m_focused->get_state() != element_state::disabled) {
            m_key = key;
            set_pressed(m_focused);
        }
        return;
    }
    const bool shift_only = (event.GetModifiers() & ~wxMOD_SHIFT) == 0;
    if (m_focused && key == WXK_TAB && shift_only && move_focus(!event.ShiftDown()))
        return;
    event.Skip();
}

void element_adapter_t::on_key_up(wxKeyEvent& event)
{
    if (m_key == 0 || event.GetKeyCode() != m_key) {
        event.Skip();
        return;
    }
    m_key = 0;
    element_t* pressed = m_pressed;
    set_pressed(nullptr);
    if (pressed)
        activate(pressed);
}

} // namespace wx_helpers1
