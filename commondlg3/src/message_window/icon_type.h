#pragma once

#include "commondlg3/message_window.h"

namespace commondlg3 {

/// What goes with a type of message.
struct icon_type_t
{
    const char* title_key; ///< of the window
    const char* word_key;  ///< for those who do not see the picture
};

/// An unknown type is taken for an error.
const icon_type_t& icon_type_of(message_window_t::icon_types_t type);

} // namespace commondlg3
