#pragma once

#include <wx_helpers1/tasks.h>

#include <wx/weakref.h>
#include <wx/window.h>

#include <memory>

namespace commondlg3 {

/// Lays out a window's parent again after the window's height has changed. A member of the window.
class parent_layout_t
{
public:
    explicit parent_layout_t(wxWindow* window) : m_window(window) {}

    void now()
    {
        if (wxWindow* parent = m_window->GetParent())
            parent->Layout();
    }

    /// For size events. They usually come from a layout of the parent that is still going on and has given
    /// its other windows their places: these get their right ones once it is over, before anything is
    /// painted.
    void later()
    {
        if (!wx_helpers1::tasks::Scheduler::IsInitialized() || !m_task->must_be_posted())
            return;
        wx_helpers1::tasks::Scheduler::Post([window = wxWeakRef<wxWindow>(m_window), task = m_task] {
            task->begins();
            if (window && window->GetParent())
                window->GetParent()->Layout();
        });
    }

private:
    wxWindow* m_window;
    std::shared_ptr<wx_helpers1::tasks::posted_task_t> m_task =
        std::make_shared<wx_helpers1::tasks::posted_task_t>();
};

} // namespace commondlg3
