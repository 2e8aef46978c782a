#include "page_icons.h"

#include <string>

namespace gallery {
namespace {

// Lines on a field of 16 by 16, between which and the title there is some room on either side.
const char* outline_of(page_icon_t icon)
{
    switch (icon) {
    case page_icon_t::results:
        return "M1.5 13.5v-11h4l1.5 2h7.5v9z";
    case page_icon_t::editors:
        return "M2.5 13.5l1-4 7.5-7.5 3 3-7.5 7.5z M9.5 3.5l3 3";
    case page_icon_t::sampling:
        return "M1 9h3l2-6 4 10 2-4h3";
    case page_icon_t::directories:
        return "M2.5 7a4.5 4.5 0 1 0 9 0a4.5 4.5 0 1 0-9 0 M10.2 10.2l4.3 4.3";
    case page_icon_t::experiments:
        return "M5.5 1.5h5 M6.5 1.5v5l-4 8h11l-4-8v-5";
    case page_icon_t::usage:
        return "M2.5 14v-4 M6.5 14v-8 M10.5 14v-6 M14.5 14v-12";
    case page_icon_t::messages:
        return "M1.5 2.5h13v9h-7l-3 3v-3h-3z";
    }
    return "";
}

} // namespace

wx_helpers1::wxStaticPicture get_page_icon(page_icon_t icon)
{
    const wxSize size(22, 16);
    return wx_helpers1::wxStaticPicture::from_svg(
        std::string("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"22\" height=\"16\"><path "
                    "transform=\"translate(3)\" d=\"") +
            outline_of(icon) + "\" fill=\"none\" stroke=\"currentColor\" stroke-width=\"1.2\"/></svg>",
        size);
}

} // namespace gallery
