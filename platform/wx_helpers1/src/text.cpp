#include "wx_helpers1/text.h"

#include <gen_helpers2/strings.h>

#include <wx/strconv.h>

#include <cstring>
#include <langinfo.h>

namespace wx_helpers1 {
namespace {

// The toolkit's own lossless conversion: a bad byte becomes one private-use character and back.
const wxMBConvUTF8& lossless()
{
    static const wxMBConvUTF8 conversion(wxMBConvUTF8::MAP_INVALID_UTF8_TO_PUA);
    return conversion;
}

bool locale_carries_utf8()
{
    const char* codeset = nl_langinfo(CODESET);
    return std::strcmp(codeset, "UTF-8") == 0 || std::strcmp(codeset, "ANSI_X3.4-1968") == 0;
}

} // namespace

wxString to_wx(const std::string& utf8)
{
    return wxString(utf8.data(), lossless(), utf8.size());
}

std::string from_wx(const wxString& text)
{
    const wxScopedCharBuffer bytes = text.mb_str(lossless());
    return bytes.data() ? std::string(bytes.data(), bytes.length()) : std::string();
}

wxString to_label(const std::string& utf8)
{
    const bool may_override = utf8.find("\xE2\x80") != std::string::npos;
    if (!may_override && gen_helpers2::is_valid_utf8(utf8))
        return wxString::FromUTF8Unchecked(utf8.data(), utf8.size());
    const std::string shown = gen_helpers2::replace_overrides(gen_helpers2::replace_invalid_utf8(utf8));
    return wxString::FromUTF8(shown.data(), shown.size());
}

wxString to_plain_label(const std::string& utf8)
{
    wxString label = to_label(utf8);
    label.Replace("&", "&&");
    return label;
}

wxString to_wx_locale(const std::string& text)
{
    if (locale_carries_utf8())
        return to_wx(text);
    const wxString converted(text.data(), wxConvLibc, text.size());
    return converted.empty() && !text.empty() ? to_wx(text) : converted;
}

std::string from_wx_locale(const wxString& text)
{
    if (locale_carries_utf8())
        return from_wx(text);
    const wxScopedCharBuffer bytes = text.mb_str(wxConvLibc);
    return bytes.length() || text.empty() ? std::string(bytes.data(), bytes.length()) : from_wx(text);
}

} // namespace wx_helpers1
