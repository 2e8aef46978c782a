/// @file
/// What a static text of the toolkit lacks for long messages: selecting, wrapping inside words, measuring.
/// GUI thread; a null label does nothing.
#pragma once

#include "wx_helpers1/export.h"

#include <wx/gdicmn.h>

#include <string>

class wxColour;
class wxStaticText;
class wxWindow;

namespace wx_helpers1 {

/// The text with a mark in front of each line that holds letters of the other direction. The toolkit gives a
/// line the direction of its first letter, isolated or not: a sentence that begins with a name from another
/// script, or is broken in front of one, would run the wrong way. set_label_text() does it. Any thread.
/// @since 3.1
WX_HELPERS1_EXPORT std::string with_direction(const std::string& text);

/// Sets the text as it stands: '&' shows as itself, bytes that are not UTF-8 as U+FFFD.
WX_HELPERS1_EXPORT void set_label_text(wxStaticText* label, const std::string& text);

/// Puts the text at the edge where its direction begins: the toolkit turns its alignment around for scripts
/// from right to left although the widget does so itself. A label that is centred or at the end is left
/// alone.
WX_HELPERS1_EXPORT void align_label_to_start(wxStaticText* label);

/// Lets the toolkit break lines wider than `width` pixels, inside words where it must; 0 breaks none.
/// Breaking is slow (0.5 s for 60 KB where none costs 50 ms): leave it off for texts whose lines are short
/// enough.
WX_HELPERS1_EXPORT void set_wrap_width(wxStaticText* label, int width);

/// Lets the user select the label's text with mouse and keyboard.
WX_HELPERS1_EXPORT void set_selectable(wxStaticText* label, bool selectable);

/// The selected part of the label's text; empty when nothing is selected.
WX_HELPERS1_EXPORT std::string get_selected_text(wxStaticText* label);

/// Selects nothing, or everything.
WX_HELPERS1_EXPORT void select_label_text(wxStaticText* label, bool all);

/// The size that the label's lines need when none is broken, in pixels.
WX_HELPERS1_EXPORT wxSize natural_size(wxStaticText* label);

/// The height that the label needs when it is `width` pixels wide, in pixels.
WX_HELPERS1_EXPORT int height_for_width(wxStaticText* label, int width);

/// Marks the text of a label, a check box, a radio button or a button with a colour behind it, and nothing
/// else of it: a check box keeps its box. An invalid colour takes the mark away.
/// @since 3.1
WX_HELPERS1_EXPORT void set_label_background(wxWindow* control, const wxColour& colour);

} // namespace wx_helpers1
