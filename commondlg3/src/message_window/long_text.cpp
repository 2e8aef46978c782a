#include "long_text.h"

#include <wx_helpers1/scrolled_text.h>
#include <wx_helpers1/text.h>

#include <wx/settings.h>

#include <algorithm>
#include <string>

namespace commondlg3 {
namespace {

// What a label lays out within some milliseconds.
constexpr std::size_t most_bytes_of_label = std::size_t(32) * 1024;
constexpr std::size_t most_bytes_of_label_line = 1500;
// The widget lays out a paragraph as a whole when any of it is seen.
constexpr std::size_t most_characters_of_paragraph = 1000;
constexpr std::size_t longest_whole_word = 200;
// Ends a paragraph on the screen where the text has no end of a line; taken out of what is copied.
constexpr wchar_t paragraph_separator = 0x2029;

bool continues_cluster(wchar_t c)
{
    return (c >= 0x300 && c < 0x370) || c == 0x200D || (c >= 0xFE00 && c < 0xFE10) ||
           (c >= 0x20D0 && c < 0x2100);
}

wxString in_paragraphs(const wxString& text)
{
    std::wstring result;
    result.reserve(text.length() + text.length() / most_characters_of_paragraph + 1);
    std::size_t count = 0;
    bool ends_word = false;
    for (const wchar_t c : text.ToStdWstring()) {
        // A word stays whole, and a cluster, unless somebody made one without an end.
        const bool full =
            count >= most_characters_of_paragraph &&
            (ends_word || (count >= most_characters_of_paragraph + longest_whole_word &&
                           (!continues_cluster(c) || count >= 2 * most_characters_of_paragraph)));
        if (full && c != '\n') {
            result += paragraph_separator;
            count = 0;
        }
        result += c == paragraph_separator ? L'\n' : c;
        count = c == '\n' ? 0 : count + 1;
        ends_word = c == ' ';
    }
    return result;
}

} // namespace

bool is_long_text(const std::string& text)
{
    if (text.size() > most_bytes_of_label)
        return true;
    std::size_t line_start = 0;
    while (text.size() - line_start > most_bytes_of_label_line) {
        const std::size_t line_end = text.find('\n', line_start);
        if (line_end == std::string::npos || line_end - line_start > most_bytes_of_label_line)
            return true;
        line_start = line_end + 1;
    }
    return false;
}

long_text_t::long_text_t(wxWindow* parent)
    : wxTextCtrl(parent, wxID_ANY, wxEmptyString, wxDefaultPosition, wxDefaultSize,
                 wxTE_MULTILINE | wxTE_READONLY | wxBORDER_NONE)
{
    wx_helpers1::scroll_only_down(this);
}

void long_text_t::set_texts(const std::string& main, const std::string& supplemental,
                            const std::string& details)
{
    wxString all;
    for (const std::string* text : {&main, &supplemental, &details})
        if (!text->empty())
            all +=
                (all.empty() ? wxString() : wxString("\n\n")) + in_paragraphs(wx_helpers1::to_label(*text));
    // Plain throughout: the toolkit's styles carry colours of their own, which the dark theme does not change.
    // And at once: what is appended is scrolled to.
    ChangeValue(all);
    SetInsertionPoint(0);
    ShowPosition(0);
}

std::string long_text_t::get_selected() const
{
    wxString selected = GetStringSelection();
    selected.Replace(wxString(paragraph_separator), wxString());
    return wx_helpers1::from_wx(selected);
}

int long_text_t::estimated_height(int width) const
{
    const int characters_per_line = std::max(1, width / std::max(1, GetCharWidth()));
    const long lines = GetLastPosition() / characters_per_line + GetNumberOfLines();
    return static_cast<int>(std::min(lines, 1000L)) * GetCharHeight();
}

bool long_text_t::scroll_by_key(int key_code)
{
    switch (key_code) {
    case WXK_PAGEUP:
        ScrollPages(-1);
        return true;
    case WXK_PAGEDOWN:
        ScrollPages(1);
        return true;
    case WXK_HOME:
        ShowPosition(0);
        return true;
    case WXK_END:
        ShowPosition(GetLastPosition());
        return true;
    default:
        return false;
    }
}

} // namespace commondlg3
