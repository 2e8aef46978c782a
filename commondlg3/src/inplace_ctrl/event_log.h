#pragma once

#include "commondlg3/image_loader.h"

#include <vdx/event_log.h>

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
    /// The index of the picture of a line.
    int image_of(int severity) const;

private:
    int add_image(vdxc7::IImageList* list, image_loader_t::image_type_t type);

    bool m_show_debug;
    bool m_changed = false;
    bool m_keeps_times = false;
    int m_error_image;
    int m_warning_image;
    int m_info_image;
    int m_empty_image;
};

} // namespace commondlg3
