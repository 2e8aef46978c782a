#pragma once

#include "wx_helpers1/export.h"

#include <initializer_list>
#include <utility>

class wxWindow;

namespace wx_helpers1 {

/// Enables or disables a control. One that has the keyboard's focus gives it on before it is disabled: a
/// window of which nothing has the focus hears no keys, not even Escape.
///
///     wx_helpers1::set_enabled(m_apply, is_changed(), m_btn_ok);
///
/// @param instead who gets the focus, if it can have it; otherwise what follows in the order of Tab
/// @since 3.1
WX_HELPERS1_EXPORT void set_enabled(wxWindow* control, bool enabled, wxWindow* instead = nullptr);

/// The same for controls that belong together, as the buttons beside a list: the focus goes to the first of
/// them that stays enabled. Null ones are passed over. GUI thread.
WX_HELPERS1_EXPORT void set_enabled(std::initializer_list<std::pair<wxWindow*, bool>> controls,
                                    wxWindow* instead = nullptr);

} // namespace wx_helpers1
