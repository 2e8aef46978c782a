// How the texts of lines look, and how they are broken into rows.
#include "log_layout.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace vdxcfrw7 {
namespace {

constexpr std::size_t kept_styled = 128;

} // namespace

log_layout_t::shown_line_t log_layout_t::read_line(const line_t& line)
{
    if (!line.has(line_t::styled))
        return {line.get_seen(), nullptr};
    read_styled_text(line.get_seen(), m_read);
    return {m_read.text, &m_read};
}

log_layout_t::shown_line_t log_layout_t::shown_line(const line_t& line)
{
    if (!line.has(line_t::styled))
        return {line.get_seen(), nullptr};
    auto found = m_styled.find(line.text);
    if (found == m_styled.end()) {
        if (m_styled.size() >= kept_styled)
            m_styled.clear();
        found = m_styled.emplace(line.text, styled_text_t()).first;
        read_styled_text(line.get_seen(), found->second);
    }
    return {found->second.text, &found->second};
}

std::uint32_t log_layout_t::break_line(const line_t& line, const shown_line_t& shown,
                                       std::vector<std::uint32_t>* starts, bool shape)
{
    const int width = break_width(line);
    const bool faces = shown.styled && shown.styled->has_faces;
    if (!faces || !shape || shown.text.size() > font_metrics_t::longest_shaped)
        return (faces ? m_bold : m_text).break_rows(shown.text, width, starts, shape);
    std::vector<std::uint32_t> rows = m_text.get_shaper().break_rows(shown.text, width, shown.get_runs());
    const auto count = static_cast<std::uint32_t>(rows.size());
    if (starts)
        *starts = std::move(rows);
    return count;
}

void log_layout_t::forget_rows()
{
    m_rows.clear();
    m_styled.clear();
}

} // namespace vdxcfrw7
