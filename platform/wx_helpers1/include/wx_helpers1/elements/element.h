#pragma once

#include "wx_helpers1/export.h"

#include <wx/gdicmn.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

class wxDC;
class wxWindow;

namespace wx_helpers1 {

class element_adapter_t;

/// The states of a drawn element, as flags: what a table of pictures is filled by.
struct element_state
{
    /// One bit a state.
    enum flag_t
    {
        normal = 1,
        hovered = 2,
        pressed = 4,
        disabled = 8
    };
};

/// What a drawn element that can be operated says to a screen reader.
struct element_description_t
{
    std::string name;
    bool expandable = false;
    bool expanded = false;
};

/// A part of a window that is drawn rather than a window of its own.
///
/// Use it where native controls would be too many or cannot look as wanted: frames, captions, picture
/// buttons. Do not use it for anything that a control of the toolkit does: texts to select, fields, lists.
///
/// An element knows its place, in pixels of the window, and asks for repainting when something about it
/// changes, of its own place and nothing more. Derive from it, draw in draw(); for one that can be operated
/// answer true in is_active() and act in activate().
///
/// Ownership: the adapter owns the root element, an element its children. GUI thread.
class WX_HELPERS1_EXPORT element_t
{
public:
    element_t() = default;
    virtual ~element_t();
    element_t(const element_t&) = delete;
    element_t& operator=(const element_t&) = delete;

    /// Makes a child, drawn after its parent and hit before it.
    template <class T, class... Args>
    T& add(Args&&... args)
    {
        auto child = std::make_unique<T>(std::forward<Args>(args)...);
        T& made = *child;
        adopt(std::move(child));
        return made;
    }

    /// Its place in the window, in pixels.
    void set_rect(const wxRect& rect);
    const wxRect& get_rect() const { return m_rect; }
    /// What it would like to have, in pixels.
    virtual wxSize get_best_size() const;

    /// Hides it, with all within, or shows it again.
    void show(bool shown);
    bool is_shown() const { return m_shown; }
    /// Disables it, with all within, or enables it again.
    void enable(bool enabled);
    /// Whether it and all around it are enabled.
    bool is_enabled() const;

    /// Whether mouse and keyboard operate it.
    virtual bool is_active() const;
    /// What a click, Space and Enter do. It may destroy the element, and its window.
    virtual void activate();
    /// Hands the mouse over to another element, as the caption beside a button does. Null: to nobody.
    void set_target(element_t* target) { m_target = target; }
    /// Where the focus is marked.
    virtual wxRect get_focus_rect() const;
    /// What a screen reader is told of it.
    virtual element_description_t describe() const;

    /// One of element_state's flags.
    element_state::flag_t get_state() const;
    bool is_focused() const;

    /// The active element that a click on this point operates, or null.
    element_t* hit_test(const wxPoint& point);
    /// This element and those below it that are shown, enabled and active, in their order.
    void collect_active(std::vector<element_t*>& found);

protected:
    /// Draws into a device context of the window, in its pixels.
    virtual void draw(wxDC& dc, wxWindow& window) const;
    /// Something about its look has changed.
    void damage() const;
    /// Something about what describe() answers has changed.
    void description_changed() const;
    /// Null before it is part of a window.
    wxWindow* get_window() const;

private:
    friend class element_adapter_t;

    void adopt(std::unique_ptr<element_t> child);
    void set_adapter(element_adapter_t* adapter);
    void draw_all(wxDC& dc, wxWindow& window, const wxRect& damaged) const;

    element_adapter_t* m_adapter = nullptr;
    element_t* m_parent = nullptr;
    element_t* m_target = nullptr;
    std::vector<std::unique_ptr<element_t>> m_children;
    wxRect m_rect;
    bool m_shown = true;
    bool m_enabled = true;
};

} // namespace wx_helpers1
