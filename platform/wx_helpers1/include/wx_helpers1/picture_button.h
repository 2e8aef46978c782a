#pragma once

#include "wx_helpers1/export.h"
#include "wx_helpers1/picture.h"

#include <wx/bmpbuttn.h>

namespace wx_helpers1 {

/// The pictures of a button for its states; an empty one is left to the toolkit.
struct button_pictures_t
{
    wxStaticPicture normal;
    wxStaticPicture hovered;
    wxStaticPicture pressed;
    wxStaticPicture disabled;
};

/// Gives the button its pictures, in the theme's ink: call it again after ui_settings_t::changed().
WX_HELPERS1_EXPORT void set_pictures(wxBitmapButton* button, const button_pictures_t& pictures);

/// Takes away what the theme draws around a button, so that it may be as small as its picture. The mark of
/// the focus stays. GUI thread; a null button does nothing.
WX_HELPERS1_EXPORT void remove_button_frame(wxBitmapButton* button);

} // namespace wx_helpers1
