#include "commands.h"

#include "auditor.h"
#include "entries.h"
#include "json_report.h"
#include "preferences_entry.h"
#include "preferences_page.h"

#include <wx/app.h>
#include <wx/dirdlg.h>
#include <wx/evtloop.h>
#include <wx/evtloopsrc.h>
#include <wx/filedlg.h>
#include <wx/toplevel.h>

#include <algorithm>
#include <memory>
#include <sstream>
#include <string>
#include <unistd.h>

namespace gallery {
namespace {

wxTopLevelWindow* find_active()
{
    for (wxWindow* window : wxTopLevelWindows)
        if (auto* top = wxDynamicCast(window, wxTopLevelWindow))
            if (top->IsShown() && top->IsActive())
                return top;
    return nullptr;
}

// The desktop's own windows are not ours to judge.
bool is_ours(wxTopLevelWindow* window)
{
    return window && !wxDynamicCast(window, wxFileDialog) && !wxDynamicCast(window, wxDirDialog);
}

// The one that takes input now, so that the next is modal to it.
wxTopLevelWindow* find_topmost()
{
    const auto takes_input = [](const wxWindow* window) { return window->IsShown() && window->IsEnabled(); };
    const auto last = std::find_if(wxTopLevelWindows.rbegin(), wxTopLevelWindows.rend(), takes_input);
    return last == wxTopLevelWindows.rend() ? nullptr : wxDynamicCast(*last, wxTopLevelWindow);
}

nlohmann::json list_windows()
{
    nlohmann::json windows = nlohmann::json::array();
    for (const entry_t& entry : entries())
        windows.push_back({entry.id, nullptr});
    for (const auto& page : make_preferences_pages())
        windows.push_back({"preferences", {{"page", page->get_name()}}});
    return windows;
}

void run_command(const std::string& line)
{
    std::istringstream words(line);
    std::string command, name, data;
    words >> command >> name >> std::ws;
    std::getline(words, data);
    if (command == "list")
        report_signal("gallery", "windows", list_windows());
    else if (command == "audit") {
        wxTopLevelWindow* active = find_active();
        report_signal("gallery", "audited", is_ours(active) ? audit_once(*active) : 0);
    } else if (command == "open") {
        const auto with = nlohmann::json::parse(data.empty() ? "null" : data, nullptr, false);
        if (with.is_discarded() || !open_object(name, with, find_topmost()))
            report_error(name, "no such object or data");
    } else
        report_error(command, "no such command");
}

class listener_t : public wxEventLoopSourceHandler
{
public:
    void OnReadWaiting() override
    {
        char read_now[4096];
        const ssize_t count = read(STDIN_FILENO, read_now, sizeof read_now);
        if (count <= 0) {
            m_source.reset();
            return;
        }
        m_begun.append(read_now, static_cast<size_t>(count));
        for (auto end = m_begun.find('\n'); end != std::string::npos; end = m_begun.find('\n')) {
            // A window that is opened runs a loop of its own, in which the next line must be heard.
            wxTheApp->CallAfter([line = m_begun.substr(0, end)] { run_command(line); });
            m_begun.erase(0, end + 1);
        }
    }
    void OnWriteWaiting() override {}
    void OnExceptionWaiting() override { m_source.reset(); }

    std::unique_ptr<wxEventLoopSource> m_source;

private:
    std::string m_begun;
};

} // namespace

void listen_for_commands()
{
    static listener_t listener;
    listener.m_source.reset(wxEventLoopBase::GetActive()->AddSourceForFD(
        STDIN_FILENO, &listener, wxEVENT_SOURCE_INPUT | wxEVENT_SOURCE_EXCEPTION));
}

} // namespace gallery
