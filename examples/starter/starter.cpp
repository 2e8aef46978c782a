// A product in one file, to begin another with: it finds large files below the user's home. It has a window
// with a log, a thread that writes to the log, preferences, and a question that the user can silence and bring
// back.
//
// Its own texts stand here, in English; the library's come in the user's language. A product whose texts are
// translated installs its catalog as share/locale/<language>/LC_MESSAGES/starter.mo, beside the library's, and
// asks for each text by its key:
// commondlg3::message_window_t::get_message("starter", "search.title", {}).
#include <commondlg3/form_page.h>
#include <commondlg3/inplace_ctrl.h>
#include <commondlg3/preferences_frame.h>
#include <commondlg3/product_app.h>
#include <commondlg3/silenced_messages_page.h>
#include <gen_helpers2/log.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/enabling.h>
#include <wx_helpers1/tasks.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/frame.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>
#include <wx/stattext.h>
#include <wx/utils.h>
#include <wx/xrc/xmlres.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;
using commondlg3::message_window_t;
using commondlg3::standard_message_t;
constexpr int gap = 12; // in pixels, as the library has between controls

/// What the user can choose: a page of the preferences, and whoever needs the setting asks it.
class search_page_t : public commondlg3::form_page_t
{
public:
    explicit search_page_t(commondlg3::settings_file_ptr_t file) : form_page_t(std::move(file), "search")
    {
        add("megabytes", "m_megabytes", 100);
    }
    std::string get_title() const override { return "Search"; }
    int get_megabytes() const { return get_settings().get<gen_helpers2::variant_t>("megabytes").get<int>(); }

protected:
    void make_controls(wxPanel& page) override
    {
        auto* label = new wxStaticText(&page, wxID_ANY, "&Files are large from this many MB on:");
        auto* megabytes = new wxSpinCtrl(&page, XRCID("m_megabytes"));
        megabytes->SetRange(1, 1000000);
        wx_helpers1::set_label_for(label, megabytes);
        auto* rows = new wxBoxSizer(wxVERTICAL);
        rows->Add(label, 0, wxLEFT | wxRIGHT | wxTOP, gap);
        rows->Add(megabytes, 0, wxALL, gap);
        page.SetSizer(rows);
    }
};

/// What the thread does. It knows no window: it says lines to the log, and the progress asks it to stop.
int find_large(const fs::path& folder, std::uintmax_t megabytes, msngr2::IMessenger& log,
               msngr2::IProgress& progress)
{
    int found = 0;
    progress.start("Searching", 0); // nobody knows how much there is
    std::vector<fs::path> left{folder};
    while (!left.empty() && !progress.isCanceled()) {
        const fs::path searched = left.back();
        left.pop_back();
        progress.message(searched.c_str());
        std::error_code error;
        for (fs::directory_iterator at(searched, error), end; !error && at != end; at.increment(error)) {
            std::error_code gone;
            const auto size = at->is_regular_file(gone) ? at->file_size(gone) / 1000000 : 0;
            if (at->is_directory(gone) && !at->is_symlink(gone))
                left.push_back(at->path());
            else if (size >= megabytes && !gone && ++found)
                log.say(msngr2::sev_none, (std::to_string(size) + " MB  " + at->path().string()).c_str());
        }
        if (error)
            log.say(msngr2::sev_error, (searched.string() + ": " + error.message()).c_str());
    }
    progress.message(progress.isCanceled() ? "Stopped" : "All folders were searched");
    progress.finish();
    return found;
}

class main_window_t : public wxFrame, public gen_helpers2::subscriber_base_t
{
public:
    main_window_t() : wxFrame(nullptr, wxID_ANY, "Starter")
    {
        if (const auto read = m_settings->load(); read.failed())
            gen_helpers2::log_warning("starter", "the settings are unknown: " + read.as_string());
        auto* panel = new wxPanel(this);
        m_log = new commondlg3::inplace_ctrl_t(panel, false);
        m_search = new wxButton(panel, wxID_ANY, "&Search");
        m_search->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { search(); });
        auto* preferences = new wxButton(panel, wxID_ANY, wx_helpers1::to_label("&Preferences…"));
        preferences->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { open_preferences(); });
        auto* buttons = new wxBoxSizer(wxHORIZONTAL);
        buttons->Add(m_search);
        buttons->AddStretchSpacer();
        buttons->Add(preferences);
        auto* rows = new wxBoxSizer(wxVERTICAL);
        rows->Add(m_log, 1, wxEXPAND | wxALL, gap);
        rows->Add(buttons, 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, gap);
        panel->SetSizer(rows);
        m_ended.connect(this, &main_window_t::on_ended);
        SetClientSize(90 * GetCharWidth(), 30 * GetCharHeight());
        m_search->SetFocus();
    }

    // The window is gone from the screen by now: should a folder hang, nobody sees this wait for it.
    ~main_window_t() override
    {
        if (!m_worker.joinable())
            return;
        m_progress->cancel();
        m_worker.join();
    }

private:
    void search()
    {
        message_window_t question;
        question.icon_type = message_window_t::icon_types_t::information;
        question.button_type = message_window_t::button_type_t::ok_cancel;
        question.main_message = "Search your home folder?";
        question.supplemental_message = "All files in it are looked at, which may take some minutes.";
        commondlg3::silenced_messages_t silenced(m_settings->get());
        if (silenced.ask("search.begin", question, this) != message_window_t::result_ok)
            return;

        commondlg3::progress_message_t::ptr_t entry(new commondlg3::progress_message_t);
        entry->picture = standard_message_t::get_icon_by_type(standard_message_t::icon_types_t::progress);
        entry->caption = "Large files";
        m_tag = m_log->add_progress(entry, {});
        m_progress = m_log->get_progress(m_tag);
        wx_helpers1::set_enabled(m_search, false);
        m_worker =
            std::thread([folder = wx_helpers1::from_wx(wxGetHomeDir()), megabytes = m_page->get_megabytes(),
                         log = m_log->get_messenger(m_tag), progress = m_progress, ended = m_ended] {
                wx_helpers1::tasks::PostSignal(ended, find_large(folder, megabytes, *log, *progress));
            });
    }

    void on_ended(int found)
    {
        m_worker.join();
        const char* const end = m_progress->isCanceled() ? " (cancelled)" : "";
        standard_message_t::ptr_t entry(new standard_message_t);
        entry->picture = standard_message_t::get_icon_by_type(standard_message_t::icon_types_t::information);
        entry->caption = "Large files: " + std::to_string(found) + end;
        m_log->update_message(m_tag, entry, {});
        m_search->Enable();
    }

    void open_preferences()
    {
        commondlg3::preferences_frame_t frame;
        frame.add_page(m_page);
        frame.add_page(std::make_shared<commondlg3::silenced_messages_page_t>(m_settings));
        frame.show_modal(this);
    }

    const commondlg3::settings_file_ptr_t m_settings =
        std::make_shared<commondlg3::settings_file_t>("preferences.xml");
    const std::shared_ptr<search_page_t> m_page = std::make_shared<search_page_t>(m_settings);
    commondlg3::inplace_ctrl_t* m_log = nullptr;
    wxButton* m_search = nullptr;
    commondlg3::inplace_ctrl_t::tag_t m_tag = 0;
    msngr2::IProgress* m_progress = nullptr;
    std::thread m_worker;
    gen_helpers2::signal_t<int> m_ended;
};

} // namespace

class starter_t : public commondlg3::product_app_t
{
public:
    starter_t() : product_app_t("Starter") {}
    bool OnInit() override { return product_app_t::OnInit() && (new main_window_t)->Show(); }
};

wxIMPLEMENT_APP(starter_t);
