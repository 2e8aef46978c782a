#pragma once

namespace gallery {

/// Takes commands from standard input, a line each, also while windows are open, until it ends:
///
///     list              reports a signal "windows": what can be opened, [name, data] each
///     open NAME [JSON]  an object or entry as --show does, over the window that takes input
///     audit             audits the window that has the keyboard, then reports a signal "audited"
///
/// The event loop must run.
void listen_for_commands();

} // namespace gallery
