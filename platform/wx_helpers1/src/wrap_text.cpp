#include "wx_helpers1/wrap_text.h"

#include "wx_helpers1/text.h"

#include <wx/dcclient.h>
#include <wx/window.h>

#include <algorithm>

namespace wx_helpers1 {
namespace {

bool is_right_to_left(wchar_t c)
{
    return (c >= 0x590 && c < 0x900) || (c >= 0xfb1d && c < 0xfe00) || (c >= 0xfe70 && c < 0xff00);
}

// The edges of a paragraph in which the direction changes come in the order of the screen, and its letters
// are joined another way at the end of a line: the guess that the edges gave is put right, a word at a time.
std::size_t correct_end(const std::wstring& text, std::size_t start, std::size_t end, int width, wxDC& dc)
{
    // No letter is narrower than a pixel: of a word without an end no more is measured, again and again.
    const auto fits = [&](std::size_t to) {
        return to - start <= static_cast<std::size_t>(width) &&
               dc.GetTextExtent(wxString(text.data() + start, to - start)).x <= width;
    };
    while (end > start + 1 && !fits(end)) {
        const std::size_t space = text.rfind(L' ', end - 1);
        end = space != std::wstring::npos && space > start ? space : end - 1;
    }
    while (end < text.size()) {
        const std::size_t next = std::min(text.find(L' ', end + 1), text.size());
        if (!fits(next))
            break;
        end = next;
    }
    return end;
}

std::size_t shortened(const std::wstring& text, std::size_t start, std::size_t end, int width, wxDC& dc)
{
    while (end > start + 1 && dc.GetTextExtent(wxString(text.data() + start, end - start)).x > width)
        --end;
    return end;
}

// One measurement gives every character's right edge in its paragraph, so that breaking stays linear in its
// length.
void wrap_paragraph(const wxString& paragraph, int width, wxDC& dc, wxString& result, int& lines)
{
    wxArrayInt edges;
    if (paragraph.empty() || !dc.GetPartialTextExtents(paragraph, edges) ||
        edges.size() != paragraph.length()) {
        result += paragraph;
        return;
    }
    const std::wstring text = paragraph.ToStdWstring();
    const bool reordered = std::any_of(text.begin(), text.end(), is_right_to_left);
    std::size_t start = 0;
    while (start < text.size()) {
        const int left = start ? edges[start - 1] : 0;
        std::size_t end = start;
        while (end < text.size() && edges[end] - left <= width)
            ++end;
        if (reordered)
            end = correct_end(text, start, end, width, dc);
        else if (dc.GetTextExtent(wxString(text.data() + start, end - start)).x > width)
            end = shortened(text, start, end, width, dc); // letters stand farther apart than in the whole
        std::size_t next = end;
        if (end < text.size()) {
            const std::size_t space = text[end] == L' ' ? end : text.rfind(L' ', end);
            if (space != std::wstring::npos && space > start) {
                end = space;
                next = space + 1;
            } else {
                end = std::max(end, start + 1);
                next = end;
            }
        }
        result += wxString(text.data() + start, end - start);
        start = next;
        if (start < text.size()) {
            result += '\n';
            ++lines;
        }
    }
}

} // namespace

std::string wrap_text(const std::string& text, int width, wxWindow*, int& lines, int margin, wxDC& dc)
{
    const wxString whole = to_wx(text);
    const int room = width - margin;
    wxString result;
    std::size_t start = 0;
    while (true) {
        const std::size_t end = whole.find('\n', start);
        const wxString paragraph = whole.substr(start, end == wxString::npos ? wxString::npos : end - start);
        if (room > 0)
            wrap_paragraph(paragraph, room, dc, result, lines);
        else
            result += paragraph;
        if (end == wxString::npos)
            break;
        result += '\n';
        ++lines;
        start = end + 1;
    }
    return from_wx(result);
}

std::string wrap_text(const std::string& text, int width, wxWindow* window)
{
    if (!window)
        return text;
    wxClientDC dc(window);
    dc.SetFont(window->GetFont());
    int lines = 1;
    return wrap_text(text, width, window, lines, 0, dc);
}

} // namespace wx_helpers1
