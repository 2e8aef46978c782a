#include "support.h"

#include <gen_helpers2/log.h>
#include <wx_helpers1/tasks.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/app.h>
#include <wx/evtloop.h>

namespace {

class listener_t : public testing::EmptyTestEventListener
{
    void OnTestEnd(const testing::TestInfo&) override { test::end_test(); }
};

class app_t : public wxApp
{
public:
    bool OnInit() override { return true; }
    bool OnCmdLineParsed(wxCmdLineParser&) override { return true; }
    void OnInitCmdLine(wxCmdLineParser&) override {}

    bool OnExceptionInMainLoop() override
    {
        test::note_exception();
        return true;
    }

    int OnRun() override
    {
        wxGUIEventLoop loop;
        wxEventLoopActivator active(&loop);
        test::install_handlers();
        test::use_default_product();
        wx_helpers1::tasks::Scheduler::Initialize();
        wx_helpers1::ui_settings_t::initialize();
        test::let_unasked_windows_take_input();
        auto* frame = new wxFrame(nullptr, wxID_ANY, "main window", wxPoint(200, 150), wxSize(700, 500));
        SetTopWindow(frame);
        frame->Show();
        test::settle();
        testing::UnitTest::GetInstance()->listeners().Append(new listener_t);
        const int result = RUN_ALL_TESTS();
        frame->Destroy();
        test::settle();
        wx_helpers1::tasks::Scheduler::Shutdown();
        wx_helpers1::ui_settings_t::shutdown();
        return result;
    }
};

} // namespace

int main(int argc, char** argv)
{
    const gen_helpers2::log_lifetime_t log;
    testing::InitGoogleTest(&argc, argv);
    wxApp::SetInitializerFunction([]() -> wxAppConsole* { return new app_t; });
    return wxEntry(argc, argv);
}
