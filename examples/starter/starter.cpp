// A product in one file, to begin another with: it finds large files below the user's home. It has a window
// with a log, a thread that writes to the log, preferences, and a question that the user can silence and bring
// back.
//
//     cmake -S . -B build && cmake --build build && build/starter
//
// Its own texts stand here, in English; those of the library come in the user's language. A product whose
// texts are translated installs its catalog as share/locale/<language>/LC_MESSAGES/starter.mo, beside the
// library's, and asks for each text by its key:
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
#include <wx/checkbox.h>
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
using gen_helpers2::variant_t;

constexpr int gap = 12; // in pixels, as the library has between controls
constexpr std::uintmax_t megabyte = 1000000;

/// What the user can choose: a page of the preferences, and whoever needs a setting asks it.
class search_page_t : public commondlg3::form_page_t
{
public:
    explicit search_page_t(commondlg3::settings_file_ptr_t file) : form_page_t(std::move(file), "search")
    {
        add("megabytes", "m_megabytes", 100);
        add("hidden", "m_hidden", false);
    }
    std::string get_title() const override { return "Search"; }
    std::uintmax_t get_megabytes() const
    {
        return static_cast<std::uintmax_t>(get_settings().get<variant_t>("megabytes").get<int>());
    }
    bool searches_hidden() const { return get_settings().get<variant_t>("hidden").get<bool>(); }

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
        rows->Add(new wxCheckBox(&page, XRCID("m_hidden"), "Search &hidden folders, too"), 0,
                  wxLEFT | wxRIGHT | wxBOTTOM, gap);
        page.SetSizer(rows);
    }
};

/// What the thread does. It knows no window: it says lines to the log, and is asked to stop by the progress.
struct search_t
{
    fs::path folder;
    std::uintmax_t megabytes;
    bool searches_hidden;
    msngr2::IMessenger* messenger;
    msngr2::IProgress* progress;

    /// Counts the files that it finds, and the folders that cannot be searched.
    void run(int& found, int& failed) const
    {
        progress->start("Searching", 0); // nobody knows how much there is
        std::vector<fs::path> left{folder};
        while (!left.empty() && !progress->isCanceled()) {
            const fs::path searched = left.back();
            left.pop_back();
            progress->message(searched.c_str());
            std::error_code error;
            fs::directory_iterator at(searched, error);
            for (; !error && at != fs::directory_iterator(); at.increment(error)) {
                std::error_code ignored; // of a file that is gone already
                const fs::file_type type = at->symlink_status(ignored).type();
                if (type == fs::file_type::directory) {
                    if (searches_hidden || at->path().filename().native().front() != '.')
                        left.push_back(at->path());
                } else if (const auto size = at->file_size(ignored) / megabyte;
                           type == fs::file_type::regular && !ignored && size >= megabytes) {
                    ++found;
                    messenger->say(msngr2::sev_none,
                                   (std::to_string(size) + " MB  " + at->path().string()).c_str());
                }
            }
            if (error) {
                ++failed;
                messenger->say(msngr2::sev_error, (searched.string() + ": " + error.message()).c_str());
            }
        }
        progress->start("Searched", 1); // a full bar, but where the user has cancelled
        progress->internalProgressed(1);
        progress->message("");
        progress->finish();
    }
};

class main_window_t : public wxFrame, public gen_helpers2::subscriber_base_t
{
public:
    main_window_t() : wxFrame(nullptr, wxID_ANY, "Starter")
    {
        if (const auto read = m_settings->load(); read.failed())
            gen_helpers2::log_warning("starter", "the settings are unknown: " + read.as_string());
        auto* panel = new wxPanel(this); // Tab goes from one to the next of what is in it
        m_log = new commondlg3::inplace_ctrl_t(panel, false);
        m_log->offer(commondlg3::inplace_ctrl_t::offer_view | commondlg3::inplace_ctrl_t::offer_save |
                     commondlg3::inplace_ctrl_t::offer_clear);
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
        commondlg3::message_options_t options;
        options.first.label = "&Search";
        commondlg3::silenced_messages_t silenced(m_settings->get());
        if (silenced.ask("search.begin", question, this, options) != message_window_t::result_ok)
            return;

        commondlg3::progress_message_t::ptr_t entry(new commondlg3::progress_message_t);
        entry->picture = standard_message_t::get_icon_by_type(standard_message_t::icon_types_t::progress);
        entry->caption = "Large files";
        m_tag = m_log->add_progress(entry, {});
        m_progress = m_log->get_progress(m_tag);
        wx_helpers1::set_enabled(m_search, false);
        const search_t work{wx_helpers1::from_wx(wxGetHomeDir()), m_page->get_megabytes(),
                            m_page->searches_hidden(), m_log->get_messenger(m_tag), m_progress};
        m_worker = std::thread([work, ended = m_ended] {
            int found = 0, failed = 0;
            work.run(found, failed);
            wx_helpers1::tasks::PostSignal(ended, found, failed);
        });
    }

    void on_ended(int found, int failed)
    {
        m_worker.join();
        const bool complete = failed == 0 && !m_progress->isCanceled();
        standard_message_t::ptr_t entry(new standard_message_t);
        entry->picture = standard_message_t::get_icon_by_type(
            complete ? standard_message_t::icon_types_t::success : standard_message_t::icon_types_t::warning);
        entry->caption = "Large files: " + std::to_string(found);
        if (!complete)
            entry->message = "Not all folders were searched; there may be more.";
        m_log->update_message(m_tag, entry, {});
        m_search->Enable();
    }

    void open_preferences()
    {
        commondlg3::preferences_frame_t frame;
        frame.add_page(m_page);
        frame.add_page(std::make_shared<commondlg3::silenced_messages_page_t>(m_settings));
        frame.set_memory(std::make_shared<commondlg3::settings_file_t>("windows.xml"));
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
    gen_helpers2::signal_t<int, int> m_ended;
};

class starter_t : public commondlg3::product_app_t
{
public:
    starter_t() : product_app_t("Starter") {}
    bool OnInit() override { return product_app_t::OnInit() && (new main_window_t)->Show(); }
};

} // namespace

wxIMPLEMENT_APP(starter_t);
