#pragma once

#include "commondlg3/caption_panel.h"
#include "commondlg3/text_utils.h"

#include <string>

namespace commondlg3 {

/// A severity in the user's language, for those who do not see its picture.
inline std::string severity_name(caption_panel_t::severity_t severity)
{
    using severity_t = caption_panel_t::severity_t;
    switch (severity) {
    case severity_t::critical:
        return translate_message("severity.critical");
    case severity_t::error:
        return translate_message("severity.error");
    case severity_t::information:
        return translate_message("severity.information");
    default:
        return translate_message("severity.warning");
    }
}

} // namespace commondlg3
