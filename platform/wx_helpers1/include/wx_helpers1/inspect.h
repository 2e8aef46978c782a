/// @file
/// What a person sees of a window, in pixels of the screen, whatever it is made of: for checks of windows.
/// GUI thread; the window must be on the screen and painted. Under Wayland, where no program knows where its
/// windows are, places are those in the top-level window.
#pragma once

#include "wx_helpers1/export.h"

#include <wx/gdicmn.h>

#include <string>
#include <vector>

class wxTopLevelWindow;
class wxWindow;

namespace wx_helpers1 {

/// A text that a control shows or draws; not what the user has typed into a field.
/// @since 3.1
struct shown_text_t
{
    std::string text;
    wxRect rect;           ///< the room that it has been given
    bool is_cut = false;   ///< it needs more room than that, or ends in an ellipsis
    bool is_drawn = false; ///< by us, and known only by what a screen reader is told of it
};

/// The texts of the window itself, without those of its children.
/// @since 3.1
WX_HELPERS1_EXPORT std::vector<shown_text_t> get_shown_texts(const wxWindow& window);

/// Where the window is; unlike the toolkit's own answer also right in mirrored windows.
/// @since 3.1
WX_HELPERS1_EXPORT wxRect get_place(const wxWindow& window);
/// Where its children can be seen.
/// @since 3.1
WX_HELPERS1_EXPORT wxRect get_room_for_children(const wxWindow& window);
/// Whether the children may be elsewhere, because it scrolls to them.
/// @since 3.1
WX_HELPERS1_EXPORT bool is_scrolling(const wxWindow& window);

/// Where the keys go, or will go once the window is active; null when nowhere.
/// @since 3.1
WX_HELPERS1_EXPORT wxWindow* get_focus_in(const wxTopLevelWindow& window);
/// What the Tab key does when it is pressed in the window, or Shift+Tab.
/// @since 3.1
WX_HELPERS1_EXPORT void press_tab(const wxTopLevelWindow& window, bool backwards);

} // namespace wx_helpers1
