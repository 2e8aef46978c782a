#include "preferences_dialog.h"

#include "json_report.h"
#include "missing_resource.h"
#include "restart.h"
#include "window_run.h"

#include <cfgmgr2/product_locations.h>
#include <commondlg3/message_window.h>
#include <commondlg3/resources.h>
#include <cpil/catalog.h>
#include <gen_helpers2/log.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/enabling.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/moving.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/listbox.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/srchctrl.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <string>
#include <utility>

namespace gallery {
namespace {

using CPIL_2_18::i18n::catalog_key;

// In characters of the present font.
constexpr int usual_columns = 95;
constexpr int usual_lines = 30;
constexpr int least_columns = 65;
constexpr int least_lines = 19;

int stored_number(cfgmgr2::IPropertyStorage& storage, const char* name, int otherwise)
{
    constexpr int beyond_any_screen = 20000;
    const auto value = storage.get_value(name);
    if (!value.can_get<int>() || value.get<int>() <= 0 || value.get<int>() > beyond_any_screen)
        return otherwise;
    return value.get<int>();
}

} // namespace

preferences_dialog_t::preferences_dialog_t(const std::string& first_page)
    : m_first_page(first_page),
      m_given_size(*this, wxSize(usual_columns, usual_lines), wxSize(least_columns, least_lines))
{
    set_resource_file(resource_file());
    m_catalog_name = "gallery";
    set_resource_object("dlg.preferences");
    for (auto& page : make_preferences_pages())
        m_pages.push_back({std::move(page)});
    gen_helpers2::error_code_t ignored; // what cannot be read is as if nothing had been remembered
    const auto file = cfgmgr2::IProductLocations::get()->get_config_directory() / "windows.xml";
    m_remembered = cfgmgr2::open_property_storage(file, ignored);
}

preferences_dialog_t::~preferences_dialog_t() = default;

nlohmann::json preferences_dialog_t::get_data() const
{
    nlohmann::json data = nlohmann::json::object();
    for (const shown_page_t& shown : m_pages)
        data[shown.page->get_object()] = shown.page->get_data();
    return data;
}

void preferences_dialog_t::on_init_dialog()
{
    Bind(wxEVT_IDLE, &preferences_dialog_t::on_idle, this);
    m_list = commondlg3::from_xrc<wxListBox>(this, "m_pages");
    m_area = commondlg3::from_xrc<wxScrolledWindow>(this, "m_page_area");
    m_apply = commondlg3::from_xrc<wxButton>(this, "m_btn_apply");
    m_search = commondlg3::from_xrc<wxSearchCtrl>(this, "m_search");
    m_nothing_found = commondlg3::from_xrc<wxStaticText>(this, "m_nothing_found");
    if (!m_list || !m_area || !m_apply || !m_search || !m_nothing_found)
        return;
    m_area->SetScrollRate(10, 10);
    m_out_of_sight = new wxPanel(this);
    m_out_of_sight->Hide();
    wx_helpers1::set_accessible_name(m_list, text("preferences.pages"));
    m_search->SetDescriptiveText(wx_helpers1::to_label(text("preferences.search")));
    wx_helpers1::set_accessible_name(m_search, text("preferences.search"));
    std::string reasons; // told together: a window over a window would be in the way
    for (const shown_page_t& shown : m_pages) {
        const auto result = shown.page->load();
        if (result.failed())
            reasons += (reasons.empty() ? "" : "\n") + result.message();
    }
    if (!reasons.empty())
        tell_once_shown(reasons);
    fill_list();
    m_least_list_width = m_list->GetMinSize().x;
    m_list->Bind(wxEVT_LISTBOX, [this](wxCommandEvent& event) {
        const int row = event.GetSelection();
        select(row >= 0 && row < static_cast<int>(m_listed.size()) ? m_listed[row] : -1);
    });
    m_search->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { search(); });
    Bind(wxEVT_CHAR_HOOK, &preferences_dialog_t::on_search_key, this);
    m_apply->Bind(wxEVT_BUTTON, [this](wxCommandEvent& event) {
        if (apply())
            prompt_restart();
        if (m_wants_restart)
            handle_ok(event);
    });
    const auto changed = [this](wxCommandEvent& event) {
        event.Skip();
        update_apply();
    };
    for (const auto& type :
         {wxEVT_TEXT, wxEVT_CHECKBOX, wxEVT_RADIOBUTTON, wxEVT_CHOICE, wxEVT_LISTBOX, wxEVT_BUTTON})
        Bind(type, changed);
    restore();
}

// The toolkit may show the dialog later than it is asked to: a message before would come to lie behind it.
void preferences_dialog_t::tell_once_shown(const std::string& reasons)
{
    Bind(wxEVT_SHOW, [this, reasons](wxShowEvent& event) {
        event.Skip();
        if (event.IsShown() && !std::exchange(m_told, true))
            CallAfter([this, reasons] {
                tell(catalog_key("preferences.not_read"), catalog_key("preferences.not_read_details"),
                     reasons);
            });
    });
}

void preferences_dialog_t::restore()
{
    const auto stored = m_remembered->get_child("preferences");
    const auto remembered = stored->get_value("page");
    if (m_first_page.empty() && remembered.can_get<std::string>())
        m_first_page = remembered.get<std::string>();
    const auto found = std::find_if(m_pages.begin(), m_pages.end(), [this](const shown_page_t& shown) {
        return shown.page->get_object() == m_first_page;
    });
    const auto at = found == m_pages.end() ? m_pages.begin() : found;
    m_given_size.want(wxSize(stored_number(*stored, "width", usual_columns * GetCharWidth()),
                             stored_number(*stored, "height", usual_lines * GetCharHeight())));
    fit();
    if (at != m_pages.end())
        select(static_cast<int>(at - m_pages.begin()));
    make_room();
    centre_on_parent();
    m_list->SetFocus();
}

// As large as it was in characters, of which there is less room on the screen at large fonts: the area scrolls
// then.
void preferences_dialog_t::fit()
{
    // The titles as wide as the font makes them: the width in the layout is the least one.
    m_list->SetMinSize(wxSize(m_least_list_width, m_list->GetMinSize().y)); // its best size is never less
    m_list->SetMinSize(wxSize(std::max(m_least_list_width, m_list->GetBestSize().x), m_list->GetMinSize().y));
    fit_to_contents();
    m_given_size.give(GetMinClientSize());
}

void preferences_dialog_t::fit_again()
{
    if (!m_list)
        return;
    m_given_size.take_over();
    fit();
    fit_page();
    make_room();
}

// The page that is seen first says how wide the dialog must be at the present font, as far as the screen
// goes; what is wider than the area scrolls.
void preferences_dialog_t::make_room()
{
    const int missing = m_area->GetSizer()->CalcMin().x - m_area->GetClientSize().x;
    if (missing > 0) {
        const int widest = std::max(GetSize().x, wxGetClientDisplayRect().width);
        SetSize(std::min(GetSize().x + missing, widest), GetSize().y);
        Layout();
    }
    m_given_size.keep();
}

void preferences_dialog_t::remember()
{
    const auto stored = m_remembered->get_child("preferences");
    if (const int at = get_selected(); at >= 0)
        stored->set_value("page", m_pages[at].page->get_object());
    stored->set_value("width", GetClientSize().x);
    stored->set_value("height", GetClientSize().y);
    const auto result = m_remembered->save();
    if (result.failed())
        gen_helpers2::log_warning("gallery", "the window's size was not kept: " + result.as_string());
}

void preferences_dialog_t::fill_list()
{
    const search_words_t words(wx_helpers1::from_wx(m_search->GetValue()));
    m_listed.clear();
    m_list->Clear();
    for (int i = 0; i < static_cast<int>(m_pages.size()); ++i) {
        const shown_page_t& shown = m_pages[i];
        std::string texts = shown.page->get_title() + "\n" + shown.page->get_search_words() + "\n";
        if (shown.window)
            texts += get_page_texts(*shown.window);
        if (!words.are_in(texts))
            continue;
        m_listed.push_back(i);
        m_list->Append(wx_helpers1::to_label(shown.page->get_title()));
    }
}

void preferences_dialog_t::search()
{
    const bool any_words = !search_words_t(wx_helpers1::from_wx(m_search->GetValue())).empty();
    if (any_words)
        for (shown_page_t& shown : m_pages) // only a page that is there has words to be searched
            if (!shown.window) {
                create_page(shown);
                shown.window->Hide();
            }
    const int before = get_selected();
    fill_list();
    const bool stays = std::find(m_listed.begin(), m_listed.end(), before) != m_listed.end();
    m_nothing_found->Show(m_listed.empty());
    Layout();
    select(stays ? before : m_listed.empty() ? before : m_listed.front());
}

// Enter would press OK, and Escape end the dialog, before a search is over.
void preferences_dialog_t::on_search_key(wxKeyEvent& event)
{
    const wxWindow* focus = FindFocus();
    const bool searching = focus && (focus == m_search || focus->GetParent() == m_search);
    const int key = event.GetKeyCode();
    if (event.ControlDown() && key == 'F')
        m_search->SetFocus();
    else if (searching && key == WXK_ESCAPE && !m_search->IsEmpty())
        m_search->SetValue(wxEmptyString);
    else if (searching && key == WXK_DOWN)
        m_list->SetFocus();
    else if (searching && (key == WXK_RETURN || key == WXK_NUMPAD_ENTER) && m_marks.get_first())
        focus_setting(*m_marks.get_first());
    else if (!(searching && (key == WXK_RETURN || key == WXK_NUMPAD_ENTER) && !m_search->IsEmpty()))
        event.Skip();
}

int preferences_dialog_t::get_selected() const
{
    for (int i = 0; i < static_cast<int>(m_pages.size()); ++i)
        if (m_pages[i].window && m_pages[i].window->IsShown())
            return i;
    return -1;
}

// The toolkit shows what is new when it is idle: what a script does before that goes elsewhere.
void preferences_dialog_t::on_idle(wxIdleEvent& event)
{
    event.Skip();
    fit_page();
    const int shown = get_selected();
    if (shown < 0 || shown == m_reported || !m_pages[shown].window->IsShownOnScreen())
        return;
    m_reported = shown;
    report_signal(object_name, "page", m_pages[shown].page->get_object());
}

// A page needs another size once its texts have been broken anew.
void preferences_dialog_t::fit_page()
{
    const wxSize needed = m_area ? m_area->GetSizer()->CalcMin() : wxSize();
    if (needed == m_fitted)
        return;
    m_fitted = needed;
    m_area->FitInside();
    m_area->Layout();
}

void preferences_dialog_t::select(int index)
{
    if (index < 0 || index >= static_cast<int>(m_pages.size()))
        return;
    const auto row = std::find(m_listed.begin(), m_listed.end(), index);
    m_list->SetSelection(row == m_listed.end() ? wxNOT_FOUND : static_cast<int>(row - m_listed.begin()));
    create_page(m_pages[index]);
    for (const shown_page_t& shown : m_pages)
        put_page(shown, &shown == &m_pages[index]);
    m_area->FitInside();
    m_area->Layout();
    const search_words_t words(wx_helpers1::from_wx(m_search->GetValue()));
    m_marks.show(find_settings(*m_pages[index].window, words));
    update_apply();
}

void preferences_dialog_t::create_page(shown_page_t& shown)
{
    if (shown.window)
        return;
    shown.window = shown.page->create(m_area);
    m_area->GetSizer()->Add(shown.window, 1, wxEXPAND);
}

// The pages that are not seen stand elsewhere: the toolkit moves all that is in a window that scrolls, and
// complains of what is hidden.
void preferences_dialog_t::put_page(const shown_page_t& shown, bool in_sight)
{
    if (!shown.window)
        return;
    wxWindow* const place = in_sight ? m_area : m_out_of_sight;
    if (shown.window->GetParent() == place) {
        shown.window->Show(in_sight);
        return;
    }
    if (!in_sight)
        m_area->GetSizer()->Detach(shown.window);
    shown.window->Hide(); // it must not be seen in its new place before it has a size there
    wx_helpers1::move_window(shown.window, place, in_sight);
    if (in_sight)
        m_area->GetSizer()->Add(shown.window, 1, wxEXPAND);
}

bool preferences_dialog_t::apply()
{
    bool written = true;
    for (shown_page_t& shown : m_pages) {
        if (!shown.window || !shown.page->is_changed())
            continue;
        const auto result = shown.page->apply();
        if (result.failed()) {
            written = false;
            tell(catalog_key("preferences.not_written"), catalog_key("preferences.not_written_details"),
                 result.message());
        }
    }
    report_signal(object_name, "apply", written);
    update_apply();
    return written;
}

void preferences_dialog_t::prompt_restart()
{
    for (shown_page_t& shown : m_pages)
        m_wants_restart = shown.page->prompt_restart() || m_wants_restart;
}

void preferences_dialog_t::update_apply()
{
    const bool changed = std::any_of(m_pages.begin(), m_pages.end(), [](const shown_page_t& shown) {
        return shown.window && shown.page->is_changed();
    });
    wx_helpers1::set_enabled(m_apply, changed, m_btn_ok);
}

void preferences_dialog_t::tell(const char* main_key, const char* details_key, const std::string& reason)
{
    auto window = commondlg3::message_window_t::simple_error_wnd("gallery", main_key, details_key, {}, {});
    window.details_message = reason;
    commondlg3::show_modal(window, this);
}

void preferences_dialog_t::handle_ok(wxCommandEvent& event)
{
    if (!m_list || !apply())
        return;
    remember();
    prompt_restart();
    dialog_base_t::handle_ok(event);
}

int open_preferences(const nlohmann::json& data, wxWindow* parent)
{
    constexpr auto object = preferences_dialog_t::object_name;
    return window_run_t::run(object, parent, {own_layout(object)}, [&](window_run_t& run) {
        preferences_dialog_t dialog(get_string(data, "page", ""));
        run.show(dialog);
        run.set_data(dialog.get_data());
        if (dialog.wants_restart()) {
            report_signal(object, "restart", true);
            request_restart();
        }
    });
}

} // namespace gallery
