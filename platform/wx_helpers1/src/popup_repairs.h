#pragma once

namespace wx_helpers1 {

/// What pops up above a window takes all keys, clicks and requests to close until it goes, and the toolkit has
/// three that never go: a popover whose window is hidden, as its chooser of emoji in the field that a list
/// shows for what is typed, which hides after 5 seconds; that field itself, after a menu of it that did not
/// come up; and any menu that is opened while another program holds the pointer, which stays hidden. From
/// here on popovers end with their windows, that field has neither a menu nor emoji, and hidden menus are
/// cancelled. A field in a row, which would end with the focus, does not offer emoji either. A menu of a
/// bar that is clicked while another button is held, and so would open beside the one that is open, takes its
/// place: the toolkit may end the process over the two.
void repair_popups();

} // namespace wx_helpers1
