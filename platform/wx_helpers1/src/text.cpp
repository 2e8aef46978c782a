#include "wx_helpers1/text.h"

#include <gen_helpers2/strings.h>

#include <wx/strconv.h>

#include <cstring>
#include <langinfo.h>
#include <string_view>

namespace wx_helpers1 {
namespace {

// One private-use character carries each byte that is no UTF-8, and those of such characters themselves.
constexpr wxUint32 first_carrier = 0x100000;
constexpr std::string_view carriers = "\xF4\x80"; // and some more begin so

// The toolkit's own lossless conversion, for the way back.
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

// Not the conversion's own way: it takes surrogates and numbers beyond the last character for characters,
// which nothing can show or convert.
wxString to_wx(const std::string& utf8)
{
    if (utf8.find(carriers) == std::string::npos && gen_helpers2::is_valid_utf8(utf8))
        return wxString::FromUTF8Unchecked(utf8.data(), utf8.size());
    wxString text;
    std::size_t valid = 0; // where what is not appended yet begins
    for (std::size_t at = 0; at <= utf8.size();) {
        const std::string_view rest = std::string_view(utf8).substr(at);
        const std::size_t length =
            rest.substr(0, carriers.size()) == carriers ? 0 : gen_helpers2::utf8_sequence_length(rest);
        if (length == 0) {
            if (at > valid)
                text += wxString::FromUTF8Unchecked(utf8.data() + valid, at - valid);
            if (!rest.empty())
                text += wxUniChar(first_carrier + static_cast<unsigned char>(rest.front()));
            valid = at + 1;
        }
        at += length ? length : 1;
    }
    return text;
}

std::string from_wx(const wxString& text)
{
    const wxScopedCharBuffer bytes = text.mb_str(lossless());
    return bytes.data() ? std::string(bytes.data(), bytes.length()) : std::string();
}

wxString to_label(const std::string& utf8)
{
    const bool has_unshown =
        utf8.find("\xE2\x80") != std::string::npos || utf8.find('\0') != std::string::npos;
    if (!has_unshown && gen_helpers2::is_valid_utf8(utf8))
        return wxString::FromUTF8Unchecked(utf8.data(), utf8.size());
    const std::string shown = gen_helpers2::replace_overrides(gen_helpers2::replace_invalid_utf8(utf8));
    wxString label = wxString::FromUTF8(shown.data(), shown.size());
    label.Replace(wxString(wxUniChar(0)),
                  wxString::FromUTF8("\xEF\xBF\xBD")); // where the toolkit would end it
    return label;
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
