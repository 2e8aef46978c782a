// How the lines are shown: their times, wrapped or not, larger or smaller, repeats as one or as many.
#include "log_view.h"

#include "log_times.h"

#include <gtk/gtk.h>

#include <algorithm>
#include <string>

namespace vdxcfrw7 {
namespace {

constexpr int smallest_zoom = 50; // percent
constexpr int largest_zoom = 300;

} // namespace

void log_view_t::set_times(CEventLog::times_t times)
{
    if (times == m_times)
        return;
    m_times = times;
    fit_times();
    catch_up_soon();
}

void log_view_t::fit_times()
{
    const std::string widest = widest_time(m_times);
    m_layout.set_time_width(widest.empty() ? 0 : m_layout.label_width(widest) + m_layout.scaled(10));
}

void log_view_t::set_wrap(bool wrap)
{
    if (wrap == m_layout.wraps())
        return;
    m_layout.set_wrap(wrap);
    gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(m_widget), wrap ? GTK_POLICY_NEVER : GTK_POLICY_ALWAYS,
                                   GTK_POLICY_ALWAYS);
    catch_up_soon();
}

void log_view_t::set_zoom(int percent)
{
    percent = std::clamp(percent, smallest_zoom, largest_zoom);
    if (percent == m_zoom)
        return;
    m_layout.stay_where_read();
    m_zoom = percent;
    read_look();
    catch_up_soon();
}

void log_view_t::zoom_by_user(int percent)
{
    const int before = m_zoom;
    set_zoom(percent);
    if (m_zoom == before)
        return;
    const auto signal = m_log->options_changed();
    signal.emit();
}

bool log_view_t::toggle_repeats(const text_place_t& place)
{
    if (!place.is_set() || place.item < text_item_t::first_line)
        return false;
    const std::size_t index = place.item - text_item_t::first_line;
    auto& element = const_cast<CMessageElement&>(*place.element);
    line_t& line = element.m_lines.at(index);
    if (!line.can_expand())
        return false;
    m_layout.stay();
    line.set(line_t::expanded, !line.has(line_t::expanded));
    m_layout.line_changed(element, index);
    if (line.is_long()) { // its text is another
        m_selection.texts_changed(element);
        m_found.begin_again();
        count_matches();
    }
    catch_up();
    m_accessible.place_changed();
    return true;
}

} // namespace vdxcfrw7
