#include "printed_lines.h"

#include <algorithm>

namespace gallery {
namespace {

constexpr std::string_view null_picture = "\xe2\x90\x80"; // a line is handed on as far as its first null

} // namespace

void printed_lines_t::add(std::string_view bytes)
{
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find_first_of(std::string_view("\r\n\0", 3)), bytes.size());
        const std::size_t room = longest - std::min(longest, m_line.size());
        const std::size_t count = std::min(end, room);
        m_line.append(bytes, 0, count);
        if (count > 0)
            m_returned = false;
        bytes.remove_prefix(count);
        if (count < end || m_line.size() >= longest) {
            end_line();
            continue;
        }
        if (bytes.empty())
            return;
        const char c = bytes.front();
        bytes.remove_prefix(1);
        if (c == '\0') {
            m_line += null_picture;
            m_returned = false;
        } else if (c == '\r') {
            if (!m_line.empty())
                end_line();
            m_returned = true;
        } else {
            if (!m_returned) // of both, the one alone ends it
                end_line();
            m_returned = false;
        }
    }
}

void printed_lines_t::finish()
{
    if (!m_line.empty())
        end_line();
    m_returned = false;
}

void printed_lines_t::end_line()
{
    m_say(m_line);
    m_line.clear();
}

} // namespace gallery
