#include "message_center_dialog.h"

#include "commondlg3/resources.h"
#include "commondlg3/text_utils.h"

#include "icon_type.h"

#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/enabling.h>
#include <wx_helpers1/input_guard.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/wrap_text.h>

#include <wx/button.h>
#include <wx/listbox.h>
#include <wx/sizer.h>

#include <algorithm>
#include <initializer_list>
#include <string>
#include <utility>

namespace commondlg3 {
namespace {

using button_type_t = message_window_t::button_type_t;

bool asks_something(const raised_message_t& message)
{
    const auto type = message.window.button_type;
    return type == button_type_t::yes_no || type == button_type_t::ok_cancel ||
           type == button_type_t::retry_cancel;
}

std::string with_severity(const raised_message_t& message, const std::string& text)
{
    return translate_message(
        "message_center.row",
        {{"severity", translate_message(icon_type_of(message.window.icon_type).word_key)},
         {"message", text},
         {"count", message.count}});
}

std::string row_of(const raised_message_t& message)
{
    constexpr std::size_t most_bytes = 300; // more has no room in a row
    std::string headline = message.window.main_message.empty() ? message.window.supplemental_message
                                                               : message.window.main_message;
    headline.resize(std::min(headline.size(), most_bytes));
    std::replace(headline.begin(), headline.end(), '\n', ' ');
    return with_severity(message, headline);
}

} // namespace

message_center_dialog_t::message_center_dialog_t(
    const raised_messages_t& messages,
    std::function<void(const std::shared_ptr<raised_message_t>&, int)> answer)
    : m_messages(messages),
      m_answer(std::move(answer)),
      m_current(messages.front()),
      m_panel(new error_warning_panel_t(m_current->window, m_current->options))
{
    set_resource_object("dlg.message_center");
    Bind(wxEVT_CHAR_HOOK, &message_center_dialog_t::on_key, this);
}

message_center_dialog_t::~message_center_dialog_t()
{
    if (!m_panel->GetParent())
        delete m_panel; // never shown, it is nobody's child
}

bool message_center_dialog_t::load_from_xml_resource(wxWindow* parent, const std::string& resource_file,
                                                     const std::string& catalog_name,
                                                     const std::string& object_name)
{
    return m_panel->can_be_loaded(resource_file, catalog_name) &&
           dialog_base_t::load_from_xml_resource(parent, resource_file, catalog_name, object_name);
}

void message_center_dialog_t::on_init_dialog()
{
    m_list = from_xrc<wxListBox>(this, "m_list");
    m_count = from_xrc<wxStaticText>(this, "m_count");
    m_close_all = from_xrc<wxButton>(this, "m_btn_close_all");
    m_panel->get_end_signal().connect(
        this, [this](generic_base_t<wxPanel>*, int code) { m_answer(m_current, code); });
    m_panel->get_resized_signal().connect(this, [this] { fit(); });
    need_sizer()->Add(m_panel, 1, wxEXPAND);
    m_panel->create(this);
    if (m_list) {
        wx_helpers1::set_accessible_name(m_list, translate_message("message_center.list"));
        m_list->Bind(wxEVT_LISTBOX, [this](wxCommandEvent& event) {
            const auto row = static_cast<std::size_t>(event.GetSelection());
            if (row < m_messages.size()) {
                m_current = m_messages[row];
                show_current();
                m_list->SetFocus(); // who goes through the list stays in it
            }
        });
    }
    if (m_close_all)
        m_close_all->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
            answer_all([](const raised_message_t& message) { return !asks_something(message); });
        });
    wx_helpers1::guard_input(this);
    wx_helpers1::set_accessible_role(this, wx_helpers1::accessible_role_t::alert);
    fill_list();
    show_current();
    centre_on_parent();
}

void message_center_dialog_t::fill_list()
{
    m_shown_last = m_messages.size();
    const bool several = m_messages.size() > 1;
    const auto closable = std::count_if(m_messages.begin(), m_messages.end(),
                                        [](const auto& message) { return !asks_something(*message); });
    if (m_list) {
        wxArrayString rows;
        for (const auto& message : m_messages)
            rows.push_back(wx_helpers1::to_label(row_of(*message)));
        m_list->Set(rows);
        const auto at = std::find(m_messages.begin(), m_messages.end(), m_current);
        m_list->SetSelection(static_cast<int>(at - m_messages.begin()));
        wx_helpers1::set_enabled(m_list, several); // which gives the focus on
        m_list->Show(several);
    }
    if (m_close_all) {
        wx_helpers1::set_enabled(m_close_all, closable > 1);
        m_close_all->Show(closable > 1);
    }
}

void message_center_dialog_t::show_count()
{
    m_shown_count = m_current->count;
    if (!m_count)
        return;
    const std::string text = translate_message("message_center.count", {{"count", m_current->count}});
    const int room =
        wxGetClientDisplayRect().width - 8 * GetCharWidth(); // at large fonts it has more than one
    wx_helpers1::set_label_text(m_count, wx_helpers1::wrap_text(text, room, m_count));
    m_count->Show(m_current->count > 1);
}

// The message that is looked at is another.
void message_center_dialog_t::show_current()
{
    set_title(translate_message(icon_type_of(m_current->window.icon_type).title_key));
    m_panel->set_window(m_current->window, m_current->options);
    m_panel->refill();
    wx_helpers1::set_accessible_description(this, m_panel->get_shown_text());
    show_count();
    fit();
    wx_helpers1::ignore_held_keys(this); // they were meant for the one before
}

void message_center_dialog_t::fit()
{
    constexpr int gaps = 54;
    int around = 0;
    for (const wxWindow* window : std::initializer_list<wxWindow*>{m_list, m_count, m_close_all})
        if (window && window->IsShown())
            around += window->GetEffectiveMinSize().y;
    m_panel->set_height_around(around > 0 ? around + gaps : 0);
    fit_to_contents();
    m_panel->Layout();
    if (IsShown())
        keep_in_sight();
}

void message_center_dialog_t::update()
{
    if (!is_initialized() || m_messages.empty())
        return;
    const bool gone = std::find(m_messages.begin(), m_messages.end(), m_current) == m_messages.end();
    if (gone) {
        const int row = m_list ? std::max(0, m_list->GetSelection()) : 0;
        m_current = m_messages[std::min(static_cast<std::size_t>(row), m_messages.size() - 1)];
    }
    const bool more = m_messages.size() > m_shown_last;
    const bool again = !gone && m_current->count != m_shown_count;
    fill_list();
    if (gone) {
        show_current();
        // The button that has the focus is the same one, of another message.
        wx_helpers1::announce(m_panel, with_severity(*m_current, m_panel->get_shown_text()));
        return;
    }
    show_count();
    fit();
    if (more || again)
        wx_helpers1::announce(m_panel, row_of(more ? *m_messages.back() : *m_current));
}

void message_center_dialog_t::answer_all(const std::function<bool(const raised_message_t&)>& which)
{
    const raised_messages_t all = m_messages;
    const auto answer = m_answer; // the last answer ends the window
    for (const auto& message : all)
        if (which(*message))
            answer(message, wxID_CANCEL);
}

void message_center_dialog_t::on_cancel()
{
    answer_all([](const raised_message_t&) { return true; });
}

void message_center_dialog_t::on_update_ui_settings()
{
    if (!m_panel->is_initialized())
        return;
    m_panel->on_update_ui_settings();
    fit();
}

void message_center_dialog_t::on_key(wxKeyEvent& event)
{
    const int key = event.GetKeyCode();
    const bool plain = event.GetModifiers() == wxMOD_NONE;
    if (event.GetModifiers() == wxMOD_CONTROL && (key == 'C' || key == WXK_INSERT))
        m_panel->copy(get_title());
    else if (plain && key == WXK_ESCAPE &&
             (m_current->window.button_type == button_type_t::none || m_current->options.second.destructive))
        m_answer(m_current, wxID_NONE);
    else
        event.Skip();
}

} // namespace commondlg3
