#include "log_page.h"

#include "json_report.h"
#include "missing_resource.h"
#include "open_source_dialog.h"
#include "window_run.h"

#include <cfgmgr2/product_locations.h>
#include <cpil/catalog.h>
#include <gen_helpers2/file.h>
#include <gen_helpers2/strings.h>
#include <vdx/event_log.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/utils.h>

#include <filesystem>

namespace gallery {
namespace {

using commondlg3::standard_message_t;
using wx_helpers1::to_label;

std::string file_in_config(const std::string& file)
{
    return cfgmgr2::IProductLocations::get()->get_config_directory().as_string() + "/" + file;
}

commondlg3::message_t::ptr_t log_message_from(const nlohmann::json& data)
{
    standard_message_t::ptr_t message(new standard_message_t);
    message->caption = get_string(data, "caption", "");
    message->message = get_string(data, "message", "");
    const int icon = get_int(data, "icon_type", -1);
    if (icon >= 0)
        message->picture =
            standard_message_t::get_icon_by_type(static_cast<standard_message_t::icon_types_t>(icon));
    const int buttons = get_int(data, "buttons", -1);
    if (buttons >= 0)
        message->set_buttons(static_cast<standard_message_t::standard_buttons_t>(buttons));
    return message;
}

nlohmann::json sample_entries()
{
    return nlohmann::json::array({
        {{"caption", text("sample.main.success")},
         {"message", text("sample.supplemental.success")},
         {"icon_type", 2},
         {"lines", {{{"severity", 0}, {"text", text("log.sample.opened")}}}}},
        {{"caption", text("sample.main.progress")},
         {"message", text("sample.supplemental.progress")},
         {"icon_type", 4},
         {"progress", 0.6},
         {"status", text("log.sample.status")},
         {"lines",
          {{{"severity", 0}, {"text", text("log.sample.opened")}},
           {{"severity", 2}, {"text", text("log.sample.slow")}},
           {{"severity", 4}, {"text", text("log.sample.unreadable")}}}}},
        {{"caption", text("sample.main.warning")},
         {"message", text("log.sample.share") + ": " + text("sample.supplemental.warning")},
         {"icon_type", 1},
         {"buttons", 2}},
    });
}

class shown_log_t : public log_page_t
{
public:
    shown_log_t(wxWindow* parent, const nlohmann::json& entries)
        : log_page_t(parent, CPIL_2_18::i18n::catalog_key("log.title"), std::string())
    {
        finish_layout();
        for (const auto& entry : entries)
            if (entry.is_object())
                add(entry);
    }

private:
    void add(const nlohmann::json& entry)
    {
        commondlg3::inplace_ctrl_t& log = get_log();
        commondlg3::inplace_ctrl_t::tag_t tag;
        const auto message = log_message_from(entry);
        if (entry.contains("progress")) {
            commondlg3::progress_message_t::ptr_t record(new commondlg3::progress_message_t);
            record->caption = message->caption;
            record->message = message->message;
            record->picture = message->picture;
            tag = log.add_progress(record, make_callback());
            msngr2::IProgress* progress = log.get_progress(tag);
            const auto& done = entry["progress"];
            progress->start(get_string(entry, "status", "").c_str(), 1);
            progress->internalProgressed(done.is_number() ? done.get<double>() : 0.0);
        } else
            tag = log.add_message(message, make_callback());
        if (!entry.contains("lines") || !entry["lines"].is_array())
            return;
        msngr2::IMessenger* messenger = log.get_messenger(tag);
        for (const auto& line : entry["lines"]) {
            const std::string said = get_string(line, "text", "");
            for (int times = get_int(line, "times", 1); times > 0; --times)
                messenger->say(static_cast<msngr2::ESeverity>(get_int(line, "severity", 0)), said.c_str());
        }
    }
};

// A script that floods the log wants to know how much there is, not what.
constexpr std::size_t most_lines_told = 10000;

nlohmann::json state_of(log_page_t& page)
{
    const bool changed = page.get_log().has_changes();
    const auto& elements = page.get_log().get_log().GetElements();
    std::size_t count = 0;
    for (const auto& element : elements)
        count += element->GetLines().size();
    if (count > most_lines_told)
        return {{"entries", elements.size()}, {"lines", count}, {"has_changes", changed}};
    gen_helpers2::variant_bag_t bag;
    page.get_log().save(bag);
    nlohmann::json entries = nlohmann::json::array();
    bag.for_each_child("message_entry_t", [&entries](const gen_helpers2::variant_bag_t& saved) {
        using gen_helpers2::variant_t;
        nlohmann::json lines = nlohmann::json::array();
        saved.for_each_child("message", [&lines](const gen_helpers2::variant_bag_t& line) {
            lines.push_back({{"severity", line.get<variant_t>("severity").get<int>()},
                             {"text", line.get<variant_t>("msg").get<std::string>()}});
        });
        entries.push_back({{"caption", saved.get<variant_t>("cap").get<std::string>()},
                           {"message", saved.get<variant_t>("msg").get<std::string>()},
                           {"lines", lines}});
    });
    return {{"entries", entries}, {"has_changes", changed}};
}

} // namespace

int run_log_page(log_page_t& page, wxWindow* parent)
{
    return window_run_t::run(log_object, parent, {}, [&page](window_run_t& run) {
        run.show([&page] { return page.ShowModal(); });
        const bool changed = page.get_log().has_changes(); // after the next line nothing counts as changed
        run.set_data(state_of(page));
        if (changed)
            page.keep();
    });
}

log_page_t::log_page_t(wxWindow* parent, const std::string& title_key, const std::string& file)
    : m_file(file.empty() ? file : file_in_config(file)), m_controls(new wxBoxSizer(wxHORIZONTAL))
{
    Create(parent, wxID_ANY, wx_helpers1::to_wx_locale(text(title_key)), wxDefaultPosition, wxDefaultSize,
           wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER);
    m_log = new commondlg3::inplace_ctrl_t(this, true);
    using commondlg3::inplace_ctrl_t;
    m_log->offer(inplace_ctrl_t::offer_view | inplace_ctrl_t::offer_save | inplace_ctrl_t::offer_clear);
    m_log->link_activated().connect(this, [this](const vdxcfrw7::log_link_t& link) { open_link(link); });
    auto* clear = new wxButton(this, wxID_ANY, to_label(text("log.clear")));
    auto* save = new wxButton(this, wxID_ANY, to_label(text("log.save")));
    auto* close = new wxButton(this, wxID_CANCEL, to_label(text("log.close")));
    save->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { m_log->ask_save_as(); });
    clear->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { m_log->clear(); });
    auto* below = new wxBoxSizer(wxHORIZONTAL);
    below->Add(clear);
    below->Add(save, 0, wxLEFT, 8);
    below->AddStretchSpacer();
    below->Add(close);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_controls, 0, wxEXPAND | wxLEFT | wxRIGHT | wxTOP, 12);
    sizer->Add(m_log, 1, wxEXPAND | wxALL, 12);
    sizer->Add(below, 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, 12);
    SetSizer(sizer);
    load();
}

log_page_t::~log_page_t()
{
    if (m_log->has_changes())
        keep();
}

void log_page_t::finish_layout()
{
    fit();
    CentreOnParent();
    m_log->get_log().GetWindow()->SetFocus();
    if (auto* settings = wx_helpers1::ui_settings_t::get())
        settings->settled().connect(this, [this] { fit(); });
}

void log_page_t::fit()
{
    for (wxWindow* child : GetChildren())
        wx_helpers1::apply_native_height(child);
    const wxSize needed = GetSizer()->CalcMin();
    wxSize usual(760, 560), least(520, 360);
    usual.IncTo(needed);
    least.IncTo(needed);
    usual.DecTo(wxGetClientDisplayRect().GetSize());
    least.DecTo(usual);
    SetClientSize(usual);
    SetMinClientSize(least);
    Layout();
}

commondlg3::inplace_ctrl_t::callback_t log_page_t::make_callback()
{
    commondlg3::inplace_ctrl_t::callback_t callback;
    callback.connect([object = std::string(log_object)](int id) { report_signal(object, "button", id); });
    return callback;
}

void log_page_t::open_link(const vdxcfrw7::log_link_t& link)
{
    report_signal(log_object, "link", gen_helpers2::replace_invalid_utf8(link.target));
    if (link.kind == vdxcfrw7::log_link_t::kind_t::file)
        open_in_users_editor(log_object, (std::filesystem::path(get_folder()) / link.path).string(),
                             link.line, this);
    else if (link.target.compare(0, 4, "http") == 0)
        wxLaunchDefaultBrowser(wx_helpers1::to_wx(link.target));
}

void log_page_t::load()
{
    if (!m_file.empty())
        m_log->load_file(gen_helpers2::path_t(m_file));
}

void log_page_t::keep()
{
    if (m_file.empty())
        return;
    gen_helpers2::make_private_folder(
        gen_helpers2::path_t(std::filesystem::path(m_file).parent_path().string()));
    m_log->take_contents().save_later(gen_helpers2::path_t(m_file));
}

int open_log(const nlohmann::json& data, wxWindow* parent)
{
    const bool given = data.is_object() && data.contains("entries") && data["entries"].is_array();
    shown_log_t page(parent, given ? data["entries"] : sample_entries());
    if (given && data.contains("view") && data["view"].is_object()) {
        const auto& view = data["view"];
        page.get_log().set_view(
            {static_cast<commondlg3::inplace_ctrl_t::view_t::times_t>(get_int(view, "times", 0)),
             get_int(view, "wrap", 1) != 0, get_int(view, "collapse", 0) != 0, get_int(view, "zoom", 100),
             get_int(view, "copy_times", 0) != 0});
    }
    return run_log_page(page, parent);
}

int open_progress_page(const nlohmann::json&, wxWindow* parent)
{
    progress_page_t page(parent);
    return run_log_page(page, parent);
}

int open_walk_page(const nlohmann::json&, wxWindow* parent)
{
    walk_page_t page(parent);
    return run_log_page(page, parent);
}

int open_flood_page(const nlohmann::json&, wxWindow* parent)
{
    flood_page_t page(parent);
    return run_log_page(page, parent);
}

} // namespace gallery
