#pragma once

typedef struct _AtkActionIface AtkActionIface;

namespace wx_helpers1 {

/// Lets the toolkit's controls do from the event loop what screen readers and scripts ask of them.
///
/// Their own way is to do it inside the dispatch of the accessibility bus. A button that opens a modal
/// window then runs the window's loop there: the caller waits for its answer until the window is closed,
/// and no further word of the bus comes through. Called once, before windows are made; GUI thread.
void run_accessible_actions_from_loop();

/// The same for actions of our own, from the function that fills their interface.
void run_actions_from_loop(AtkActionIface* actions);

} // namespace wx_helpers1
