#pragma once

namespace wx_helpers1 {

/// Has fields tell screen readers that they have the focus as soon as they get it. Once; GUI thread.
void tell_focus_of_fields_at_once();

} // namespace wx_helpers1
