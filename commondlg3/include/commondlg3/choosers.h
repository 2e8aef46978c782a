/// @file
/// The toolkit's own choosers of files, folders, fonts and colours, all called in one way: the current value
/// goes in by reference, the chooser starts from it, and on OK it is replaced and the answer is true. On any
/// other ending it stays as it was, and so it does when nothing was selected.
///
///     std::string path = m_data.file;
///     if (commondlg3::file_dlg(this, true, path, "txt", "Text|*.txt\nAll|*.*", {}, {}))
///         m_data.file = path;
///
/// A title left empty comes from the message catalog. Each call runs a modal loop. GUI thread.
#pragma once

#include "commondlg3/export.h"

#include <string>

class wxColourData;
class wxFontData;
class wxTextCtrl;
class wxWindow;

namespace commondlg3 {

/// @param open true to open a file, false to save one
/// @param path full path, or a bare name
/// @param extension without its dot: the entry of the filter that is chosen at first; empty: the first entry
/// @param filter entries "description|pattern", one a line or separated by "|"
/// @param directory to start in; empty: that of the path
COMMONDLG3_EXPORT bool file_dlg(wxWindow* parent, bool open, std::string& path, const std::string& extension,
                                const std::string& filter, const std::string& title,
                                const std::string& directory);
/// Starts at `path` or, where that is missing, at the nearest folder above it.
COMMONDLG3_EXPORT bool folder_dlg(wxWindow* parent, std::string& path, const std::string& title);
/// Begins with the initial font of `data`; what was chosen is its chosen font.
COMMONDLG3_EXPORT bool font_dlg(wxWindow* parent, wxFontData& data);
/// Begins with the colour of `data`, which also holds the user's own colours.
COMMONDLG3_EXPORT bool color_dlg(wxWindow* parent, wxColourData& data);

/// What a browse button beside a field does: a folder chooser that starts at the field's folder. The chosen
/// folder is put into the field as if it had been typed, so that the field's text event follows.
COMMONDLG3_EXPORT void process_browse_folder(wxWindow* parent, wxTextCtrl* ctrl);

} // namespace commondlg3
