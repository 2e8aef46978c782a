#pragma once

#include <wx/menu.h>

#include <functional>
#include <string>
#include <utility>

namespace vdxcfrw7 {
class CEventLog;
}

namespace commondlg3 {

class search_bar_t;

/// What a log's context menu offers where the host allows it.
class log_menu_t : public wxMenu
{
public:
    log_menu_t(vdxcfrw7::CEventLog& log, std::function<search_bar_t&()> search_bar)
        : m_log(log), m_search_bar(std::move(search_bar))
    {
    }

    /// Copying, finding, and how the lines are shown.
    void add_view();
    void add_save(std::function<void()> save, bool enabled);
    /// Where there is a link at that point of the log's window.
    void add_link(const wxPoint& point);
    void add_clear(std::function<void()> clear, bool enabled);

private:
    wxMenuItem* add(wxMenu& menu, const std::string& text, std::function<void()> chosen,
                    wxItemKind kind = wxITEM_NORMAL, bool checked = false);
    /// The user's choice of how lines are shown.
    void change(const std::function<void()>& set);
    void add_times();

    vdxcfrw7::CEventLog& m_log;
    std::function<search_bar_t&()> m_search_bar;
};

} // namespace commondlg3
