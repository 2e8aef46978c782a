/// @file
/// Breaking texts into lines of a width in pixels. GUI thread.
#pragma once

#include "wx_helpers1/export.h"

#include <string>

class wxDC;
class wxWindow;

namespace wx_helpers1 {

/// Breaks `text` so that no line, measured with `dc`, is wider than `width` less `margin` pixels: at spaces
/// where it can, and inside a word that is wider than a line. Line feeds of the text stay. A width too small
/// for any character gives a character a line; a width of 0 or less leaves the text as it is.
///
/// @param lines is raised by each break, so that a caller who starts it at 1 ends with the number of lines
/// @return the lines joined by "\n"; bytes that are not UTF-8 are kept
WX_HELPERS1_EXPORT std::string wrap_text(const std::string& text, int width, wxWindow* window, int& lines,
                                         int margin, wxDC& dc);

/// The same in the window's own font, without margin.
WX_HELPERS1_EXPORT std::string wrap_text(const std::string& text, int width, wxWindow* window);

} // namespace wx_helpers1
