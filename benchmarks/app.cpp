#include "app.h"

#include <cfgmgr2/product_locations.h>
#include <gen_helpers2/log.h>
#include <wx_helpers1/tasks.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/frame.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>

namespace bench {
namespace {

std::function<int(wxFrame*)> the_work;

class app_t : public wxApp
{
public:
    bool OnInit() override { return true; }
    // The options belong to the program, not to the toolkit.
    bool OnCmdLineParsed(wxCmdLineParser&) override { return true; }
    void OnInitCmdLine(wxCmdLineParser&) override {}

    // What a window asserts, it would do so in every opening: nothing measured afterwards is worth having.
    void OnAssertFailure(const wxChar* file, int line, const wxChar*, const wxChar* condition,
                         const wxChar*) override
    {
        std::fprintf(stderr, "%s\n",
                     wxString::Format("%s:%d: %s", file, line, condition).utf8_string().c_str());
        std::_Exit(3);
    }

    int OnRun() override
    {
        wxGUIEventLoop loop;
        wxEventLoopActivator active(&loop);
        auto product = std::make_shared<cfgmgr2::product_locations_t>();
        product->resource_directory = gen_helpers2::path_t(RESOURCE_DIR);
        product->locale_directory = gen_helpers2::path_t(LOCALE_DIR);
        cfgmgr2::IProductLocations::set(product);
        wx_helpers1::tasks::Scheduler::Initialize();
        wx_helpers1::ui_settings_t::initialize();
        auto* frame = new wxFrame(nullptr, wxID_ANY, "benchmark", wxPoint(200, 150), wxSize(700, 500));
        SetTopWindow(frame);
        frame->Show();
        wait_until_quiet(300);
        const int result = the_work(frame);
        frame->Destroy();
        wait_until_quiet(30);
        wx_helpers1::tasks::Scheduler::Shutdown();
        wx_helpers1::ui_settings_t::shutdown();
        return result;
    }
};

} // namespace

int run_in_app(int argc, char** argv, std::function<int(wxFrame*)> work)
{
    const gen_helpers2::log_lifetime_t log;
    the_work = std::move(work);
    wxApp::SetInitializerFunction([]() -> wxAppConsole* { return new app_t; });
    return wxEntry(argc, argv);
}

void wait_until_quiet(int milliseconds)
{
    wxEventLoopBase* loop = wxEventLoopBase::GetActive();
    while (loop->DispatchTimeout(static_cast<unsigned long>(milliseconds)) != -1) {
    }
}

} // namespace bench
