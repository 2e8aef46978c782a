#pragma once

#include <wx/colour.h>

namespace wx_helpers1 {

/// A colour between two: 0 gives `from`, 1 gives `to`.
wxColour mixed(const wxColour& from, const wxColour& to, double share);

} // namespace wx_helpers1
