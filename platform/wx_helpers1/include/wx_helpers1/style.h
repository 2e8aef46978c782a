#pragma once

#include "wx_helpers1/ui_settings.h"

namespace wx_helpers1 {

/// How a block of text is to look, by what it is for.
enum class style_t
{
    normal,    ///< as any text
    secondary, ///< less important than what stands around it
    error,     ///< something failed
    warning,   ///< something may fail
    notice     ///< on the background of notices
};

/// The number of the colour of its text.
constexpr int colour_of(style_t style)
{
    switch (style) {
    case style_t::secondary:
        return ui_colour::secondary_text;
    case style_t::error:
        return ui_colour::error;
    case style_t::warning:
        return ui_colour::warning;
    case style_t::notice:
        return ui_colour::notice_text;
    default:
        return ui_colour::text;
    }
}

} // namespace wx_helpers1
