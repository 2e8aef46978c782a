#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace gallery {

/// Makes lines of bytes that come piece by piece. A carriage return ends a line as well, so that a progress
/// bar is seen as it moves.
class printed_lines_t
{
public:
    /// Nobody reads more in one line, and it must be kept somewhere.
    static constexpr std::size_t longest = std::size_t(16) << 20;

    explicit printed_lines_t(std::function<void(const std::string&)> say) : m_say(std::move(say)) {}

    void add(std::string_view bytes);
    /// What was begun is a line.
    void finish();

private:
    void end_line();

    std::function<void(const std::string&)> m_say;
    std::string m_line;
    bool m_returned = false; // the line before ended with a carriage return
};

} // namespace gallery
