#pragma once

#include "wx_helpers1/export.h"

#include <wx/gdicmn.h>
#include <wx/geometry.h>
#include <wx/toplevel.h>

namespace wx_helpers1 {

/// The inner size of a window that shows as much at every font, as far as its screen goes. Of the outer one
/// some desktops let the window have less: there the frame is part of it, and the shadow around it.
///
///     window_size_t size(window, usual_in_characters, least_in_characters);
///     size.give();
///     ...                                              // when the look has changed:
///     size.take_over();
///     size.give();
/// @since 3.1
class WX_HELPERS1_EXPORT window_size_t
{
public:
    window_size_t(wxTopLevelWindow& window, const wxSize& usual, const wxSize& least);

    /// Another than the usual one, in pixels.
    void want(const wxSize& pixels);
    /// What the user has made of it since it was given becomes what is wanted.
    void take_over();
    /// @param needed the least size of what is in the window, in pixels
    void give(const wxSize& needed = wxSize(0, 0));
    /// The size that the window has now is not the user's doing.
    void keep() { m_given = m_window.GetClientSize(); }

private:
    wxTopLevelWindow& m_window;
    wxRealPoint m_wanted;
    wxSize m_least;
    wxSize m_given;     ///< in pixels
    wxSize m_character; ///< at that time
};

} // namespace wx_helpers1
