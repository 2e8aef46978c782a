#include "caption_page.h"

#include "json_report.h"
#include "missing_resource.h"

#include <commondlg3/resources.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/listbox.h>

#include <string>

namespace gallery {
namespace {

using commondlg3::caption_panel_t;
using commondlg3::from_xrc;
using severity_t = caption_panel_t::severity_t;

constexpr std::size_t long_text_length = 2000; // bytes

nlohmann::json sample()
{
    return {{"caption", text("caption.sample.caption")},
            {"description", text("caption.sample.description")},
            {"messages",
             {{{"severity", 3}, {"text", text("caption.sample.information")}},
              {{"severity", 1}, {"text", text("caption.sample.error")}},
              {{"severity", 2}, {"text", text("caption.sample.warning")}}}}};
}

std::string text_of_length(int choice)
{
    const std::string sentence = text("sample.supplemental.warning");
    if (choice == 0)
        return text("sample.one_word");
    std::string result = sentence;
    while (choice == 2 && result.size() < long_text_length)
        result += " " + sentence;
    return result;
}

} // namespace

caption_page_t::caption_page_t(const nlohmann::json& data)
    : demo_dialog_t(object_name), m_data(data.is_null() ? sample() : data)
{
    set_resource_object("dlg.caption_demo");
}

void caption_page_t::on_init_dialog()
{
    const std::string caption_text = get_string(m_data, "caption", "");
    const std::string description_text = get_string(m_data, "description", "");
    m_heading = new caption_panel_t(get_area(), caption_text, description_text);
    insert_panel(m_heading, 0, 0);
    auto* caption = from_xrc<wxTextCtrl>(this, "m_caption");
    auto* description = from_xrc<wxTextCtrl>(this, "m_description");
    m_severity = from_xrc<wxChoice>(this, "m_severity");
    m_length = from_xrc<wxChoice>(this, "m_length");
    m_text = from_xrc<wxTextCtrl>(this, "m_text");
    m_messages = from_xrc<wxListBox>(this, "m_messages");
    auto* read_only = from_xrc<wxCheckBox>(this, "m_read_only");
    if (!caption || !description || !m_severity || !m_length || !m_text || !m_messages || !read_only)
        return;
    caption->ChangeValue(wx_helpers1::to_wx(caption_text));
    description->ChangeValue(wx_helpers1::to_wx(description_text));
    caption->Bind(wxEVT_TEXT, [this, caption](wxCommandEvent&) {
        m_heading->set_caption(wx_helpers1::from_wx(caption->GetValue()));
    });
    description->Bind(wxEVT_TEXT, [this, description](wxCommandEvent&) {
        m_heading->set_description(wx_helpers1::from_wx(description->GetValue()));
    });
    m_length->SetSelection(1);
    m_length->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { fill_text(); });
    read_only->Bind(wxEVT_CHECKBOX,
                    [this](wxCommandEvent& event) { m_heading->set_read_only(event.IsChecked()); });
    const auto on_button = [this](const char* name, void (caption_page_t::*handler)()) {
        if (auto* button = from_xrc<wxButton>(this, name))
            button->Bind(wxEVT_BUTTON, [this, handler](wxCommandEvent&) { (this->*handler)(); });
    };
    on_button("m_add", &caption_page_t::add);
    on_button("m_change", &caption_page_t::change);
    on_button("m_remove", &caption_page_t::remove);
    on_button("m_show", &caption_page_t::show_selected);
    on_button("m_clear", &caption_page_t::clear);

    const auto messages = m_data.is_object() ? m_data.find("messages") : m_data.end();
    if (messages != m_data.end() && messages->is_array())
        for (const auto& message : *messages)
            m_heading->add_message(static_cast<severity_t>(get_int(message, "severity", 2)),
                                   get_string(message, "text", ""));
    const bool is_read_only = get_bool(m_data, "read_only", false);
    read_only->SetValue(is_read_only);
    m_heading->set_read_only(is_read_only);
    fill_text();
    changed(nullptr);
    m_heading->get_shown_signal().connect(this, [this](int id) {
        changed(nullptr);
        report_signal(object_name, "shown", id);
    });
    m_text->SetFocus();
    finish_layout();
}

void caption_page_t::fill_text()
{
    m_text->ChangeValue(wx_helpers1::to_wx(text_of_length(m_length->GetSelection())));
}

std::string caption_page_t::typed_text() const
{
    return wx_helpers1::from_wx(m_text->GetValue());
}

int caption_page_t::selected_id() const
{
    return m_heading->get_message_id(m_messages->GetSelection());
}

void caption_page_t::add()
{
    m_heading->add_message(static_cast<severity_t>(m_severity->GetSelection()), typed_text());
    changed("added");
}

void caption_page_t::change()
{
    m_heading->edit_message(selected_id(), typed_text());
    changed("changed");
}

void caption_page_t::remove()
{
    m_heading->remove_message(selected_id());
    changed("removed");
}

void caption_page_t::show_selected()
{
    m_heading->show_message(selected_id(), true);
}

void caption_page_t::clear()
{
    while (m_heading->get_message_count() > 0)
        m_heading->remove_message(m_heading->get_message_id(m_heading->get_message_count() - 1));
    changed("cleared");
}

// The list follows the panel, with the shown message selected.
void caption_page_t::changed(const char* what)
{
    wxArrayString texts;
    int shown = wxNOT_FOUND;
    for (int i = 0; i < m_heading->get_message_count(); ++i) {
        const auto message = m_heading->get_message(m_heading->get_message_id(i));
        texts.Add(wx_helpers1::to_label(message.text).Left(60));
        if (message.id == m_heading->get_current_id())
            shown = i;
    }
    m_messages->Set(texts);
    m_messages->SetSelection(shown);
    if (what)
        report_signal(object_name, what, get_state());
}

nlohmann::json caption_page_t::get_state() const
{
    nlohmann::json messages = nlohmann::json::array();
    for (int i = 0; m_heading && i < m_heading->get_message_count(); ++i) {
        const auto message = m_heading->get_message(m_heading->get_message_id(i));
        messages.push_back(
            {{"id", message.id}, {"severity", static_cast<int>(message.severity)}, {"text", message.text}});
    }
    return {{"messages", messages}, {"shown", m_heading ? m_heading->get_current_id() : -1}};
}

int open_caption_page(const nlohmann::json& data, wxWindow* parent)
{
    caption_page_t page(data);
    return page.run(parent);
}

} // namespace gallery
