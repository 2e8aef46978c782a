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
/// @return null when there is none, or one of another class, which also fails the toolkit's check of casts: a
/// layout may be replaced, so check it. The control stays its parent's. GUI thread.
template <class T>
T* from_xrc(wxWindow* parent, const std::string& name)
{
    wxWindow* found =
        parent ? parent->FindWindow(wxXmlResource::GetXRCID(wxString::FromUTF8(name.data(), name.size())))
               : nullptr;
    T* control = dynamic_cast<T*>(found);
    wxASSERT_MSG(control || !found, "wxStaticCast() used incorrectly");
    return control;
}

} // namespace commondlg3
