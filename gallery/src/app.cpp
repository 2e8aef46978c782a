#include "auditor.h"
#include "commands.h"
#include "consent_page.h"
#include "entries.h"
#include "experimental_features.h"
#include "json_report.h"
#include "main_window.h"
#include "missing_resource.h"
#include "options.h"
#include "picture_taker.h"
#include "restart.h"
#include "usage_record.h"

#include <commondlg3/product_app.h>
#include <gen_helpers2/stdpaths.h>
#include <wx_helpers1/painted.h>
#include <wx_helpers1/ui_settings.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>
#include <vector>

namespace gallery {
namespace {

constexpr int exit_bad_usage = 2;
constexpr int exit_no_picture = 3;
constexpr int exit_findings = 4;

// The command line is read before the toolkit starts: the language must be known to it.
options_t options;

} // namespace

class app_t : public commondlg3::product_app_t
{
public:
    app_t() : product_app_t("Vorbex Performance Studio", "Vorbex")
    {
        get_product().config_directory = options.config_dir.empty()
                                             ? gen_helpers2::stdpaths::get_user_config_dir() / "vorbex"
                                             : gen_helpers2::path_t(options.config_dir);
    }

    bool OnInit() override
    {
        if (!product_app_t::OnInit())
            return false;
        set_feature_variables();
        if (!options.theme.empty())
            wx_helpers1::ui_settings_t::get()->set_theme(
                options.theme == "dark" ? wx_helpers1::theme_t::dark : wx_helpers1::theme_t::light);
        wxImage::AddHandler(new wxPNGHandler);
        SetExitOnFrameDelete(options.show.empty() || options.audit);
        CallAfter([this] { start(); });
        return true;
    }

    // The options are ours, not the toolkit's.
    bool OnCmdLineParsed(wxCmdLineParser&) override { return true; }
    void OnInitCmdLine(wxCmdLineParser&) override {}

    int OnRun() override
    {
        const int code = wxApp::OnRun();
        return code != 0 ? code : m_exit_code;
    }

    int OnExit() override
    {
        if (is_used_by_a_person())
            report_usage();
        return product_app_t::OnExit();
    }

private:
    static bool is_used_by_a_person()
    {
        return options.show.empty() && options.screenshots_dir.empty() && options.places.empty() &&
               !options.audit;
    }

    void start()
    {
        if (options.commands)
            listen_for_commands();
        if (!options.show.empty() && !options.audit) {
            if (!open_object(options.show, options.data)) {
                report_error(options.show, "no such object");
                m_exit_code = exit_bad_usage;
            }
            ExitMainLoop();
            return;
        }
        if (!check_resource(resource_file(), "panel.gallery", nullptr)) {
            m_exit_code = exit_bad_usage;
            ExitMainLoop();
            return;
        }
        auto* window = new main_window_t;
        SetTopWindow(window);
        wx_helpers1::when_next_window_is_painted([this](wxTopLevelWindow*) {
            report_opened("gallery");
            if (is_used_by_a_person())
                CallAfter([this] { ask_for_consent_once(GetTopWindow()); });
            if (!options.screenshots_dir.empty())
                take_pictures(options.screenshots_dir, [this](int failed) {
                    m_exit_code = failed ? exit_no_picture : 0;
                    GetTopWindow()->Close();
                });
            else if (!options.places.empty())
                report_places(options.places == "changed", [] { wxTheApp->GetTopWindow()->Close(); });
            else if (options.audit)
                audit(options.show, options.data, [this](int findings) {
                    m_exit_code = findings ? exit_findings : 0;
                    GetTopWindow()->Close();
                });
        });
        window->Show();
    }

    int m_exit_code = 0;
};

} // namespace gallery

wxIMPLEMENT_APP_NO_MAIN(gallery::app_t);

int main(int argc, char** argv)
{
    std::string error;
    gallery::options = gallery::parse_options(argc, argv, error);
    if (!error.empty() || gallery::options.help) {
        std::fprintf(error.empty() ? stdout : stderr, "%s%s%s", error.c_str(), error.empty() ? "" : "\n",
                     gallery::usage);
        return error.empty() ? 0 : gallery::exit_bad_usage;
    }
    std::vector<std::string> arguments(argv, argv + argc);
    const auto& asked = gallery::options;
    if (asked.audit && (asked.language.empty() || asked.theme.empty() || !std::getenv("GDK_DPI_SCALE")))
        return gallery::audit_everywhere(arguments);
    // So that the toolkit's own texts (menus of its text fields) follow the same language.
    if (!gallery::options.language.empty())
        setenv("LANGUAGE", gallery::options.language.c_str(), 1);
    const int code = wxEntry(argc, argv);
    if (gallery::is_restart_requested() && gallery::options.show.empty()) {
        gallery::unset_feature_variables();
        std::vector<char*> again;
        for (std::string& argument : arguments)
            again.push_back(argument.data());
        again.push_back(nullptr);
        execv("/proc/self/exe", again.data());
    }
    return code;
}
