#pragma once

#include <string>

class wxDialog;
class wxPanel;
class wxWindow;
class wxXmlResource;

namespace wx_helpers1 {

/// Layouts built ahead of their next use.
///
/// Building the controls is the largest single cost of opening a window, and it does not depend on what
/// the window will show. Once an object was opened its layout is built again, hidden, while nothing else
/// is to be done; the next opening moves these controls in. There is one spare of a layout and language
/// at most.
///
/// Only windows that say no more of themselves than title, style and size have spares: everything else in
/// their resource belongs to their controls, which move as they are. GUI thread.
namespace spare_layouts {

/// Creates the dialog with the controls of a spare. False, and nothing done, when there is none.
bool make_dialog(wxDialog* dialog, wxWindow* parent, const std::string& key);

/// Creates the panel, unless it is there already, with the controls of a spare. False as above.
bool make_panel(wxPanel* panel, wxWindow* parent, const std::string& key);

/// Builds a spare later, when the loop has nothing better to do.
/// @param key what tells one layout from another: resource, catalog, language and object
/// @param finish what is done with a layout after it was built
void build_later(const std::string& key, wxXmlResource* resource, const std::string& object,
                 void (*finish)(wxWindow*));

/// Throws all away, as they were measured in a look that is no more.
void forget();

} // namespace spare_layouts
} // namespace wx_helpers1
