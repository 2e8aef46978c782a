/// @file
/// The border between our strings (UTF-8 bytes) and the toolkit's.
///
/// Use these three functions, never wxString::FromUTF8(): that one answers one bad byte with an empty
/// string.
///
///     label->SetLabel(wx_helpers1::to_label(message));            // to be read
///     field->ChangeValue(wx_helpers1::to_wx(path));               // to be edited
///     path = wx_helpers1::from_wx(field->GetValue());             // the same bytes again
///
/// Any thread.
#pragma once

#include "wx_helpers1/export.h"

#include <wx/string.h>

#include <string>

namespace wx_helpers1 {

/// Text for a control whose text comes back: bytes that are not UTF-8 are carried in private-use characters
/// and from_wx() gives the same bytes again.
WX_HELPERS1_EXPORT wxString to_wx(const std::string& utf8);

/// The bytes of a text that came from the toolkit; the inverse of to_wx().
WX_HELPERS1_EXPORT std::string from_wx(const wxString& text);

/// Text for reading only: each run of bytes that are not UTF-8 shows as U+FFFD, as does a character that
/// turns the order of others around by force, and a null character.
WX_HELPERS1_EXPORT wxString to_label(const std::string& utf8);

/// to_label() for controls in which '&' marks a mnemonic (labels, buttons, menus): '&' shows as itself.
WX_HELPERS1_EXPORT wxString to_plain_label(const std::string& utf8);

/// The conversions of window titles, in the encoding of the current locale. In a UTF-8 locale, and in the
/// "C" locale, which cannot carry our texts, they are to_wx() and from_wx().
WX_HELPERS1_EXPORT wxString to_wx_locale(const std::string& text);
/// The way back.
WX_HELPERS1_EXPORT std::string from_wx_locale(const wxString& text);

} // namespace wx_helpers1
