#pragma once

#include "commondlg3/export.h"

#include <wx/window.h>
#include <wx/xrc/xmlres.h>

#include <string>

namespace commondlg3 {

/// The full name of a member of an archive in the product's resource directory:
/// `<directory>/<archive>#zip:<member>`. Bytes; any thread.
COMMONDLG3_EXPORT std::string create_resource_filename(const std::string& archive, const std::string& member);

/// Finds a control by its object name in the resource, at any depth below `parent`.
///
///     m_name = from_xrc<wxTextCtrl>(this, "m_name");
///
/// @return null when there is none: check it. A control of another class fails the toolkit's checked cast.
/// The control stays its parent's. GUI thread.
template <class T>
T* from_xrc(wxWindow* parent, const std::string& name)
{
    wxWindow* found =
        parent ? parent->FindWindow(wxXmlResource::GetXRCID(wxString::FromUTF8(name.data(), name.size())))
               : nullptr;
    return found ? wxStaticCast(found, T) : nullptr;
}

} // namespace commondlg3
