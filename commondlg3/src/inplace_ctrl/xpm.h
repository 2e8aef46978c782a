#pragma once

#include <wx/image.h>

#include <string>

namespace commondlg3 {

/// The image as the text of an XPM file; empty when it cannot be written.
std::string image_to_xpm(const wxImage& image);

/// The image of such a text. Anything else, and an image that claims to be larger than an icon ever is, gives
/// none.
wxImage image_from_xpm(const std::string& xpm);

} // namespace commondlg3
