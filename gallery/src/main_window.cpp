#include "main_window.h"

#include "experimental_features.h"
#include "missing_resource.h"
#include "open_source_dialog.h"
#include "preferences_entry.h"
#include "show_code.h"

#include <cfgmgr2/message_catalog.h>
#include <cfgmgr2/product_locations.h>
#include <cfgmgr2/property_storage.h>
#include <commondlg3/resources.h>
#include <commondlg3/text_utils.h>
#include <gen_helpers2/log.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/layout_direction.h>
#include <wx_helpers1/modal_flavor.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/text_limit.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/app.h>
#include <wx/button.h>
#include <wx/listbox.h>
#include <wx/menu.h>
#include <wx/sizer.h>
#include <wx/srchctrl.h>
#include <wx/stattext.h>
#include <wx/weakref.h>

#include <algorithm>
#include <string>

namespace gallery {
namespace {

using wx_helpers1::to_label;
using wx_helpers1::ui_settings_t;

// Those that the build makes up, to look at windows with long texts, have regions that stand for no place.
bool is_spoken(const std::string& language)
{
    return language.find("_X") == std::string::npos;
}

std::string own_name(const std::string& language)
{
    const auto catalog = cfgmgr2::getMessageCatalog(language_catalog, language);
    return catalog ? catalog->message("language.name").as_ustring() : language;
}

std::string entry_text(const entry_t& entry, const char* what)
{
    return text("gallery.entry." + entry.id + "." + what);
}

} // namespace

main_panel_t::main_panel_t()
{
    set_resource_file(resource_file());
    m_catalog_name = "gallery";
    set_resource_object("panel.gallery");
}

void main_panel_t::on_init_dialog()
{
    m_search = commondlg3::from_xrc<wxSearchCtrl>(this, "m_search");
    m_list = commondlg3::from_xrc<wxListBox>(this, "m_list");
    m_category = commondlg3::from_xrc<wxStaticText>(this, "m_category");
    m_name = commondlg3::from_xrc<wxStaticText>(this, "m_name");
    m_description = commondlg3::from_xrc<wxStaticText>(this, "m_description");
    m_status = commondlg3::from_xrc<wxStaticText>(this, "m_status");
    m_open = commondlg3::from_xrc<wxButton>(this, "m_btn_open");
    m_code = commondlg3::from_xrc<wxButton>(this, "m_btn_code");
    if (!m_search || !m_list || !m_category || !m_name || !m_description || !m_status || !m_open || !m_code)
        return;
    wx_helpers1::limit_search(m_search);
    wx_helpers1::set_accessible_name(m_list, text("gallery.list"));
    m_search->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { fill_list(); });
    m_list->Bind(wxEVT_LISTBOX, [this](wxCommandEvent&) { show_selected(); });
    m_list->Bind(wxEVT_LISTBOX_DCLICK, [this](wxCommandEvent&) { open_selected(); });
    m_open->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { open_selected(); });
    m_code->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { show_code_of_selected(); });
    Bind(wxEVT_CHAR_HOOK, &main_panel_t::on_key, this);
    fill_list();
    m_list->SetFocus();
}

// What is searched for is opened without leaving the field.
void main_panel_t::on_key(wxKeyEvent& event)
{
    const wxWindow* focus = wxWindow::FindFocus();
    const bool searching = focus && (focus == m_search || focus->GetParent() == m_search);
    const int key = event.GetKeyCode();
    if (key == 'F' && event.GetModifiers() == wxMOD_CONTROL)
        m_search->SetFocus();
    else if (searching && (key == WXK_RETURN || key == WXK_NUMPAD_ENTER))
        open_selected();
    else if (searching && key == WXK_DOWN)
        m_list->SetFocus();
    else
        event.Skip();
}

void main_panel_t::on_update_ui_settings()
{
    pref_base_t::on_update_ui_settings();
    const ui_settings_t* settings = ui_settings_t::get();
    auto* category = commondlg3::from_xrc<wxStaticText>(this, "m_category");
    if (category && settings)
        category->SetForegroundColour(settings->get_colour(wx_helpers1::ui_colour::secondary_text));
}

void main_panel_t::fill_list()
{
    const wxString wanted = m_search->GetValue().Lower();
    m_found.clear();
    m_list->Clear();
    for (const entry_t& entry : entries()) {
        const wxString words = to_label(entry_text(entry, "name") + "\n" + entry_text(entry, "description") +
                                        "\n" + entry.object);
        if (!words.Lower().Contains(wanted))
            continue;
        m_found.push_back(&entry);
        std::string shown = entry_text(entry, "name");
        if (is_feature_on(list_object_names_variable))
            shown += " – " + entry.object;
        m_list->Append(to_label(shown));
    }
    if (!m_found.empty())
        m_list->SetSelection(0);
    show_selected();
}

const entry_t* main_panel_t::selected() const
{
    const int at = m_list->GetSelection();
    return at >= 0 && at < static_cast<int>(m_found.size()) ? m_found[at] : nullptr;
}

void main_panel_t::show_selected()
{
    const entry_t* entry = selected();
    m_open->Enable(entry != nullptr);
    m_code->Enable(entry != nullptr);
    m_category->SetLabelText(entry ? to_label(text(entry->category)) : wxString());
    wx_helpers1::set_label_text(m_name, entry ? entry_text(*entry, "name") : text("gallery.nothing_found"));
    wx_helpers1::set_label_text(m_description, entry ? entry_text(*entry, "description") : std::string());
    wx_helpers1::set_wrap_width(m_description, m_description->GetClientSize().x);
    Layout();
}

// Not from within the handler of a key or click: the window may be replaced while the other is open.
void main_panel_t::open_selected()
{
    CallAfter([this] {
        const entry_t* entry = selected();
        if (!entry || wx_helpers1::modal_stack_t::depth() > 0) // asked for twice
            return;
        const wxWeakRef<main_panel_t> still(this);
        const int result = entry->open(entry->data, wxGetTopLevelParent(this));
        if (!still)
            return;
        m_status->SetLabelText(
            to_label(can_show_messages()
                         ? commondlg3::message_window_t::get_message(
                               "gallery", "status.result", {{"object", entry->object}, {"result", result}})
                         : text("status.messages_in_log")));
    });
}

// Nor is the code: a window tells that it could not be.
void main_panel_t::show_code_of_selected()
{
    if (!m_code) // a layout without it
        return;
    CallAfter([this] {
        if (const entry_t* entry = selected(); entry && wx_helpers1::modal_stack_t::depth() == 0)
            show_code(*entry, wxGetTopLevelParent(this));
    });
}

main_window_t::main_window_t()
    : wxFrame(nullptr, wxID_ANY, wxEmptyString, wxDefaultPosition, wxSize(760, 560)),
      m_size(*this, wxSize(95, 30), wxSize(60, 20))
{
    fill();
    m_size.give();
    if (ui_settings_t* settings = ui_settings_t::get())
        settings->settled().connect(this, [this] {
            m_size.take_over();
            m_size.give();
            CallAfter([this] { m_size.give(); }); // the bar of menus has its new height then
        });
    if (is_feature_on(remember_window_size_variable))
        restore_size();
    Centre();
}

void main_window_t::restore_size()
{
    gen_helpers2::error_code_t ignored; // what cannot be read is as if nothing had been remembered
    const auto file = cfgmgr2::IProductLocations::get()->get_config_directory() / "windows.xml";
    const auto storage = cfgmgr2::open_property_storage(file, ignored);
    const auto stored = storage->get_child("gallery");
    const auto number = [&](const char* name, int otherwise) {
        const auto value = stored->get_value(name);
        return value.can_get<int>() ? value.get<int>() : otherwise;
    };
    const wxSize screen = wxGetDisplaySize();
    SetSize(std::clamp(number("width", GetSize().x), GetMinSize().x, screen.x),
            std::clamp(number("height", GetSize().y), GetMinSize().y, screen.y));
    Bind(wxEVT_CLOSE_WINDOW, [this, storage](wxCloseEvent& event) {
        event.Skip();
        storage->get_child("gallery")->set_value("width", GetSize().x);
        storage->get_child("gallery")->set_value("height", GetSize().y);
        const auto result = storage->save();
        if (result.failed())
            gen_helpers2::log_warning("gallery", "the window's size was not kept: " + result.as_string());
    });
}

void main_window_t::fill()
{
    SetTitle(to_label(text("gallery.title")));
    make_menus();
    DestroyChildren();
    m_panel = new main_panel_t;
    m_panel->create(this);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(m_panel, 1, wxEXPAND);
    SetSizer(sizer);
    Layout();
}

void main_window_t::make_menus()
{
    auto* file = new wxMenu;
    file->Append(wxID_OPEN, to_label(text("menu.open_source")) + "\tCtrl+O");
    const int code = file->Append(wxID_ANY, to_label(text("gallery.show_code")) + "\tCtrl+U")->GetId();
    file->Append(wxID_PREFERENCES, to_label(text("menu.preferences")) + "\tCtrl+,");
    file->AppendSeparator();
    file->Append(wxID_EXIT, to_label(text("menu.quit")) + "\tCtrl+Q");
    auto* view = new wxMenu;
    const auto add_theme = [&](const char* key, wx_helpers1::theme_t theme) {
        const int id = view->AppendRadioItem(wxID_ANY, to_label(text(key)))->GetId();
        view->Bind(
            wxEVT_MENU,
            [theme](wxCommandEvent&) {
                if (ui_settings_t* settings = ui_settings_t::get())
                    settings->set_theme(theme);
            },
            id);
    };
    add_theme("menu.theme.system", wx_helpers1::theme_t::system);
    add_theme("menu.theme.light", wx_helpers1::theme_t::light);
    add_theme("menu.theme.dark", wx_helpers1::theme_t::dark);
    auto* language_menu = new wxMenu;
    for (const std::string& language : cfgmgr2::get_catalog_languages(language_catalog)) {
        if (!is_spoken(language))
            continue;
        auto* item = language_menu->AppendRadioItem(wxID_ANY, to_label(own_name(language)));
        item->Check(language == cfgmgr2::get_language());
        language_menu->Bind(
            wxEVT_MENU,
            [this, language](wxCommandEvent&) { CallAfter([this, language] { change_language(language); }); },
            item->GetId());
    }
    view->AppendSubMenu(language_menu, to_label(text("menu.language")));
    auto* bar = new wxMenuBar;
    bar->Append(file, to_label(text("menu.file")));
    bar->Append(view, to_label(text("menu.view")));
    wxMenuBar* old = GetMenuBar();
    SetMenuBar(bar);
    delete old;
    Bind(
        wxEVT_MENU, [this](wxCommandEvent&) { Close(); }, wxID_EXIT);
    file->Bind(
        wxEVT_MENU, [this](wxCommandEvent&) { m_panel->show_code_of_selected(); }, code);
    Bind(
        wxEVT_MENU, [this](wxCommandEvent&) { open_preferences(nullptr, this); }, wxID_PREFERENCES);
    Bind(
        wxEVT_MENU, [this](wxCommandEvent&) { open_open_source_dialog(nlohmann::json(), this); }, wxID_OPEN);
}

void main_window_t::change_language(const std::string& language)
{
    cfgmgr2::set_language(language);
    wx_helpers1::set_right_to_left(cfgmgr2::language_is_right_to_left(language));
    // A direction is given to windows as they are made: a new window takes this one's place.
    auto* next = new main_window_t;
    next->SetSize(GetRect());
    next->Show();
    wxTheApp->SetTopWindow(next);
    Destroy();
}

} // namespace gallery
