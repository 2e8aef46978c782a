#include "command_page.h"

#include "json_report.h"
#include "missing_resource.h"
#include "printed_lines.h"

#include <commondlg3/choosers.h>
#include <commondlg3/message_window.h>
#include <cpil/catalog.h>
#include <gen_helpers2/program.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/enabling.h>
#include <wx_helpers1/tasks.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <atomic>
#include <cctype>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <thread>

namespace gallery {
namespace {

using commondlg3::standard_message_t;
using gen_helpers2::program_output_t;
using gen_helpers2::stop_t;
using wx_helpers1::to_label;

std::string command_text(const std::string& key, const CPIL_2_18::generic::varg_list& args)
{
    return commondlg3::message_window_t::get_message("gallery", key, args);
}

// A body of an entry is markup.
std::string as_markup(const std::string& text)
{
    std::string markup;
    for (const char c : text)
        markup += c == '&' ? std::string("&amp;") : c == '<' ? "&lt;" : c == '>' ? "&gt;" : std::string(1, c);
    return markup;
}

// Whether it speaks of an error; most programs write warnings and news there, too.
bool names_error(const std::string& line)
{
    constexpr std::string_view word = "error";
    const auto found = std::search(line.begin(), line.end(), word.begin(), word.end(), [](char a, char b) {
        return std::tolower(static_cast<unsigned char>(a)) == b;
    });
    return found != line.end();
}

} // namespace

struct command_page_t::run_t
{
    std::string command;
    std::string folder;
    msngr2::IMessenger* messenger = nullptr;
    msngr2::IProgress* progress = nullptr;
    commondlg3::inplace_ctrl_t::tag_t tag = 0;
    std::string progress_text;
    std::string ended_text;
    std::atomic<bool> closing{false};
    // Read by the page once the worker has finished.
    gen_helpers2::program_end_t end;
    bool canceled = false;
    std::string failure; // to start it

    void run()
    {
        printed_lines_t said(
            [this](const std::string& line) { messenger->say(msngr2::sev_none, line.c_str()); });
        printed_lines_t errors([this](const std::string& line) {
            messenger->say(names_error(line) ? msngr2::sev_error : msngr2::sev_warning, line.c_str());
        });
        progress->start(progress_text.c_str(), 1);
        const auto result = gen_helpers2::watch_program(
            {"/bin/sh", "-c", command}, folder,
            [&](program_output_t from, std::string_view bytes) {
                (from == program_output_t::standard ? said : errors).add(bytes);
            },
            [this] {
                if (closing)
                    return stop_t::force;
                canceled = canceled || progress->isCanceled();
                return canceled ? stop_t::ask : stop_t::no;
            },
            end);
        said.finish();
        errors.finish();
        if (result.failed())
            failure = result.as_string();
        progress->start(ended_text.c_str(), 1); // nothing runs any more
        progress->finish();
    }
};

command_page_t::command_page_t(wxWindow* parent)
    : log_page_t(parent, CPIL_2_18::i18n::catalog_key("log.command.title"), "command_log.xml")
{
    auto* rows = new wxFlexGridSizer(2, 8, 8);
    rows->AddGrowableCol(1);
    get_controls()->Add(rows, 1, wxEXPAND);
    const auto add = [&](const std::string& label, const std::string& value) {
        auto* shown = new wxStaticText(this, wxID_ANY, to_label(label));
        auto* field = new wxTextCtrl(this, wxID_ANY, wx_helpers1::to_wx(value));
        wx_helpers1::set_label_for(shown, field);
        rows->Add(shown, 0, wxALIGN_CENTRE_VERTICAL);
        auto* row = new wxBoxSizer(wxHORIZONTAL);
        row->Add(field, 1, wxALIGN_CENTRE_VERTICAL);
        rows->Add(row, 1, wxEXPAND);
        return std::make_pair(field, row);
    };
    const auto [command, command_row] = add(text("log.command.command"), "ls -l --color=always");
    m_command = command;
    m_start = new wxButton(this, wxID_ANY, to_label(text("log.walk.start")));
    command_row->Add(m_start, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, 8);
    const auto [folder, folder_row] = add(text("log.walk.folder"), "/");
    m_folder = folder;
    auto* browse = new wxButton(this, wxID_ANY, to_label(text("log.walk.browse")));
    folder_row->Add(browse, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, 8);
    browse->Bind(wxEVT_BUTTON,
                 [this](wxCommandEvent&) { commondlg3::process_browse_folder(this, m_folder); });
    m_start->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { start(); });
    m_start->SetDefault();
    finish_layout();
    m_command->SetFocus();
}

command_page_t::~command_page_t()
{
    if (m_run)
        m_run->closing = true;
    if (m_worker.joinable())
        m_worker.join();
}

void command_page_t::set_command(const std::string& command, const std::string& folder)
{
    m_command->ChangeValue(wx_helpers1::to_wx(command));
    m_folder->ChangeValue(wx_helpers1::to_wx(folder));
}

void command_page_t::start()
{
    if (m_run)
        return;
    auto run = std::make_shared<run_t>();
    run->command = wx_helpers1::from_wx(m_command->GetValue());
    run->folder = wx_helpers1::from_wx(m_folder->GetValue());
    commondlg3::progress_message_t::ptr_t record(new commondlg3::progress_message_t);
    record->caption = run->command;
    record->picture = standard_message_t::get_icon_by_type(standard_message_t::icon_types_t::progress);
    record->message = as_markup(run->folder);
    run->progress_text = command_text("log.command.running", {{"command", run->command}});
    run->ended_text = text("log.command.ended");
    run->tag = get_log().add_progress(record, make_callback());
    run->messenger = get_log().get_messenger(run->tag);
    run->progress = get_log().get_progress(run->tag);
    m_run = run;
    m_run_folder = run->folder;
    wx_helpers1::set_enabled(m_start, false);
    m_finished = gen_helpers2::signal_t<>();
    m_finished.connect(&m_receiver, [this, run] { finished(run); });
    try {
        m_worker = std::thread([run, signal = m_finished] {
            run->run();
            wx_helpers1::tasks::PostSignal(signal);
        });
    } catch (const std::system_error& error) {
        run->failure = error.what();
        finished(run);
    }
}

void command_page_t::finished(const std::shared_ptr<run_t>& run)
{
    if (m_worker.joinable())
        m_worker.join();
    m_run.reset();
    m_start->Enable();
    using icons = standard_message_t::icon_types_t;
    const bool good = run->failure.empty() && run->end.succeeded() && !run->canceled;
    const auto picture = standard_message_t::get_icon_by_type(good            ? icons::success
                                                              : run->canceled ? icons::warning
                                                                              : icons::error);
    // What has ended does not turn any more.
    standard_message_t::ptr_t ended(new standard_message_t);
    ended->picture = picture;
    ended->caption = run->command;
    ended->message = as_markup(run->folder);
    get_log().update_message(run->tag, ended, {});
    standard_message_t::ptr_t result(new standard_message_t);
    result->picture = picture;
    result->caption = text(!run->failure.empty() ? CPIL_2_18::i18n::catalog_key("log.command.not_started")
                           : run->canceled       ? CPIL_2_18::i18n::catalog_key("log.walk.canceled")
                           : good                ? CPIL_2_18::i18n::catalog_key("log.command.finished")
                                                 : CPIL_2_18::i18n::catalog_key("log.command.failed"));
    result->message = !run->failure.empty() ? as_markup(run->failure)
                      : run->end.signal ? command_text("log.command.signal", {{"signal", run->end.signal}})
                                        : command_text("log.command.code", {{"code", run->end.exit_code}});
    result->set_buttons(standard_message_t::standard_buttons_t::close_retry);
    commondlg3::inplace_ctrl_t::callback_t callback = make_callback();
    callback.connect(&m_receiver, [this](int id) {
        if (id == standard_message_t::button_retry)
            start();
    });
    get_log().add_message(result, callback);
    report_signal(log_object, "command_finished",
                  {{"exit_code", run->end.exit_code},
                   {"signal", run->end.signal},
                   {"canceled", run->canceled},
                   {"started", run->failure.empty()}});
}

int open_command_page(const nlohmann::json& data, wxWindow* parent)
{
    command_page_t page(parent);
    if (data.is_object())
        page.set_command(get_string(data, "command", ""), get_string(data, "folder", "/"));
    return run_log_page(page, parent);
}

} // namespace gallery
