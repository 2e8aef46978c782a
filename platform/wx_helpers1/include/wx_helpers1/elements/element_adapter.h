#pragma once

#include "wx_helpers1/elements/element.h"

#include <wx/event.h>

#include <memory>

namespace wx_helpers1 {

/// Makes a window out of drawn elements: paints them, and gives them mouse, keyboard and screen reader.
///
///     class badge_t : public wxWindow
///     {
///         element_adapter_t m_elements{this};
///         badge_t(wxWindow* parent) : wxWindow(parent, wxID_ANY)
///         {
///             auto& frame = m_elements.make_root<rectangle_element_t>();
///             auto& button = frame.add<icon_button_element_t>();
///         }
///     };
///
/// Only what was damaged is painted, and of it only the elements that it touches. Tab goes through the active
/// elements and on to the next window; Space and Enter operate the focused one. A screen reader finds the
/// window as its first active element: make a window for each where there are several. A window without
/// active elements is left to the toolkit, keys, focus and all.
///
/// A member of the window that it serves, made after that is created. GUI thread.
class WX_HELPERS1_EXPORT element_adapter_t : public wxEvtHandler
{
public:
    explicit element_adapter_t(wxWindow* window);
    ~element_adapter_t() override;
    element_adapter_t(const element_adapter_t&) = delete;
    element_adapter_t& operator=(const element_adapter_t&) = delete;

    /// Replaces the root element.
    template <class T, class... Args>
    T& make_root(Args&&... args)
    {
        auto root = std::make_unique<T>(std::forward<Args>(args)...);
        T& made = *root;
        set_root(std::move(root));
        return made;
    }
    element_t* get_root() const { return m_root.get(); }

    /// Repaints this part of the window.
    void damage(const wxRect& rect);
    /// Does what the user's click on the first active element does; false when there is none.
    bool activate_first();
    /// What the screen reader is told; false when there is no active element.
    bool describe_first(element_description_t& description) const;

private:
    friend class element_t;
    struct accessible_t;

    void set_root(std::unique_ptr<element_t> root);
    void forget(const element_t* element);
    void describe_again();
    element_t* first_active() const;
    void set_hovered(element_t* element);
    void set_pressed(element_t* element);
    void set_focused(element_t* element);
    bool move_focus(bool forward);
    void activate(element_t* element);

    void on_paint(wxPaintEvent& event);
    void on_mouse(wxMouseEvent& event);
    void on_capture_lost(wxMouseCaptureLostEvent& event);
    void on_focus(wxFocusEvent& event);
    void on_key_down(wxKeyEvent& event);
    void on_key_up(wxKeyEvent& event);

    wxWindow* m_window;
    std::unique_ptr<element_t> m_root;
    std::unique_ptr<accessible_t> m_accessible;
    element_t* m_hovered = nullptr;
    element_t* m_pressed = nullptr; // the mouse went down on it, or a key
    element_t* m_focused = nullptr;
    int m_key = 0; // the key that is held down
};

} // namespace wx_helpers1
