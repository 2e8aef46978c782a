#include "commondlg3/error_warning_dialog.h"
#include "commondlg3/resources.h"
#include "commondlg3/text_utils.h"

#include "icon_type.h"
#include "long_text.h"
#include "message_extras.h"

#include <cpil/catalog.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/button_look.h>
#include <wx_helpers1/clipboard.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/resource_loader.h>
#include <wx_helpers1/scrolled_text.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/sizer.h>

#include <algorithm>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace commondlg3 {
namespace {

using CPIL_2_18::i18n::catalog_key;
using button_type_t = message_window_t::button_type_t;

struct button_labels_t
{
    const char* first; // null: hidden
    const char* second;
};

button_labels_t labels_of(button_type_t type)
{
    switch (type) {
    case button_type_t::yes_no:
        return {catalog_key("btn.yes"), catalog_key("btn.no")};
    case button_type_t::ok_cancel:
        return {catalog_key("btn.ok"), catalog_key("btn.cancel")};
    case button_type_t::retry_cancel:
        return {catalog_key("btn.retry"), catalog_key("btn.cancel")};
    case button_type_t::none:
        return {nullptr, nullptr};
    default:
        return {nullptr, catalog_key("btn.close")};
    }
}

void show_button(wxButton* button, const char* label_key, const message_answer_t& answer)
{
    if (!button)
        return;
    button->Show(label_key != nullptr);
    button->SetMinSize(wxDefaultSize);
    if (label_key)
        button->SetLabel(
            wx_helpers1::to_label(answer.label.empty() ? translate_message(label_key) : answer.label));
    wx_helpers1::set_destructive_look(button, label_key && answer.destructive);
}

} // namespace

error_warning_panel_t::error_warning_panel_t(const message_window_t& window, const message_options_t& options)
    : m_window(window), m_options(options)
{
    set_resource_object("panel.error_warning");
}

bool error_warning_panel_t::can_be_loaded(const std::string& resource_file,
                                          const std::string& catalog_name) const
{
    using wx_helpers1::resource_loader_t;
    return resource_loader_t(resource_file, catalog_name).examine(get_resource_object()) ==
           resource_loader_t::state_t::ok;
}

void error_warning_panel_t::on_init_dialog()
{
    m_main = from_xrc<wxStaticText>(this, "m_main_instructions");
    m_supplemental = from_xrc<wxStaticText>(this, "m_supplemental_instructions");
    m_details = from_xrc<wxStaticText>(this, "m_details");
    m_text_area = from_xrc<wxScrolledWindow>(this, "m_text_area");
    m_icon = from_xrc<wx_helpers1::static_picture_ctrl_t>(this, "m_icon");
    m_check_box = from_xrc<wxCheckBox>(this, "m_checkBox5");
    if (m_text_area)
        m_text_area->SetBackgroundStyle(wxBG_STYLE_SYSTEM);
    wx_helpers1::show_focus_frame(m_text_area);
    wx_helpers1::set_accessible_name(m_text_area,
                                     translate_message(icon_type_of(m_window.icon_type).word_key));
    for (wxStaticText* label : labels())
        wx_helpers1::set_selectable(label, true);
    load_images();
    fill_controls();
}

void error_warning_panel_t::refill()
{
    Show(true); // its end hid it
    for (wxStaticText* label : labels())
        wx_helpers1::select_label_text(label, false);
    load_images();
    fill_controls();
}

std::vector<wxStaticText*> error_warning_panel_t::labels() const
{
    std::vector<wxStaticText*> all;
    for (wxStaticText* label : {m_main, m_supplemental, m_details})
        if (label)
            all.push_back(label);
    return all;
}

void error_warning_panel_t::load_images()
{
    if (!m_icon)
        return;
    m_icon->set_picture(m_window.picture.is_empty() ? message_window_t::get_icon_by_type(m_window.icon_type)
                                                    : m_window.picture);
    m_icon->set_description(translate_message(icon_type_of(m_window.icon_type).word_key));
}

void error_warning_panel_t::set_animation(const wx_helpers1::wxAnimation& animation)
{
    if (m_icon)
        m_icon->set_picture(animation);
}

void error_warning_panel_t::fill_controls()
{
    fill_extras();
    fill_text_controls();
    fill_buttons();
    fill_check_box();
    // A sizer around the panel lays it out with the rest of its window.
    InvalidateBestSize();
    if (GetSizer() && !GetContainingSizer()) {
        GetSizer()->Fit(this);
        Layout();
    }
}

void error_warning_panel_t::fill_buttons()
{
    const button_labels_t labels = labels_of(m_window.button_type);
    show_button(m_btn_ok, labels.first, m_options.first);
    show_button(m_btn_cancel, labels.second, m_options.second);
    wxButton* first = labels.first && !m_options.first.destructive ? m_btn_ok : nullptr;
    wxButton* second = labels.second && !m_options.second.destructive ? m_btn_cancel : nullptr;
    if (m_options.default_answer == message_options_t::default_answer_t::second)
        std::swap(first, second);
    wxButton* chosen = first ? first : second;
    auto* dialog = wxDynamicCast(wxGetTopLevelParent(this), wxTopLevelWindow);
    if (chosen) {
        chosen->SetDefault();
        chosen->SetFocus();
    } else {
        if (dialog)
            wx_helpers1::clear_default_button(dialog);
        SetFocusIgnoringChildren(); // without the focus in it the window would not hear Escape
    }
}

// Made for the first message that has any: most have none.
void error_warning_panel_t::fill_extras()
{
    m_folded = true;
    m_folds = m_text_area && GetSizer() && has_long_details();
    const bool any = GetSizer() && message_extras_t::has_any(m_options, m_folds);
    if (any && !m_extras) {
        message_extras_t::actions_t actions;
        actions.fold = [this] { fold_details(!m_folded); };
        actions.get_text = [this] {
            const wxWindow* top = wxGetTopLevelParent(this);
            return get_text_for_clipboard(top ? wx_helpers1::from_wx(top->GetLabel()) : std::string());
        };
        actions.end = [this] {
            on_cancel();
            end_dialog(wxID_CANCEL);
        };
        m_extras = new message_extras_t(this, actions);
        constexpr int after_texts = 1; // in front of the check box
        GetSizer()->Insert(after_texts, m_extras, 0, wxEXPAND | wxLEFT | wxRIGHT, 18);
        if (m_check_box)
            m_extras->MoveBeforeInTabOrder(m_check_box);
    }
    if (!m_extras)
        return;
    m_extras->Show(any);
    if (any)
        m_extras->show(m_options, m_folds, labels_of(m_window.button_type).first != nullptr);
}

void error_warning_panel_t::fill_check_box()
{
    if (!m_check_box)
        return;
    m_check_box->Show(m_window.check_box != nullptr);
    m_check_box->SetMinSize(wxDefaultSize);
    if (m_window.check_box) {
        m_check_box->SetLabel(wx_helpers1::to_plain_label(m_window.check_box->get_label()));
        m_check_box->SetValue(m_window.check_box->is_checked());
    }
}

void error_warning_panel_t::on_update_ui_settings()
{
    pref_base_t::on_update_ui_settings();
    if (m_main)
        fill_text_controls();
}

void error_warning_panel_t::save_check_box_state(bool commit) const
{
    if (!m_window.check_box || !m_check_box)
        return;
    m_window.check_box->set_checked(m_check_box->GetValue());
    if (commit)
        m_window.check_box->commit();
}

void error_warning_panel_t::on_ok()
{
    save_check_box_state(true);
}

void error_warning_panel_t::on_cancel()
{
    // With a single Close button, closing is the acknowledgement; otherwise cancelling discards the state.
    if (m_window.button_type == button_type_t::close)
        save_check_box_state(true);
}

namespace {

std::string in_paragraphs_of(std::initializer_list<const std::string*> parts)
{
    std::string text;
    for (const std::string* part : parts)
        if (!part->empty())
            text += (text.empty() ? "" : "\n\n") + *part;
    return text;
}

} // namespace

std::string error_warning_panel_t::get_text_for_clipboard(const std::string& title) const
{
    return in_paragraphs_of(
        {&title, &m_window.main_message, &m_window.supplemental_message, &m_window.details_message});
}

std::string error_warning_panel_t::get_shown_text() const
{
    return in_paragraphs_of({&m_window.main_message, &m_window.supplemental_message, &shown_details()});
}

void error_warning_panel_t::copy(const std::string& title) const
{
    if (is_long()) {
        const std::string selected = m_long_text->get_selected();
        wx_helpers1::copy_to_clipboard(selected.empty() ? get_text_for_clipboard(title) : selected);
        return;
    }
    for (wxStaticText* label : labels()) {
        const std::string selected = wx_helpers1::get_selected_text(label);
        if (!selected.empty()) {
            wx_helpers1::copy_to_clipboard(selected);
            return;
        }
    }
    wx_helpers1::copy_to_clipboard(get_text_for_clipboard(title));
}

bool error_warning_panel_t::is_long() const
{
    return m_long_text && m_long_text->IsShown();
}

bool error_warning_panel_t::is_scrolled() const
{
    return is_long() || (m_text_area && m_text_area->GetVirtualSize().y > m_text_area->GetClientSize().y);
}

bool error_warning_panel_t::scroll_by_key(int key_code)
{
    if (is_long())
        return m_long_text->scroll_by_key(key_code);
    if (!is_scrolled())
        return false;
    int unit = 1;
    m_text_area->GetScrollPixelsPerUnit(nullptr, &unit);
    const int page = std::max(1, m_text_area->GetClientSize().y / std::max(1, unit) - 1);
    const int at = m_text_area->GetViewStart().y;
    switch (key_code) {
    case WXK_PAGEUP:
        m_text_area->Scroll(-1, std::max(0, at - page));
        return true;
    case WXK_PAGEDOWN:
        m_text_area->Scroll(-1, at + page);
        return true;
    case WXK_HOME:
        m_text_area->Scroll(-1, 0);
        return true;
    case WXK_END:
        m_text_area->Scroll(-1, m_text_area->GetVirtualSize().y);
        return true;
    default:
        return false;
    }
}

} // namespace commondlg3
