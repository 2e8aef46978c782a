#pragma once

#include "commondlg3/image_loader.h"
#include "commondlg3/inplace_ctrl.h"

#include <vdx/event_log.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <functional>
#include <utility>

namespace commondlg3 {

/// The framework's log with the pictures of lines, and whether anything in it has changed.
class event_log_t : public vdxcfrw7::CEventLog
{
public:
    event_log_t(wxWindow* parent, bool show_debug);

    bool get_show_debug() const { return m_show_debug; }
    bool is_changed() const { return m_changed; }
    void set_changed(bool changed) { m_changed = changed; }
    /// Whether the times of lines are saved with them.
    bool keeps_times() const { return m_keeps_times; }
    void keep_times(bool keep) { m_keeps_times = keep; }
    /// What progress is judged by.
    std::chrono::steady_clock::time_point get_time() const
    {
        return m_clock ? m_clock() : std::chrono::steady_clock::now();
    }
    void set_clock(std::function<std::chrono::steady_clock::time_point()> clock)
    {
        m_clock = std::move(clock);
    }
    /// How many bytes of lines that are not shown yet a worker may have said, and what becomes of more. Any
    /// thread.
    inplace_ctrl_t::queue_limit_t get_queue_limit() const { return {m_queue_bytes, m_when_full}; }
    void set_queue_limit(const inplace_ctrl_t::queue_limit_t& limit)
    {
        m_queue_bytes = limit.bytes;
        m_when_full = limit.when_full;
    }
    /// Called when lines came.
    void set_grown(std::function<void()> grown) { m_grown = std::move(grown); }
    void grown() const
    {
        if (m_grown)
            m_grown();
    }
    /// The index of the picture of a line.
    int image_of(int severity) const;

private:
    int add_image(vdxc7::IImageList* list, image_loader_t::image_type_t type);

    bool m_show_debug;
    bool m_changed = false;
    std::atomic<std::size_t> m_queue_bytes{inplace_ctrl_t::queue_limit_t().bytes};
    std::atomic<inplace_ctrl_t::when_full_t> m_when_full{inplace_ctrl_t::when_full_t::grow};
    std::function<void()> m_grown;
    bool m_keeps_times = false;
    std::function<std::chrono::steady_clock::time_point()> m_clock; // empty: the system's
    int m_error_image;
    int m_warning_image;
    int m_info_image;
    int m_empty_image;
};

} // namespace commondlg3
