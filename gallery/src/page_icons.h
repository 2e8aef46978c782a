#pragma once

#include <wx_helpers1/picture.h>

namespace gallery {

/// The pictures of the pages of the preferences, of the size of a line of text.
enum class page_icon_t
{
    results,
    editors,
    sampling,
    directories,
    experiments,
    usage,
    messages
};
wx_helpers1::wxStaticPicture get_page_icon(page_icon_t icon);

} // namespace gallery
