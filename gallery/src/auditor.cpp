#include "auditor.h"

#include "entries.h"
#include "json_report.h"
#include "missing_resource.h"
#include "preferences_entry.h"
#include "preferences_page.h"
#include "window_walk.h"

#include <cfgmgr2/message_catalog.h>
#include <commondlg3/audit.h>
#include <wx_helpers1/inspect.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/app.h>
#include <wx/display.h>
#include <wx/evtloop.h>
#include <wx/timer.h>
#include <wx/toplevel.h>
#include <wx/weakref.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace gallery {
namespace {

constexpr char scale_variable[] = "GDK_DPI_SCALE";

std::vector<walk_step_t> all_steps()
{
    std::vector<walk_step_t> steps = walk_of_entries();
    for (const auto& page : make_preferences_pages()) {
        const std::string object = page->get_name();
        steps.push_back({"preferences: " + object, [object] {
                             return open_preferences({{"page", object}}, wxTheApp->GetTopWindow());
                         }});
    }
    return steps;
}

std::string get_text_scale()
{
    const char* scale = std::getenv(scale_variable);
    return scale ? scale : "1";
}

void report(const std::string& window, const commondlg3::audit_finding_t& finding)
{
    const wxSize screen = wxDisplay(0u).GetGeometry().GetSize();
    report_finding({{"object", window},
                    {"kind", finding.kind},
                    {"control", finding.control},
                    {"detail", finding.detail},
                    {"language", cfgmgr2::get_language()},
                    {"theme", wx_helpers1::ui_settings_t::get()->is_dark() ? "dark" : "light"},
                    {"text_scale", get_text_scale()},
                    {"screen", std::to_string(screen.x) + "x" + std::to_string(screen.y)}});
}

void turn_for(int milliseconds)
{
    wxGUIEventLoop loop;
    wxTimer timer;
    timer.Bind(wxEVT_TIMER, [&loop](wxTimerEvent&) { loop.Exit(); });
    timer.StartOnce(milliseconds);
    loop.Run();
}

// On a busy machine a window may be looked at while it is still being laid out: what is wrong is so a
// moment later, too.
std::vector<commondlg3::audit_finding_t> findings_that_last(wxTopLevelWindow& window)
{
    constexpr int moment = 500; // milliseconds
    std::vector<commondlg3::audit_finding_t> findings = commondlg3::audit_window(&window);
    if (findings.empty())
        return findings;
    const wxWeakRef<wxTopLevelWindow> still(&window);
    turn_for(moment);
    const auto later = commondlg3::audit_window(still); // none of a window that has gone
    const auto is_gone = [&later](const commondlg3::audit_finding_t& finding) {
        return std::none_of(later.begin(), later.end(), [&finding](const commondlg3::audit_finding_t& other) {
            return other.kind == finding.kind && other.control == finding.control;
        });
    };
    findings.erase(std::remove_if(findings.begin(), findings.end(), is_gone), findings.end());
    return findings;
}

nlohmann::json in_numbers(const wxRect& rect)
{
    return {rect.x, rect.y, rect.width, rect.height};
}

// In the window, of its controls and of the texts that they draw.
void add_places(nlohmann::json& places, const wxWindow& window, const wxPoint& origin)
{
    wxRect place = wx_helpers1::get_place(window);
    place.Offset(-origin);
    places.push_back({wx_helpers1::from_wx(window.GetName()), in_numbers(place)});
    for (const wx_helpers1::shown_text_t& shown : wx_helpers1::get_shown_texts(window))
        if (shown.is_drawn) {
            place = shown.rect;
            place.Offset(-origin);
            places.push_back({shown.text, in_numbers(place)});
        }
    for (const wxWindow* child : window.GetChildren())
        if (child->IsShown() && !child->IsTopLevel())
            add_places(places, *child, origin);
}

nlohmann::json get_places(const wxTopLevelWindow& window)
{
    nlohmann::json places = nlohmann::json::array();
    add_places(places, window, wx_helpers1::get_place(window).GetPosition());
    return places;
}

int run(std::vector<std::string> arguments)
{
    std::vector<char*> pointers;
    for (std::string& argument : arguments)
        pointers.push_back(argument.data());
    pointers.push_back(nullptr);
    const pid_t child = fork();
    if (child == 0) {
        execv("/proc/self/exe", pointers.data());
        _exit(EXIT_FAILURE);
    }
    int status = -1;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status))
        return EXIT_FAILURE;
    return WEXITSTATUS(status);
}

} // namespace

void audit(const std::string& object, const nlohmann::json& data, std::function<void(int)> done)
{
    const auto count = std::make_shared<int>(0);
    const walk_step_t alone = {object, [object, data] { return int(open_object(object, data)); }};
    walk_windows(
        object.empty() ? all_steps() : std::vector<walk_step_t>{alone},
        [count](const std::string& name, wxTopLevelWindow& window) {
            for (const commondlg3::audit_finding_t& finding : findings_that_last(window)) {
                report(name, finding);
                ++*count;
            }
        },
        [count, done = std::move(done)] { done(*count); });
}

int audit_once(wxTopLevelWindow& window)
{
    const auto findings = findings_that_last(window);
    for (const commondlg3::audit_finding_t& finding : findings)
        report(wx_helpers1::from_wx(window.GetName()), finding);
    return static_cast<int>(findings.size());
}

void report_places(bool live, std::function<void()> done)
{
    const auto when_changed = [](const std::string& name, std::function<void()> go_on) {
        const auto connection = std::make_shared<gen_helpers2::connection>();
        *connection =
            wx_helpers1::ui_settings_t::get()->settled().connect([connection, go_on = std::move(go_on)] {
                connection->disconnect();
                go_on();
            });
        report_signal(name, "waiting", true);
    };
    walk_windows(
        all_steps(),
        [](const std::string& name, wxTopLevelWindow& window) {
            report_window_places(name, get_places(window));
            for (const commondlg3::audit_finding_t& finding : findings_that_last(window))
                report(name, finding);
        },
        std::move(done), live ? walk_wait_t(when_changed) : walk_wait_t());
}

int audit_everywhere(const std::vector<std::string>& arguments)
{
    const auto is_given = [&](const char* name) {
        return std::find(arguments.begin(), arguments.end(), name) != arguments.end();
    };
    int worst = 0;
    const auto run_each_theme = [&](std::vector<std::string> with_language) {
        for (const char* theme : {"light", "dark"}) {
            std::vector<std::string> full = with_language;
            if (!is_given("--theme"))
                full.insert(full.end(), {"--theme", theme});
            else if (std::string(theme) == "dark")
                break;
            worst = std::max(worst, run(full));
        }
    };
    const bool scale_is_given = std::getenv(scale_variable) != nullptr;
    for (const char* scale : {"1", "1.25", "1.5", "2"}) {
        if (!scale_is_given)
            setenv(scale_variable, scale, 1);
        else if (std::string(scale) != "1")
            break;
        if (is_given("--language"))
            run_each_theme(arguments);
        else
            for (const std::string& language : cfgmgr2::get_catalog_languages(language_catalog)) {
                std::vector<std::string> full = arguments;
                full.insert(full.end(), {"--language", language});
                run_each_theme(full);
            }
    }
    return worst;
}

} // namespace gallery
