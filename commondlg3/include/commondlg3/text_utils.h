/// @file
/// Texts from the message catalog, and fitting texts, tool tips and windows on the screen.
///
/// GUI thread where a window is concerned; a null window, label or control does nothing. Strings are UTF-8
/// bytes.
#pragma once

#include "commondlg3/export.h"
#include "commondlg3/message_window.h"

#include <cpil/varg_list.h>

#include <wx/colour.h>
#include <wx/control.h>
#include <wx/gdicmn.h>
#include <wx/stattext.h>

#include <string>

namespace vdxcfrw7 {
class CImage;
}

namespace commondlg3 {

/// The catalog's text of `key`, formatted with `args`. An empty list stands for the product's names,
/// "prod_name" and "prod_short_name"; any other list is used as it is. A missing catalog or text is not an
/// error: the answer then says so in place of the message. Any thread.
COMMONDLG3_EXPORT std::string translate_message(const std::string& key,
                                                const CPIL_2_18::generic::varg_list& args = {});

/// The first character as a capital one; the others stay.
COMMONDLG3_EXPORT std::string set_1st_letter_uppercase(const std::string& text);

/// "\n" becomes "\r\n" wherever no "\r" stands before it.
COMMONDLG3_EXPORT std::string restore_line_endings(const std::string& text);

/// Gives a control the bold font of the user-interface settings.
COMMONDLG3_EXPORT void set_bold_font(wxControl* ctrl);

/// Sets the label's text and wraps it at the parent's width less `margin` pixels.
COMMONDLG3_EXPORT void wrap_by_parent(wxWindow* parent, wxStaticText* label, const std::string& text,
                                      int margin);

/// Raises `max_width`, in pixels, to the width of `text` in the window's font.
COMMONDLG3_EXPORT void process_max_width(wxWindow* win, const wxString& text, int& max_width);

/// The extent of `text` in the window's current font, in pixels; (0, 0) without a window.
COMMONDLG3_EXPORT wxSize get_text_extent(wxWindow* win, const std::string& text);

/// Colours a control's text and says why in its tool tip and to screen readers: colour never stands alone.
COMMONDLG3_EXPORT void set_color_and_tooltip(wxControl* ctrl, const std::string& tooltip, wxColour colour);

/// A tool tip wrapped to a readable width, which stays long enough for its text to be read.
COMMONDLG3_EXPORT void set_tooltip(const std::string& text, wxWindow* win);

/// The tool tip of a control that may be disabled: with `disabled` and a reason, the text and below it the
/// reason.
COMMONDLG3_EXPORT std::string get_disabled_tooltip_text(const std::string& text, const std::string& reason,
                                                        bool disabled);

/// Moves a window that hangs over the right or the lower edge of the display back onto it; its size is kept.
COMMONDLG3_EXPORT void move_to_visible_area(wxWindow* win);

/// Shows a modal message window with a Close button and two texts that are already translated.
/// @return the code of show_modal(const message_window_t&, wxWindow*), or 6, with nothing shown, when there
/// is neither a parent nor a main window
COMMONDLG3_EXPORT int show_msg_box(const std::string& text1, const std::string& text2,
                                   message_window_t::icon_types_t icon, wxWindow* parent);

/// Gives a picture of the toolkit layer to an image of the control framework: the picture itself, not its
/// pixels, so that it stays sharp at every scale and follows the theme's ink.
COMMONDLG3_EXPORT void set_vdxc_icon(vdxcfrw7::CImage& image, const wx_helpers1::picture_t& picture);

} // namespace commondlg3
