/// What the tests of the panels share.
#pragma once

#include "support.h"

#include <wx/frame.h>
#include <wx/panel.h>

#include <string>
#include <vector>

namespace commondlg3 {
class caption_label_t;
}

namespace test {

/// A page with a vertical sizer, far higher than its window, so that everything finds room; it is destroyed
/// at the end.
class window_t
{
public:
    explicit window_t(int width = 500);
    ~window_t();
    wxPanel* operator->() { return m_page; }
    operator wxPanel*() { return m_page; }
    wxFrame* frame() { return m_frame; }
    /// Gives the page this width at once, as one step of a drag does, without letting the loop turn.
    void drag_to(int width);

private:
    wxFrame* m_frame;
    wxPanel* m_page;
};

/// All windows of a class below another one, in their order.
template <class T>
std::vector<T*> all_below(wxWindow* parent)
{
    std::vector<T*> found;
    for (wxWindow* child : parent->GetChildren()) {
        if (auto* window = dynamic_cast<T*>(child))
            found.push_back(window);
        for (T* window : all_below<T>(child))
            found.push_back(window);
    }
    return found;
}

/// What a reader misses of the visible labels below a window: empty when every line is wholly on the screen.
std::string cut_off(wxWindow* parent);

} // namespace test
