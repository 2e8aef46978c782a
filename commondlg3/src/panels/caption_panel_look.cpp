#include "commondlg3/caption_panel.h"
#include "commondlg3/image_loader.h"
#include "commondlg3/text_utils.h"

#include "parent_layout.h"
#include "severity.h"

#include <cpil/catalog.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/picture_button.h>
#include <wx_helpers1/static_picture_ctrl.h>
#include <wx_helpers1/tooltip.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/math.h>
#include <wx/sizer.h>

#include <algorithm>
#include <string>
#include <utility>

// The panel's controls, their look and their layout.
namespace commondlg3 {
namespace {

using CPIL_2_18::generic::varg_list;
using image = image_loader_t::image_type_t;

constexpr int heading_border = 5;
constexpr int button_size = 15;
constexpr int caption_space = 10;
constexpr int description_space = 5;
constexpr int pane_space = 15;

int with_space(int height, int space)
{
    return height < 1 ? 0 : height + space;
}

wxBitmapButton* make_button(wxWindow* parent)
{
    auto* button = new wxBitmapButton(parent, wxID_ANY, wxBitmapBundle(), wxDefaultPosition,
                                      wxSize(button_size, button_size), wxBORDER_NONE);
    wx_helpers1::remove_button_frame(button);
    wx_helpers1::set_accessible_description(button, std::string()); // or its tool tip, which is its name
    return button;
}

wx_helpers1::button_pictures_t pictures_of(image normal, image hovered, image pressed, image disabled)
{
    image_loader_t& loader = image_loader_t::get();
    return {loader.load_image(normal), loader.load_image(hovered), loader.load_image(pressed),
            loader.load_image(disabled)};
}

void set_numbered_name(wxWindow* button, const std::string& name)
{
    wx_helpers1::SetTooltip(button, name);
    wx_helpers1::set_accessible_name(button, name);
}

} // namespace

void caption_panel_t::init(const std::string& caption, const std::string& description)
{
    SetSizer(new wxBoxSizer(wxVERTICAL));
    create_top_controls();
    create_message_pane();
    learn_message_delta();
    set_style(m_style);
    set_button_images();
    Bind(wxEVT_SIZE, &caption_panel_t::on_size, this);
    if (wx_helpers1::ui_settings_t* settings = wx_helpers1::ui_settings_t::get())
        settings->changed().connect(this, [this] { on_ui_changed(); });
    set_caption(caption);
    set_description(description);
}

void caption_panel_t::create_top_controls()
{
    m_caption = new caption_label_t(this, std::string(), this);
    m_description = new caption_label_t(this, std::string(), this);
    GetSizer()->Add(m_caption, 0, wxEXPAND | wxLEFT | wxTOP | wxBOTTOM, heading_border);
    GetSizer()->Add(m_description, 0, wxEXPAND | wxLEFT | wxBOTTOM, heading_border);
}

void caption_panel_t::create_message_pane()
{
    m_pane = new wxPanel(this);
    m_picture = new wx_helpers1::static_picture_ctrl_t(m_pane, wxID_ANY);
    m_picture->set_picture(get_picture(severity_t::warning));
    m_message = new caption_label_t(m_pane, std::string(), this);
    m_previous = make_button(m_pane);
    m_position = new wxStaticText(m_pane, wxID_ANY, wxString());
    m_next = make_button(m_pane);
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(m_picture, 0, wxLEFT | wxRIGHT | wxTOP, heading_border);
    row->Add(m_message, 1, wxEXPAND | wxRIGHT | wxTOP | wxBOTTOM, heading_border);
    row->Add(m_previous, 0, wxEXPAND | wxRIGHT | wxTOP | wxBOTTOM, heading_border);
    row->Add(m_position, 0, wxALIGN_CENTER_VERTICAL | wxRIGHT, heading_border);
    row->Add(m_next, 0, wxEXPAND | wxRIGHT | wxTOP | wxBOTTOM, heading_border);
    m_pane->SetSizer(row);
    GetSizer()->Add(m_pane, 0, wxEXPAND | wxTOP, heading_border);
    wx_helpers1::set_accessible_role(m_pane, wx_helpers1::accessible_role_t::alert);
    m_previous->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { show_prev_message(); });
    m_next->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { show_next_message(); });
}

// How much narrower than the panel the message is, beside what message_width() takes off: found out once,
// from the real layout at any width.
void caption_panel_t::learn_message_delta()
{
    const wxSize before = GetSize();
    SetSize(400, 100);
    Layout();
    m_pane->Layout();
    m_position->Hide();
    m_message_delta = GetSize().x - m_message->GetSize().x + message_width(0);
    m_message->update_delta(message_width(0));
    m_picture_width = m_picture->GetBestSize().x;
    m_container.DisableSelfFocus(); // nobody has anything to type here
    m_pane->Hide();
    m_previous->Hide();
    m_next->Hide();
    m_description->Hide();
    SetSize(before);
}

bool caption_panel_t::has_all_controls() const
{
    return m_caption && m_description && m_pane && m_picture && m_message && m_previous && m_next;
}

int caption_panel_t::message_width(int panel_width) const
{
    if (!m_previous->IsShown())
        return panel_width;
    // Not the size that they have now: they may not have been laid out since the texts grew.
    return panel_width - (2 * m_previous->GetEffectiveMinSize().x + heading_border);
}

// Whether the description or the message has another number of lines.
bool caption_panel_t::wrap_labels(int width)
{
    const bool description = m_description->IsShown() && m_description->wrap_to_width(width);
    const bool message = m_pane->IsShown() && m_message->wrap_to_width(message_width(width));
    m_caption->wrap_to_width(width);
    return description || message;
}

void caption_panel_t::update_min_height()
{
    const int line = m_line_height;
    const int caption = m_caption->get_line_num() * line;
    const int description = m_description->IsShown() ? m_description->get_line_num() * line : 0;
    // The button's own height: on the screen it is stretched to that of the last message.
    const int pane =
        m_pane->IsShown() ? std::max(m_previous->GetMinSize().y, m_message->get_line_num() * line) : 0;
    const int height = with_space(description, description_space) + with_space(caption, caption_space) +
                       with_space(pane, pane_space);
    // Scripts whose letters come from another font may have taller lines.
    const wxSize wanted(wxDefaultCoord, std::max(height, GetSizer()->CalcMin().y));
    if (wanted != GetMinSize())
        SetMinSize(wanted);
}

void caption_panel_t::on_size(wxSizeEvent& event)
{
    event.Skip();
    if (m_in_size || !has_all_controls())
        return;
    m_in_size = true;
    const wxSize before = GetMinSize();
    const bool lines_changed = wrap_labels(event.GetSize().x);
    update_min_height();
    if (lines_changed)
        m_parent_layout->now();
    if (GetMinSize() != before)
        m_parent_layout->later();
    m_in_size = false;
}

// A vertical sizer says how wide the panel will be before it asks how high: then the first layout is right.
bool caption_panel_t::InformFirstDirection(int direction, int size, int)
{
    if (direction != wxHORIZONTAL || size <= 0 || !has_all_controls())
        return false;
    const wxSize before = GetMinSize();
    wrap_labels(size);
    update_min_height();
    if (GetMinSize() != before)
        m_parent_layout->later(); // not every sizer around this one has asked in time
    return true;
}

void caption_panel_t::show_pane(bool shown)
{
    m_pane->Show(shown);
    update_min_height();
    Layout();
    m_parent_layout->now();
}

void caption_panel_t::set_caption(const std::string& text)
{
    m_caption->set_label(text);
    m_caption->wrap_to_width(GetClientSize().x);
    update_min_height();
    m_parent_layout->now();
}

void caption_panel_t::set_description(const std::string& text)
{
    m_description->Show(!text.empty());
    m_description->set_label(text);
    m_description->wrap_to_width(GetClientSize().x);
    update_min_height();
    m_parent_layout->now();
}

bool caption_panel_t::update_buttons()
{
    const bool shown = m_messages.size() >= 2;
    if (m_next->IsShown() == shown)
        return false;
    // The focus must not stay in a button that is gone.
    const wxWindow* focused = FindFocus();
    if (!shown && (focused == m_previous || focused == m_next))
        m_next->Navigate();
    m_previous->Show(shown);
    m_position->Show(shown);
    m_next->Show(shown);
    return true;
}

// The message gives way to it. Says whether it has another width.
bool caption_panel_t::show_position(const message_info_t& message)
{
    if (!m_position->IsShown())
        return false;
    const int before = m_position->GetSize().x;
    const varg_list numbers{{"index", get_message_index(message.id) + 1}, {"count", get_message_count()}};
    wx_helpers1::set_label_text(m_position, translate_message("caption.position", numbers));
    const int needed = m_message_delta + m_position->GetBestSize().x + heading_border;
    m_message->update_delta(needed - (GetSize().x - m_message->GetSize().x));
    return m_position->GetBestSize().x != before;
}

// After anything that changes how many messages wait, or which of them is shown.
void caption_panel_t::number_buttons()
{
    const bool buttons_changed = update_buttons();
    const auto shown = find(m_current_id);
    const bool position_changed = shown != m_messages.end() && show_position(*shown);
    if ((buttons_changed || position_changed) && m_pane->IsShown()) {
        m_message->wrap_to_width(message_width(GetClientSize().x));
        update_min_height();
        m_pane->Layout();
        m_parent_layout->now();
    }
    if (shown == m_messages.end())
        return;
    const varg_list numbers{{"index", static_cast<int>(shown - m_messages.begin()) + 1},
                            {"count", get_message_count()}};
    if (m_next->IsShown()) {
        set_numbered_name(m_previous, translate_message("caption.previous_message", numbers));
        set_numbered_name(m_next, translate_message("caption.next_message", numbers));
    }
    wx_helpers1::set_accessible_name(m_pane, describe(*shown));
}

// What a screen reader says of a message, with its number where there are several.
std::string caption_panel_t::describe(const message_info_t& message) const
{
    const std::string spoken = translate_message(
        "caption.message", varg_list{{"severity", severity_name(message.severity)}, {"text", message.text}});
    if (m_messages.size() < 2)
        return spoken;
    return translate_message("caption.message_pane", varg_list{{"index", get_message_index(message.id) + 1},
                                                               {"count", get_message_count()},
                                                               {"message", spoken}});
}

// Also one that waits behind another.
void caption_panel_t::announce(const message_info_t& message)
{
    if (m_pane->IsShownOnScreen() && !message.text.empty())
        wx_helpers1::announce(m_pane, describe(message));
}

void caption_panel_t::tell_message(const message_info_t& message)
{
    const std::string severity = severity_name(message.severity);
    m_picture->set_picture(get_picture(message.severity));
    m_picture->set_description(severity);
    wx_helpers1::set_accessible_name(
        m_message,
        translate_message("caption.message", varg_list{{"severity", severity}, {"text", message.text}}));
}

wx_helpers1::wxStaticPicture caption_panel_t::get_picture(severity_t severity)
{
    image_loader_t& loader = image_loader_t::get();
    switch (severity) {
    case severity_t::critical:
        return loader.load_image(image::severity_critical);
    case severity_t::error:
        return loader.load_image(image::severity_error);
    case severity_t::information:
        return loader.load_image(image::severity_info);
    default:
        return loader.load_image(image::severity_warn);
    }
}

void caption_panel_t::set_style(wx_helpers1::style_t style)
{
    const wx_helpers1::ui_settings_t* settings = wx_helpers1::ui_settings_t::get();
    m_style = style;
    if (!settings)
        return;
    const wxFont text = settings->get_font(wx_helpers1::ui_font::text);
    const wxColour colour = settings->get_colour(wx_helpers1::colour_of(style));
    SetFont(text);
    m_line_height = get_text_extent(this, "Any text").y;
    wx_helpers1::set_font(m_caption, settings->get_font(wx_helpers1::ui_font::bold));
    wx_helpers1::set_font(m_description, text);
    wx_helpers1::set_font(m_message, text);
    wx_helpers1::set_font(m_position, text);
    m_caption->SetForegroundColour(colour);
    m_description->SetForegroundColour(colour);
    m_position->SetForegroundColour(settings->get_colour(wx_helpers1::ui_colour::text));
    m_message->SetForegroundColour(settings->get_colour(wx_helpers1::ui_colour::text));
}

void caption_panel_t::set_button_images()
{
    const auto left = pictures_of(image::scroll_left_normal, image::scroll_left_hover,
                                  image::scroll_left_pressed, image::scroll_left_disabled);
    const auto right = pictures_of(image::scroll_right_normal, image::scroll_right_hover,
                                   image::scroll_right_pressed, image::scroll_right_disabled);
    const bool mirrored = GetLayoutDirection() == wxLayout_RightToLeft;
    wx_helpers1::set_pictures(m_previous, mirrored ? right : left);
    wx_helpers1::set_pictures(m_next, mirrored ? left : right);
    const auto* settings = wx_helpers1::ui_settings_t::get();
    const int size = wxRound(button_size * (settings ? settings->get_text_scale() : 1));
    m_previous->SetMinSize(wxSize(size, size));
    m_next->SetMinSize(wxSize(size, size));
}

void caption_panel_t::on_ui_changed()
{
    set_style(m_style);
    set_button_images();
    const int before = std::exchange(m_picture_width, m_picture->GetBestSize().x);
    m_message_delta += m_picture_width - before;
    const int position = m_position->IsShown() ? m_position->GetBestSize().x + heading_border : 0;
    m_message->shift_delta(m_message_delta + position - m_message->get_delta());
    wrap_labels(GetClientSize().x);
    update_min_height();
    m_parent_layout->now();
}

} // namespace commondlg3
