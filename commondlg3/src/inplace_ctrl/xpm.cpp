#include "xpm.h"

#include <wx/log.h>
#include <wx/sstream.h>
#include <wx/xpmdecod.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace commondlg3 {
namespace {

constexpr long largest_side = 1024;
constexpr long most_colours = 65536;
constexpr std::size_t most_strings = 1 + largest_side + most_colours;
constexpr std::size_t longest_xpm = std::size_t(8) * 1024 * 1024;

// What stands between quotes. The toolkit's reader of files cuts what looks like a comment out of pixels as
// well, with copies that overlap.
std::vector<std::string> strings_of(const std::string& xpm)
{
    std::vector<std::string> strings;
    std::size_t at = 0;
    while (strings.size() < most_strings && (at = xpm.find_first_of("/\"", at)) != std::string::npos) {
        const bool is_string = xpm[at] == '"';
        if (!is_string && xpm.compare(at, 2, "/*") != 0) {
            ++at;
            continue;
        }
        const std::size_t begin = at + (is_string ? 1 : 2);
        const std::size_t end = xpm.find(is_string ? "\"" : "*/", begin);
        if (end == std::string::npos)
            break;
        if (is_string)
            strings.push_back(xpm.substr(begin, end - begin));
        at = end + (begin - at);
    }
    return strings;
}

// The first string says width, height, colours and characters a pixel; one for each colour and each row
// follows. The toolkit allocates what they claim and trusts that the rest is there.
bool is_sane(const std::vector<std::string>& strings)
{
    if (strings.empty())
        return false;
    const char* at = strings.front().c_str();
    long numbers[4];
    for (long& number : numbers) {
        char* end = nullptr;
        number = std::strtol(at, &end, 10);
        if (end == at || number <= 0)
            return false;
        at = end;
    }
    const auto [width, height, colours, letters] = numbers;
    if (width > largest_side || height > largest_side || colours > most_colours || letters > 4 ||
        strings.size() < static_cast<std::size_t>(1 + colours + height))
        return false;
    const auto all_hold = [&](long from, long to, long length) {
        return std::all_of(strings.begin() + from, strings.begin() + to, [length](const std::string& string) {
            return std::strlen(string.c_str()) >= static_cast<std::size_t>(length);
        });
    };
    return all_hold(1, 1 + colours, letters) && all_hold(1 + colours, 1 + colours + height, width * letters);
}

} // namespace

std::string image_to_xpm(const wxImage& image)
{
    if (!image.IsOk())
        return {};
    const wxLogNull silent;
    // The format knows a pixel as there or not there.
    wxImage masked = image.Copy();
    if (masked.HasAlpha() && !masked.ConvertAlphaToMask(64))
        return {};
    wxString text;
    wxStringOutputStream stream(&text, wxConvUTF8);
    if (!wxXPMHandler().SaveFile(&masked, stream, false))
        return {};
    return text.utf8_string();
}

wxImage image_from_xpm(const std::string& xpm)
{
    if (xpm.size() > longest_xpm)
        return wxImage();
    const std::vector<std::string> strings = strings_of(xpm);
    if (!is_sane(strings))
        return wxImage();
    std::vector<const char*> data;
    data.reserve(strings.size());
    for (const std::string& string : strings)
        data.push_back(string.c_str());
    const wxLogNull silent;
    return wxXPMDecoder().ReadData(data.data());
}

} // namespace commondlg3
