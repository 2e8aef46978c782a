#include "xpm.h"

#include <wx_helpers1/text.h>

#include <wx/log.h>
#include <wx/sstream.h>

#include <cctype>
#include <cstdlib>

namespace commondlg3 {
namespace {

constexpr long largest_side = 1024;
constexpr long most_colours = 65536;
constexpr std::size_t longest_xpm = std::size_t(8) * 1024 * 1024;

void add_handler()
{
    if (!wxImage::FindHandler(wxBITMAP_TYPE_XPM))
        wxImage::AddHandler(new wxXPMHandler);
}

// The first string of the text: width, height, colours, characters a pixel. The toolkit's reader allocates
// what they claim and trusts that the rest is there.
bool has_sane_header(const std::string& xpm)
{
    const std::size_t quote = xpm.find('"');
    if (quote == std::string::npos)
        return false;
    const char* at = xpm.c_str() + quote + 1;
    long numbers[4];
    for (long& number : numbers) {
        char* end = nullptr;
        number = std::strtol(at, &end, 10);
        if (end == at || number <= 0)
            return false;
        at = end;
    }
    if (numbers[0] > largest_side || numbers[1] > largest_side || numbers[2] > most_colours || numbers[3] > 4)
        return false;
    // Each row is a string of its own, and so is each colour.
    std::size_t strings = 0;
    for (std::size_t i = quote; i < xpm.size(); ++i)
        strings += xpm[i] == '"' ? 1 : 0;
    return strings / 2 >= static_cast<std::size_t>(1 + numbers[1] + numbers[2]) &&
           xpm.size() >= static_cast<std::size_t>(numbers[0] * numbers[1] * numbers[3]);
}

} // namespace

std::string image_to_xpm(const wxImage& image)
{
    if (!image.IsOk())
        return {};
    const wxLogNull silent;
    add_handler();
    // The format knows a pixel as there or not there.
    wxImage masked = image.Copy();
    if (masked.HasAlpha() && !masked.ConvertAlphaToMask(64))
        return {};
    wxString text;
    wxStringOutputStream stream(&text, wxConvUTF8);
    if (!masked.SaveFile(stream, wxBITMAP_TYPE_XPM))
        return {};
    return text.utf8_string();
}

wxImage image_from_xpm(const std::string& xpm)
{
    wxImage image;
    if (xpm.size() > longest_xpm || !has_sane_header(xpm))
        return image;
    const wxLogNull silent;
    add_handler();
    wxStringInputStream stream(wx_helpers1::to_label(xpm));
    if (!image.LoadFile(stream, wxBITMAP_TYPE_XPM, -1))
        return wxImage();
    return image;
}

} // namespace commondlg3
