#pragma once

#include "missing_resource.h"
#include "page_icons.h"

#include <commondlg3/silenced_messages_page.h>

#include <string>

namespace gallery {

/// The messages that the user has silenced, in the product's preferences.
class silenced_preferences_t : public commondlg3::silenced_messages_page_t
{
public:
    using silenced_messages_page_t::silenced_messages_page_t;

    std::string get_search_words() const override { return text("preferences.page.silenced.words"); }
    wx_helpers1::wxStaticPicture get_icon() const override { return get_page_icon(page_icon_t::messages); }
};

} // namespace gallery
