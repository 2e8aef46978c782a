#pragma once

#include "wx_helpers1/export.h"

#include <string>

class wxDialog;
class wxPanel;
class wxWindow;

namespace wx_helpers1 {

/// Builds dialogs and panels from an XML resource, in the language of a message catalog.
///
/// Labels, titles, tool tips, hints and choices in the resource are keys of the catalog and stand translated
/// before the window's own code runs; a key that the catalog lacks shows itself. A resource is read and
/// parsed once a process and language; a failed reading is tried again.
///
///     resource_loader_t loader(resource_file, "commondlg");
///     if (!loader.load_dialog(this, parent, "dlg.ask"))
///         ...                                             // nothing was created
///
/// The loader itself is a cheap value. GUI thread; failures are logged and answered with false, never shown.
class WX_HELPERS1_EXPORT resource_loader_t
{
public:
    /// @param resource_file "<archive>#zip:<member>"
    resource_loader_t(const std::string& resource_file, const std::string& catalog_name);

    /// Creates the not yet created dialog with the layout of that object. A null parent is a dialog of its
    /// own.
    bool load_dialog(wxDialog* dialog, wxWindow* parent, const std::string& object_name) const;

    /// Creates the panel as a child of `parent` with the layout of that object. A panel that was created
    /// before (empty, after a failed load) is filled. A null parent gives false.
    bool load_panel(wxPanel* panel, wxWindow* parent, const std::string& object_name) const;

    /// Whether a layout can be had.
    enum class state_t
    {
        ok,          ///< it can be had
        no_resource, ///< the archive or its member cannot be read
        no_object    ///< the resource has no object of that name
    };
    /// What a load of this object would meet; for telling the user what is missing.
    state_t examine(const std::string& object_name) const;

private:
    std::string m_file;
    std::string m_catalog;
};

} // namespace wx_helpers1
