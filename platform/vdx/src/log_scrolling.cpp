// Scroll bars and wheel.
#include "log_view.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <limits>

namespace vdxcfrw7 {
namespace {

// A scroll bar counts in ints; beyond this a unit of it is more than a pixel.
constexpr std::int64_t longest_scrollbar = 1000 * 1000 * 1000;
constexpr int lines_per_wheel_step = 3;
constexpr int sideways_step = 60; // pixels

} // namespace

void log_view_t::update_scrollbar()
{
    const std::int64_t total = m_layout.total(), page = m_layout.get_size().y;
    m_scroll_unit = total / longest_scrollbar + 1;
    const int range = static_cast<int>(std::max(total, page) / m_scroll_unit);
    const int thumb = std::max(1, static_cast<int>(page / m_scroll_unit));
    const int position = static_cast<int>(m_layout.top() / m_scroll_unit);
    if (range != GetScrollRange(wxVERTICAL) || thumb != GetScrollThumb(wxVERTICAL))
        SetScrollbar(wxVERTICAL, position, thumb, range);
    else if (position != GetScrollPos(wxVERTICAL))
        SetScrollPos(wxVERTICAL, position);
    if (m_layout.wraps())
        return;
    const int width = m_layout.line_width(), widest = m_layout.max_left() + width;
    if (widest != GetScrollRange(wxHORIZONTAL) || width != GetScrollThumb(wxHORIZONTAL))
        SetScrollbar(wxHORIZONTAL, m_layout.left(), width, widest);
    else if (m_layout.left() != GetScrollPos(wxHORIZONTAL))
        SetScrollPos(wxHORIZONTAL, m_layout.left());
}

void log_view_t::scroll_to(std::int64_t top)
{
    m_scrolled = std::chrono::steady_clock::now();
    m_layout.scroll_to(top);
    catch_up();
}

void log_view_t::scroll_to_end()
{
    m_layout.scroll_to_end();
    catch_up();
}

void log_view_t::on_scroll(wxScrollWinEvent& event)
{
    if (!m_log)
        return;
    if (event.GetOrientation() == wxHORIZONTAL) {
        scroll_sideways(event.GetPosition());
        return;
    }
    const std::int64_t position = event.GetPosition();
    const bool end = position + GetScrollThumb(wxVERTICAL) >= GetScrollRange(wxVERTICAL);
    scroll_to(end ? std::numeric_limits<std::int64_t>::max() : position * m_scroll_unit);
}

void log_view_t::on_wheel(wxMouseEvent& event)
{
    if (!m_log || event.GetWheelDelta() == 0)
        return;
    if (event.ControlDown()) {
        zoom_by_user(m_zoom + (event.GetWheelRotation() > 0 ? zoom_step : -zoom_step));
        return;
    }
    if (event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL || event.ShiftDown()) {
        const int turned = event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL ? event.GetWheelRotation()
                                                                            : -event.GetWheelRotation();
        scroll_sideways(m_layout.left() + turned * m_layout.scaled(sideways_step) / event.GetWheelDelta());
        return;
    }
    m_wheel += event.GetWheelRotation() * lines_per_wheel_step * m_layout.text_font().get_line_height();
    const int pixels = m_wheel / event.GetWheelDelta();
    m_wheel %= event.GetWheelDelta();
    scroll_to(m_layout.top() - pixels);
}

void log_view_t::scroll_sideways(int left)
{
    m_layout.scroll_sideways(left);
    update_scrollbar();
    Refresh(false);
}

} // namespace vdxcfrw7
