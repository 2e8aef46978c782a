#include "commondlg3/error_warning_dialog.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace commondlg3 {

std::vector<std::string> create_multi_line(std::size_t max_len, const std::string& text)
{
    std::vector<std::string> lines;
    std::size_t line_start = 0;
    std::size_t last_space = 0;
    // Signed: after a cut at the start of a line the count begins below zero.
    const auto limit = static_cast<std::ptrdiff_t>(std::min<std::size_t>(max_len, PTRDIFF_MAX));
    std::ptrdiff_t count = 0;
    const auto start_line = [&](std::size_t at, std::ptrdiff_t already_counted) {
        line_start = last_space = at;
        count = already_counted;
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == ' ') {
            last_space = i;
            ++count;
        } else if (text[i] == '\n') {
            lines.push_back(text.substr(line_start, i - line_start));
            start_line(i + 1, 0);
        } else if (++count >= limit) {
            // Without a space in the line the cut is at its start: an empty line, and the byte there is lost.
            lines.push_back(text.substr(line_start, last_space - line_start));
            start_line(last_space + 1, static_cast<std::ptrdiff_t>(i - last_space) - 1);
        }
    }
    if (line_start < text.size())
        lines.push_back(text.substr(line_start));
    return lines;
}

std::string content_for_label(const std::vector<std::string>& lines)
{
    std::string content;
    for (const std::string& line : lines) {
        if (&line != &lines.front())
            content += '\n';
        content += line;
    }
    return content;
}

} // namespace commondlg3
