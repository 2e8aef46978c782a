#include "commondlg3/error_warning_dialog.h"
#include "commondlg3/resources.h"
#include "commondlg3/text_utils.h"

#include "icon_type.h"
#include "long_text.h"

#include <cpil/catalog.h>
#include <gen_helpers2/assertion.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/clipboard.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/screen.h>
#include <wx_helpers1/scrolled_text.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <boost/tokenizer.hpp>

#include <wx/button.h>
#include <wx/display.h>
#include <wx/settings.h>
#include <wx/sizer.h>

#include <algorithm>
#include <climits>
#include <optional>
#include <string>
#include <vector>

namespace commondlg3 {
namespace {

using CPIL_2_18::i18n::catalog_key;
using button_type_t = message_window_t::button_type_t;

// Lines that the eye finds its way back from, in characters. A text that would be tall becomes wide first.
constexpr int characters_of_line = 60;
constexpr int characters_of_wide_line = 90;
constexpr int lines_of_tall_text = 12;
constexpr int least_default_width = 460; // pixels
constexpr int least_text_width = 260;
// What a window needs beside its texts: its frame, the buttons, the check box, and a rim of the screen.
constexpr int height_beside_texts = 220;
constexpr int width_beside_texts = 160;

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

void show_button(wxButton* button, const char* label_key)
{
    if (!button)
        return;
    button->Show(label_key != nullptr);
    button->SetMinSize(wxDefaultSize);
    if (label_key)
        button->SetLabel(wx_helpers1::to_label(translate_message(label_key)));
}

std::size_t longest_word(const std::string& text)
{
    static const boost::char_separator<char> separators(" \n\t");
    std::size_t longest = 0;
    for (const auto& word : boost::tokenizer<boost::char_separator<char>>(text, separators))
        longest = std::max(longest, word.size());
    return longest;
}

// The room on the screen that a window is on. How much of it panels and docks take is known to the window
// manager alone, and costs a dozen questions to the display: they are asked only when it matters.
class screen_t
{
public:
    explicit screen_t(const wxWindow* window)
        : m_display(wx_helpers1::display_near(window)), m_whole(m_display.GetGeometry().GetSize())
    {
    }

    /// What there is, up to what is wanted: two thirds of a screen are taken to be free.
    int width_up_to(int wanted) const { return wanted <= m_whole.x * 2 / 3 ? wanted : free_area().x; }
    /// Of the texts of a window that is as wide.
    int two_thirds_for_texts() const { return m_whole.x * 2 / 3 - width_beside_texts; }
    int height_up_to(int wanted) const { return wanted <= m_whole.y * 2 / 3 ? wanted : free_area().y; }

private:
    wxSize free_area() const { return m_display.GetClientArea().GetSize(); }

    wxDisplay m_display;
    wxSize m_whole;
};

} // namespace

error_warning_panel_t::error_warning_panel_t(const message_window_t& window) : m_window(window)
{
    set_resource_object("panel.error_warning");
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
    show_button(m_btn_ok, labels.first);
    show_button(m_btn_cancel, labels.second);
    wxButton* first_shown = labels.first ? m_btn_ok : labels.second ? m_btn_cancel : nullptr;
    if (first_shown) {
        first_shown->SetDefault();
        first_shown->SetFocus();
    } else {
        SetFocusIgnoringChildren(); // without the focus in it the window would not hear Escape
    }
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

void error_warning_panel_t::fill_text_controls()
{
    const auto* settings = wx_helpers1::ui_settings_t::get();
    const wxFont main_font = settings ? settings->get_font(wx_helpers1::ui_font::bold) : GetFont().Bold();
    const wxFont plain_font = settings ? settings->get_font(wx_helpers1::ui_font::text) : GetFont();
    const bool is_long = is_long_text(m_window.main_message) || is_long_text(m_window.supplemental_message) ||
                         is_long_text(m_window.details_message);
    show_long_text(is_long);
    if (!is_long) {
        fill_static_text(m_main, true, m_window.main_message, main_font);
        fill_static_text(m_supplemental, false, m_window.supplemental_message, plain_font);
        fill_static_text(m_details, false, m_window.details_message, plain_font);
    }
    if (m_main)
        m_main->Show(!m_window.main_message.empty());
    if (m_supplemental)
        m_supplemental->Show(!m_window.supplemental_message.empty());
    if (m_details) {
        m_details->Show(!m_window.details_message.empty());
        if (settings)
            m_details->SetForegroundColour(settings->get_colour(wx_helpers1::ui_colour::secondary_text));
    }
    fit_texts();
}

// A long text stands in one view in place of the labels, which keep their texts but are not measured.
void error_warning_panel_t::show_long_text(bool is_long)
{
    if (!m_text_area)
        return;
    wxSizer* sizer = m_text_area->GetContainingSizer();
    if (is_long && !m_long_text && sizer) {
        m_long_text = new long_text_t(m_text_area->GetParent());
        wx_helpers1::set_accessible_name(m_long_text,
                                         translate_message(icon_type_of(m_window.icon_type).word_key));
        sizer->Add(m_long_text, 1, wxEXPAND);
        m_long_text->MoveAfterInTabOrder(m_text_area);
        wx_helpers1::show_focus_frame(m_long_text);
    }
    if (m_long_text) {
        m_long_text->Show(is_long);
        if (is_long)
            m_long_text->set_texts(m_window.main_message, m_window.supplemental_message,
                                   m_window.details_message);
    }
    m_text_area->Show(!is_long);
}

void error_warning_panel_t::fill_static_text(wxStaticText* label, bool main, const std::string& text,
                                             const wxFont& font)
{
    if (text.empty() || !label)
        return;
    const auto max_len = static_cast<std::size_t>(std::max(0, max_string_len_in_label(main)));
    const auto lines = create_multi_line(std::max(max_len, longest_word(text)), text);
    wx_helpers1::set_font(label, font);
    wx_helpers1::set_label_text(label, content_for_label(lines));
}

int error_warning_panel_t::default_text_width() const
{
    int characters_left = characters_of_line * lines_of_tall_text; // no more of a long text is looked at
    for (const std::string* text :
         {&m_window.main_message, &m_window.supplemental_message, &m_window.details_message})
        for (auto c = text->begin(); c != text->end() && characters_left >= 0; ++c)
            characters_left -= (*c & 0xC0) != 0x80;
    const bool is_tall = characters_left < 0;
    const auto* settings = wx_helpers1::ui_settings_t::get();
    const int char_width = settings ? settings->get_char_width(wx_helpers1::ui_font::text) : GetCharWidth();
    const int wanted = (is_tall ? characters_of_wide_line : characters_of_line) * char_width;
    return std::max(least_default_width, std::min(wanted, screen_t(this).two_thirds_for_texts()));
}

int error_warning_panel_t::max_string_len_in_label(bool main) const
{
    const auto* settings = wx_helpers1::ui_settings_t::get();
    const int char_width =
        settings ? settings->get_char_width(main ? wx_helpers1::ui_font::bold : wx_helpers1::ui_font::text)
                 : std::max(1, GetCharWidth());
    const std::optional<int>& set_by_host = main ? m_max_main_width : m_max_supp_width;
    // The details are broken as the text above them is.
    const std::string text =
        main ? m_window.main_message : m_window.supplemental_message + '\n' + m_window.details_message;
    return set_by_host.value_or(default_line_width(text, char_width)) / char_width;
}

// Lines are counted in bytes: a width that is right for one script gives lines of a third of it in another.
// Where a word has no room in a line, as a sentence of Japanese, the label breaks it; then it breaks all of
// the text, as a break of ours behind a short word would leave that alone in its line.
int error_warning_panel_t::default_line_width(const std::string& text, int char_width) const
{
    int width = default_text_width();
    if (!std::all_of(text.begin(), text.end(), [](unsigned char c) { return c < 0x80; })) {
        constexpr std::size_t sample_bytes = 1000;
        std::string sample = text.substr(0, sample_bytes);
        // Of several lines the widest alone would be measured.
        std::replace(sample.begin(), sample.end(), '\n', ' ');
        const int pixels = get_text_extent(const_cast<error_warning_panel_t*>(this), sample).x;
        const int bytes_wide = static_cast<int>(sample.size()) * char_width;
        if (pixels > 0)
            width = std::max(width, static_cast<int>(static_cast<double>(width) * bytes_wide / pixels));
    }
    if (longest_word(text) < static_cast<std::size_t>(width / char_width))
        return width;
    return (static_cast<int>(std::min<std::size_t>(text.size(), INT_MAX / 64)) + 1) * char_width;
}

int error_warning_panel_t::max_width(bool main) const
{
    return (main ? m_max_main_width : m_max_supp_width).value_or(default_text_width());
}

// The limit counts characters of average width: a line of wide ones may be somewhat wider without being
// broken again.
int error_warning_panel_t::most_width(bool main, int natural) const
{
    const int limit = max_width(main);
    return limit < 0 || natural <= limit + limit / 4 ? natural : limit;
}

// The labels get the width that their lines need, within the limits; the toolkit breaks what is wider than
// that inside its words. What is higher than the screen has room for scrolls.
void error_warning_panel_t::fit_texts()
{
    if (!m_text_area || !m_text_area->GetSizer())
        return;
    const screen_t screen(this);
    if (is_long()) {
        const int width = screen.width_up_to(default_text_width() + width_beside_texts) - width_beside_texts;
        const int needed = m_long_text->estimated_height(width);
        const int room = screen.height_up_to(needed + height_beside_texts) - height_beside_texts;
        m_long_text->SetMinSize(
            wxSize(std::max(least_text_width, width), std::clamp(needed, 100, std::max(100, room))));
        return;
    }
    int width = least_text_width;
    std::vector<wxSize> naturals;
    for (wxStaticText* label : labels()) {
        const wxSize natural = label->IsShown() ? wx_helpers1::natural_size(label) : wxSize(0, 0);
        naturals.push_back(natural);
        width = std::max(width, std::min(natural.x, most_width(label == m_main, natural.x)));
    }
    width = std::min(width, std::max(least_text_width,
                                     screen.width_up_to(width + width_beside_texts) - width_beside_texts));
    std::size_t index = 0;
    for (wxStaticText* label : labels()) {
        const wxSize natural = naturals[index++];
        const bool wraps = natural.x > width;
        wx_helpers1::set_wrap_width(label, wraps ? width : 0);
        label->SetMinSize(wxSize(width, wraps ? wx_helpers1::height_for_width(label, width) : natural.y));
    }
    const wxSize needed = m_text_area->GetSizer()->CalcMin();
    const int room = std::max(100, screen.height_up_to(needed.y + height_beside_texts) - height_beside_texts);
    const bool scrolls = needed.y > room;
    const int bar = scrolls ? wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, m_text_area) : 0;
    m_text_area->SetScrollRate(0, scrolls ? std::max(1, m_text_area->GetCharHeight()) : 1);
    m_text_area->ShowScrollbars(wxSHOW_SB_NEVER, scrolls ? wxSHOW_SB_ALWAYS : wxSHOW_SB_NEVER);
    m_text_area->SetMinSize(wxSize(width + bar, std::min(needed.y, room)));
    m_text_area->SetVirtualSize(width, needed.y);
    put_labels(scrolls);
    m_text_area->Layout();
}

// The toolkit moves all that is in a window that scrolls, and complains of what is hidden: that stands
// beside it.
void error_warning_panel_t::put_labels(bool scrolls)
{
    wxWindow* beside = m_text_area->GetParent();
    const auto place_of = [&](const wxStaticText* label) {
        return scrolls && !label->IsShown() ? beside : m_text_area;
    };
    const auto all = labels();
    if (std::all_of(all.begin(), all.end(),
                    [&](auto* label) { return label->GetParent() == place_of(label); }))
        return;
    for (wxStaticText* label : all) { // out and in again, as their order is that in which they are read
        label->Reparent(beside);
        label->Reparent(place_of(label));
    }
}

void error_warning_panel_t::set_max_main_msg_width(int width)
{
    if (width < -1)
        return;
    m_max_main_width = width;
    fill_text_controls();
}

void error_warning_panel_t::set_max_supp_msg_width(int width)
{
    if (width < -1)
        return;
    m_max_supp_width = width;
    fill_text_controls();
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

std::string error_warning_panel_t::get_text_for_clipboard(const std::string& title) const
{
    std::string text;
    for (const std::string& part :
         {title, m_window.main_message, m_window.supplemental_message, m_window.details_message})
        if (!part.empty())
            text += (text.empty() ? "" : "\n\n") + part;
    return text;
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
