#include "audited_window.h"

#include <wx_helpers1/inspect.h>

#include <wx/button.h>
#include <wx/display.h>
#include <wx/panel.h>
#include <wx/statbox.h>
#include <wx/statline.h>
#include <wx/stattext.h>

#include <algorithm>
#include <string>
#include <typeinfo>

namespace commondlg3 {
namespace {

std::string in_words(const wxRect& rect)
{
    return std::to_string(rect.width) + "x" + std::to_string(rect.height) + " at " + std::to_string(rect.x) +
           "," + std::to_string(rect.y);
}

// A frame may be drawn around its neighbours.
bool may_overlap(const wxWindow& window)
{
    return wxDynamicCast(&window, wxStaticBox) || wxDynamicCast(&window, wxStaticLine);
}

// Such as a text that is not needed now, or a panel that waits for its contents: no room is right for it.
bool is_empty(const wxWindow& window)
{
    if (const auto* label = wxDynamicCast(&window, wxStaticText))
        return label->GetLabel().empty();
    const wxWindowList& children = window.GetChildren();
    return typeid(window) == typeid(wxPanel) &&
           std::none_of(children.begin(), children.end(),
                        [](const wxWindow* child) { return child->IsShown(); });
}

void audit_place(audited_window_t& audited, const wxWindow& window)
{
    if (is_empty(window))
        return;
    const wxRect place = wx_helpers1::get_place(window);
    const wxWindow& parent = *window.GetParent();
    if (place.width <= 1 || place.height <= 1) {
        audited.add("no_size", window, in_words(place));
        return;
    }
    const wxRect room = wx_helpers1::get_room_for_children(parent);
    if (!wx_helpers1::is_scrolling(parent) && !room.Contains(place))
        audited.add("outside", window, in_words(place) + " in " + in_words(room));
    if (may_overlap(window))
        return;
    for (const wxWindow* sibling : parent.GetChildren()) {
        if (sibling == &window)
            break; // each pair once
        if (!sibling->IsShown() || sibling->IsTopLevel() || may_overlap(*sibling))
            continue;
        const wxRect common = place.Intersect(wx_helpers1::get_place(*sibling));
        if (common.width > 0 && common.height > 0)
            audited.add("overlapping", window,
                        audited_window_t::get_path(*sibling) + " in " + in_words(common));
    }
}

} // namespace

void audit_places(audited_window_t& audited)
{
    const wxTopLevelWindow& top = audited.top();
    const int display = wxDisplay::GetFromWindow(&top);
    const wxRect screen = wxDisplay(display == wxNOT_FOUND ? 0 : unsigned(display)).GetGeometry();
    const wxRect place = wx_helpers1::get_place(top);
    if (place.width > screen.width || place.height > screen.height)
        audited.add("beyond_screen", top, in_words(place) + " on " + in_words(screen));
    for (const wxWindow* window : audited.get_shown()) {
        audit_place(audited, *window);
        const wxRect button = wx_helpers1::get_place(*window);
        if (wxDynamicCast(window, wxButton) && window->GetParent() == &top && !screen.Contains(button))
            audited.add("beyond_screen", *window, in_words(button) + " on " + in_words(screen));
    }
}

} // namespace commondlg3
