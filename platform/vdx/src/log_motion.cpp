// What moves by itself, and what goes away: a log's window in the course of time.
#include "log_view.h"

#include <wx_helpers1/ui_settings.h>

#include <algorithm>

namespace vdxcfrw7 {

bool is_moving(const log_layout_t::item_t& item)
{
    if (item.part == log_layout_t::part_t::head)
        return item.element->GetHead().picture.is_animation();
    const CGauge& gauge = item.element->GetGauge();
    return item.part == log_layout_t::part_t::tail && gauge.IsShown() && gauge.IsBusy();
}

void log_view_t::next_frame()
{
    ++m_frame;
    for (const auto& item : m_layout.visible_items()) {
        if (!is_moving(item))
            continue;
        const bool is_head = item.part == log_layout_t::part_t::head;
        RefreshRect(wxRect(m_layout.margin(), static_cast<int>(item.y),
                           is_head ? m_layout.text_left() : m_layout.get_size().x,
                           is_head ? m_layout.scaled(40) : m_layout.gauge_height(*item.element)));
    }
}

bool log_view_t::is_animated() const
{
    const auto* settings = wx_helpers1::ui_settings_t::get();
    return !settings || settings->animations_enabled();
}

void log_view_t::run_animation(bool needed)
{
    needed = needed && is_animated();
    if (needed && !m_animation.IsRunning())
        m_animation.Start(80);
    else if (!needed && m_animation.IsRunning())
        m_animation.Stop();
}

void log_view_t::lines_dropped(CMessageElement& element, std::size_t lines, std::size_t others)
{
    m_layout.lines_dropped(element, lines);
    for (std::size_t line = 0; line < others; ++line)
        m_layout.line_changed(element, line);
    m_selection.lines_dropped(element, lines);
    for (text_place_t* place : {&m_link, &m_pressed.place})
        place->lines_dropped(element, lines);
    m_accessible.element_removing(element); // its lines have other names
    m_filter.lines_dropped(element, lines);
    m_found.begin_again();
    count_matches();
    catch_up_soon();
}

void log_layout_t::lines_dropped(CMessageElement& element, std::size_t lines)
{
    if (m_anchor.element == &element && m_anchor.part == part_t::line) {
        if (m_anchor.line < lines)
            m_anchor.byte = 0;
        m_anchor.line -= std::min(m_anchor.line, lines);
    }
    forget_rows(); // another text may come to lie where one of those lay
    update_height(element);
}

void log_filter_t::lines_dropped(const CMessageElement& element, std::size_t lines)
{
    if (m_element == element.GetIndex())
        m_line -= std::min(m_line, lines);
}

} // namespace vdxcfrw7
