/// @file
/// What a screen reader is told of a window. GUI thread; a null or not yet created window does nothing.
#pragma once

#include "wx_helpers1/export.h"

#include <string>

class wxStaticText;
class wxWindow;

namespace wx_helpers1 {

/// What a screen reader takes a window for.
enum class accessible_role_t
{
    image,
    dialog,
    alert,
    label,
    panel
};

/// What a screen reader calls a window that has no label.
WX_HELPERS1_EXPORT void set_accessible_name(wxWindow* window, const std::string& name);
/// What a screen reader says of a window after its name.
WX_HELPERS1_EXPORT void set_accessible_description(wxWindow* window, const std::string& description);
/// For windows that draw themselves, and are taken for panels otherwise.
WX_HELPERS1_EXPORT void set_accessible_role(wxWindow* window, accessible_role_t role);
/// Makes a label the name of a field: for screen readers, and for the label's mnemonic, which then leads to
/// the field.
WX_HELPERS1_EXPORT void set_label_for(wxStaticText* label, wxWindow* field);

/// Has a label's mnemonic lead to a field that has a name of its own. The toolkit ties labels as well, but
/// only when nothing else is left to do: a key pressed before finds nothing, and it complains.
/// @since 3.1
WX_HELPERS1_EXPORT void tie_label(wxStaticText* label, wxWindow* field);

/// Makes a text that the window shows the description of a control.
/// @since 3.1
WX_HELPERS1_EXPORT void set_described_by(wxWindow* control, wxStaticText* text);
/// Whether set_described_by() has given it a description.
/// @since 3.1
WX_HELPERS1_EXPORT bool is_described(wxWindow* control);

/// For a text that no layout made: keeps the toolkit from making it the name of whatever control follows it.
/// @since 3.1
WX_HELPERS1_EXPORT void keep_label_relations(wxStaticText* label);

/// Has a screen reader say in passing what happened in a window. Sparingly: it breaks off what is being said.
/// @since 3.1
WX_HELPERS1_EXPORT void announce(wxWindow* window, const std::string& text);

/// The name that was set, or that the toolkit gives; empty when there is none.
WX_HELPERS1_EXPORT std::string get_accessible_name(wxWindow* window);
/// What a screen reader says: the text of the label that belongs to the window, or else its name.
/// @since 3.1
WX_HELPERS1_EXPORT std::string get_spoken_name(wxWindow* window);

} // namespace wx_helpers1
