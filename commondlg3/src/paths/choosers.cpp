#include "commondlg3/choosers.h"

#include "base/kept_text.h"

#include <cpil/catalog.h>
#include <gen_helpers2/path.h>
#include <wx_helpers1/chosen_path.h>
#include <wx_helpers1/modal_flavor.h>
#include <wx_helpers1/text.h>

#include <wx/colordlg.h>
#include <wx/dirdlg.h>
#include <wx/filedlg.h>
#include <wx/fontdlg.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <climits>

namespace commondlg3 {
namespace {

using wx_helpers1::from_wx;
using wx_helpers1::show_modal_chooser;
using wx_helpers1::to_label;
using wx_helpers1::to_wx;

// The toolkit's form of a filter, and which entry of it has the pattern of the extension.
std::string toolkit_filter(std::string filter, const std::string& extension, int& index)
{
    index = 0;
    std::replace(filter.begin(), filter.end(), '\n', '|');
    const std::size_t found = extension.empty() ? std::string::npos : filter.rfind("." + extension);
    if (found != std::string::npos)
        index = static_cast<int>(std::count(filter.begin(), filter.begin() + found, '|') / 2);
    if (!filter.empty() && filter.back() == '|')
        filter.pop_back();
    return filter;
}

// A folder that is yet to be made: the toolkit would begin with what was used last.
std::string nearest_folder(const std::string& path)
{
    // What is longer is nowhere, and has as many parents as letters.
    gen_helpers2::path_t at(path.substr(0, path.size() < PATH_MAX ? path.size() : path.rfind('/', PATH_MAX)));
    while (at.is_absolute() && !at.is_directory())
        at = at.parent();
    return at.is_absolute() ? at.as_string() : path;
}

} // namespace

bool file_dlg(wxWindow* parent, bool open, std::string& path, const std::string& extension,
              const std::string& filter, const std::string& title, const std::string& directory)
{
    const std::string& usual_title = kept_text(CPIL_2_18::i18n::catalog_key("dlg.browse_file.name"));
    std::string start = directory;
    std::string name = path;
    const std::size_t separator = path.find_last_of("/\\");
    if (separator != std::string::npos) {
        if (start.empty())
            start = path.substr(0, separator);
        name = path.substr(separator + 1);
    }
    int index = 0;
    const std::string filters = toolkit_filter(filter, extension, index);
    wxFileDialog dialog(parent, to_label(title.empty() ? usual_title : title), to_wx(start), to_wx(name),
                        filters.empty() ? wxString(wxFileSelectorDefaultWildcardStr) : to_label(filters),
                        2 - static_cast<int>(open));
    dialog.SetFilterIndex(index);
    if (show_modal_chooser(dialog) != wxID_OK)
        return false;
    const std::string chosen = wx_helpers1::get_chosen_path(dialog);
    if (chosen.empty())
        return false;
    path = chosen;
    return true;
}

bool folder_dlg(wxWindow* parent, std::string& path, const std::string& title)
{
    const std::string& usual_title = kept_text(CPIL_2_18::i18n::catalog_key("dlg.browse_folder.name"));
    wxDirDialog dialog(parent, to_label(title.empty() ? usual_title : title), to_wx(nearest_folder(path)), 0);
    wx_helpers1::cancel_empty_choice(dialog);
    if (show_modal_chooser(dialog) != wxID_OK)
        return false;
    const std::string chosen = wx_helpers1::get_chosen_path(dialog);
    if (chosen.empty())
        return false;
    path = chosen;
    return true;
}

bool font_dlg(wxWindow* parent, wxFontData& data)
{
    wxFontDialog dialog(parent, data);
    if (show_modal_chooser(dialog) != wxID_OK)
        return false;
    data = dialog.GetFontData();
    return true;
}

bool color_dlg(wxWindow* parent, wxColourData& data)
{
    wxColourDialog dialog(parent, &data);
    if (show_modal_chooser(dialog) != wxID_OK)
        return false;
    data = dialog.GetColourData();
    return true;
}

void process_browse_folder(wxWindow* parent, wxTextCtrl* ctrl)
{
    if (!ctrl)
        return;
    std::string folder = from_wx(ctrl->GetValue());
    if (folder_dlg(parent, folder, std::string()))
        ctrl->SetValue(to_wx(folder));
}

} // namespace commondlg3
