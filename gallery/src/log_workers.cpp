// The pages whose logs are filled by real work.
#include "log_page.h"

#include "json_report.h"
#include "missing_resource.h"

#include <commondlg3/choosers.h>
#include <commondlg3/message_window.h>
#include <cpil/catalog.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/enabling.h>
#include <wx_helpers1/tasks.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/wrapsizer.h>

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

namespace gallery {
namespace {

using commondlg3::standard_message_t;
using wx_helpers1::to_label;
namespace fs = std::filesystem;

std::string text_with(const std::string& key, const CPIL_2_18::generic::varg_list& args)
{
    return commondlg3::message_window_t::get_message("gallery", key, args);
}

} // namespace

struct walk_page_t::walk_t
{
    std::string folder;
    msngr2::IMessenger* messenger = nullptr;
    msngr2::IProgress* progress = nullptr;
    commondlg3::inplace_ctrl_t::tag_t tag = 0;
    std::string progress_text;
    // Read by the page once the worker has finished.
    long files = 0;
    long errors = 0;
    bool lists_files = false;
    std::atomic<bool> is_left{false}; // by the page
    bool canceled = false;
    bool folder_failed = false;

    void run()
    {
        std::error_code error;
        // The top-level folders are the steps of the gauge.
        std::vector<fs::path> top;
        for (fs::directory_iterator it(folder, error), end; !error && it != end; it.increment(error))
            top.push_back(it->path());
        if (error) {
            folder_failed = true;
            messenger->say(msngr2::sev_critical, (folder + ": " + error.message()).c_str());
        }
        progress->start(progress_text.c_str(), static_cast<double>(top.size()));
        for (const fs::path& path : top) {
            if (canceled)
                break;
            walk(path);
            progress->internalProgressed(1);
        }
        progress->finish();
    }

    void walk(const fs::path& path)
    {
        std::vector<fs::path> left{path};
        while (!left.empty() && !canceled) {
            const fs::path at = left.back();
            left.pop_back();
            canceled = progress->isCanceled();
            std::error_code error;
            const auto status = fs::symlink_status(at, error);
            if (!error && !fs::is_directory(status)) {
                ++files;
                if (lists_files)
                    messenger->say(msngr2::sev_none, at.c_str());
                continue;
            }
            messenger->say(msngr2::sev_status, at.string().c_str());
            if (!error) {
                fs::directory_iterator it(at, error);
                for (; !error && it != fs::directory_iterator(); it.increment(error))
                    left.push_back(it->path());
            }
            if (error) {
                ++errors;
                messenger->say(msngr2::sev_error, (at.string() + ": " + error.message()).c_str());
            }
        }
    }
};

walk_page_t::walk_page_t(wxWindow* parent)
    : log_page_t(parent, CPIL_2_18::i18n::catalog_key("log.walk.title"), "walk_log.xml")
{
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    auto* below = new wxBoxSizer(wxVERTICAL);
    below->Add(row, 0, wxEXPAND);
    get_controls()->Add(below, 1);
    m_folder = new wxTextCtrl(this, wxID_ANY, wx_helpers1::to_wx(fs::path("/etc").string()));
    auto* browse = new wxButton(this, wxID_ANY, to_label(text("log.walk.browse")));
    m_start = new wxButton(this, wxID_ANY, to_label(text("log.walk.start")));
    auto* label = new wxStaticText(this, wxID_ANY, to_label(text("log.walk.folder")));
    wx_helpers1::set_label_for(label, m_folder);
    row->Add(label, 0, wxALIGN_CENTRE_VERTICAL);
    row->Add(m_folder, 1, wxALIGN_CENTRE_VERTICAL | wxLEFT, 8);
    row->Add(browse, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, 8);
    row->Add(m_start, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, 8);
    m_list_files = new wxCheckBox(this, wxID_ANY, to_label(text("log.walk.list_files")));
    below->Add(m_list_files, 0, wxTOP, 4);
    browse->Bind(wxEVT_BUTTON,
                 [this](wxCommandEvent&) { commondlg3::process_browse_folder(this, m_folder); });
    m_start->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { start(); });
    finish_layout();
}

walk_page_t::~walk_page_t()
{
    if (!m_walk)
        return;
    // A folder may hang for good, and its worker with it: nobody waits for that.
    m_walk->progress->cancel();
    m_walk->is_left = true;
    m_worker.detach();
}

void walk_page_t::start()
{
    if (m_walk)
        return;
    auto walk = std::make_shared<walk_t>();
    walk->folder = wx_helpers1::from_wx(m_folder->GetValue());
    walk->lists_files = m_list_files->GetValue();
    commondlg3::progress_message_t::ptr_t record(new commondlg3::progress_message_t);
    record->caption = text_with("log.walk.caption", {{"folder", walk->folder}});
    record->picture = standard_message_t::get_icon_by_type(standard_message_t::icon_types_t::progress);
    record->message = text("log.walk.message");
    walk->progress_text = text("log.walk.progress");
    walk->tag = get_log().add_progress(record, make_callback());
    walk->messenger = get_log().get_messenger(walk->tag);
    walk->progress = get_log().get_progress(walk->tag);
    m_walk = walk;
    wx_helpers1::set_enabled(m_start, false);
    m_finished = gen_helpers2::signal_t<>();
    m_finished.connect(&m_receiver, [this, walk] { finished(walk); });
    report_signal(log_object, "walk_started", walk->folder);
    try {
        m_worker = std::thread([walk, signal = m_finished] {
            walk->run();
            if (!walk->is_left)
                wx_helpers1::tasks::PostSignal(signal);
        });
    } catch (const std::system_error& error) {
        walk->folder_failed = true;
        walk->messenger->say(msngr2::sev_critical, error.what());
        finished(walk);
    }
}

void walk_page_t::finished(const std::shared_ptr<walk_t>& walk)
{
    if (m_worker.joinable())
        m_worker.join();
    m_walk.reset();
    m_start->Enable();
    // What has ended does not turn any more.
    standard_message_t::ptr_t ended(new standard_message_t);
    ended->picture = standard_message_t::get_icon_by_type(standard_message_t::icon_types_t::information);
    ended->caption = text_with("log.walk.caption", {{"folder", walk->folder}});
    ended->message = text("log.walk.message");
    get_log().update_message(walk->tag, ended, {});
    standard_message_t::ptr_t result(new standard_message_t);
    using icons = standard_message_t::icon_types_t;
    const bool good = !walk->folder_failed && !walk->errors && !walk->canceled;
    result->picture = standard_message_t::get_icon_by_type(walk->folder_failed ? icons::error
                                                           : good              ? icons::success
                                                                               : icons::warning);
    result->caption = text(walk->folder_failed ? CPIL_2_18::i18n::catalog_key("log.walk.failed")
                           : walk->canceled    ? CPIL_2_18::i18n::catalog_key("log.walk.canceled")
                                               : CPIL_2_18::i18n::catalog_key("log.walk.finished"));
    result->message = text_with("log.walk.result", {{"files", walk->files}, {"errors", walk->errors}});
    result->set_buttons(standard_message_t::standard_buttons_t::close_retry);
    commondlg3::inplace_ctrl_t::callback_t callback = make_callback();
    callback.connect(&m_receiver, [this](int id) {
        if (id == standard_message_t::button_retry)
            start();
    });
    get_log().add_message(result, callback);
    report_signal(log_object, "walk_finished", {{"files", walk->files}, {"errors", walk->errors}});
}

flood_page_t::flood_page_t(wxWindow* parent)
    : log_page_t(parent, CPIL_2_18::i18n::catalog_key("log.flood.title"), "flood_log.xml"),
      m_stop(std::make_shared<std::atomic<bool>>(false))
{
    auto* row = new wxWrapSizer(wxHORIZONTAL); // at large fonts there is no room for all in a row
    get_controls()->Add(row, 1, wxEXPAND);
    const auto add = [&](const std::string& label, int value, int most) {
        auto* spin = new wxSpinCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                                    wxSP_ARROW_KEYS, 1, most, value);
        auto* shown_label = new wxStaticText(this, wxID_ANY, to_label(label));
        wx_helpers1::set_label_for(shown_label, spin);
        auto* pair = new wxBoxSizer(wxHORIZONTAL);
        pair->Add(shown_label, 0, wxALIGN_CENTRE_VERTICAL);
        pair->Add(spin, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT, 8);
        row->Add(pair, 0, wxRIGHT | wxBOTTOM, 8);
        return spin;
    };
    m_threads = add(text("log.flood.threads"), 4, 64);
    m_lines = add(text("log.flood.lines"), 1000, 1000000);
    auto* start_button = new wxButton(this, wxID_ANY, to_label(text("log.walk.start")));
    row->Add(start_button, 0, wxALIGN_CENTRE_VERTICAL | wxBOTTOM, 8);
    auto* keep = new wxCheckBox(this, wxID_ANY, to_label(text("log.flood.keep")));
    row->Add(keep, 0, wxALIGN_CENTRE_VERTICAL | wxLEFT | wxBOTTOM, 8);
    keep->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent& event) {
        constexpr std::size_t few = 10000;
        get_log().set_limits({event.IsChecked() ? few : 0, 0});
    });
    start_button->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { start(); });
    finish_layout();
}

flood_page_t::~flood_page_t()
{
    stop();
}

void flood_page_t::stop()
{
    *m_stop = true;
    for (auto& worker : m_workers)
        worker.join();
    m_workers.clear();
    *m_stop = false;
}

void flood_page_t::start()
{
    stop();
    const int threads = m_threads->GetValue(), lines = m_lines->GetValue();
    commondlg3::message_t::ptr_t record(new commondlg3::message_t);
    record->picture = standard_message_t::get_icon_by_type(standard_message_t::icon_types_t::information);
    record->caption = text_with("log.flood.caption", {{"threads", threads}, {"lines", lines}});
    const auto tag = get_log().add_message(record, make_callback());
    msngr2::IMessenger* messenger = get_log().get_messenger(tag);
    const std::string pattern = text("log.flood.line");
    const auto work = [=, stopped = m_stop](int thread) {
        for (int line = 1; line <= lines && !*stopped; ++line) {
            const auto severity = line % 97 == 0   ? msngr2::sev_error
                                  : line % 13 == 0 ? msngr2::sev_warning
                                                   : msngr2::sev_none;
            messenger->say(severity,
                           (std::to_string(thread) + "." + std::to_string(line) + "  " + pattern).c_str());
        }
    };
    try {
        for (int thread = 1; thread <= threads; ++thread)
            m_workers.emplace_back(work, thread);
    } catch (const std::system_error& error) {
        messenger->say(msngr2::sev_critical, error.what());
    }
}

} // namespace gallery
