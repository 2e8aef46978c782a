#include "commondlg3/simple_message_panel.h"

#include "commondlg3/caption_panel.h"
#include "commondlg3/text_utils.h"

#include "parent_layout.h"
#include "severity.h"

#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/elements/rectangle_element.h>
#include <wx_helpers1/static_picture_ctrl.h>
#include <wx_helpers1/tooltip.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/math.h>
#include <wx/sizer.h>

#include <algorithm>

namespace commondlg3 {
namespace {

constexpr int border = 5;
constexpr int picture_size = 16;

caption_panel_t::severity_t to_caption_severity(simple_message_panel_t::severity_t severity)
{
    const auto value = static_cast<std::int32_t>(severity);
    const auto last = caption_panel_t::severity_t::information;
    return value >= 0 && value <= static_cast<std::int32_t>(last)
               ? static_cast<caption_panel_t::severity_t>(value)
               : last;
}

} // namespace

simple_message_panel_t::simple_message_panel_t(wxWindow* parent)
    : wxPanel(parent), m_parent_layout(std::make_unique<parent_layout_t>(this)), m_elements(this)
{
    m_frame = &m_elements.make_root<wx_helpers1::rectangle_element_t>();
    m_frame->show_border(true);
    m_picture = new wx_helpers1::static_picture_ctrl_t(this, wxID_ANY);
    fit_picture();
    m_label = new caption_label_t(this, std::string(), parent);
    auto* row = new wxBoxSizer(wxHORIZONTAL);
    row->Add(m_picture, 0, wxLEFT | wxRIGHT | wxTOP, border);
    row->Add(m_label, 1, wxEXPAND | wxRIGHT | wxTOP | wxBOTTOM, border);
    SetSizer(row);
    wx_helpers1::set_accessible_role(this, wx_helpers1::accessible_role_t::alert);
    // As wide as it will be in its page, so that the first delta is what the picture and the borders take.
    if (parent)
        SetSize(std::max(1, parent->GetSize().x), GetBestSize().y);
    Layout();
    Bind(wxEVT_SIZE, &simple_message_panel_t::on_size, this);
    if (wx_helpers1::ui_settings_t* settings = wx_helpers1::ui_settings_t::get())
        settings->changed().connect(this, [this] {
            on_ui_changed();
            if (IsShown())
                wrap_and_lay_out(GetClientSize().x); // another font has other lines
        });
    on_ui_changed();
}

simple_message_panel_t::~simple_message_panel_t() = default;

// Room for the picture before there is one: the label's width does not depend on it.
void simple_message_panel_t::fit_picture()
{
    const wx_helpers1::ui_settings_t* settings = wx_helpers1::ui_settings_t::get();
    const int size = wxRound(picture_size * (settings ? settings->get_text_scale() : 1));
    if (m_label)
        m_label->shift_delta(size - m_picture->GetMinSize().x);
    m_picture->SetMinSize(wxSize(size, size));
}

void simple_message_panel_t::set_message(severity_t severity, const std::string& text)
{
    if (text.empty()) {
        Hide();
        return;
    }
    const auto shown_as = to_caption_severity(severity);
    const std::string word = severity_name(shown_as);
    m_picture->set_picture(caption_panel_t::get_picture(shown_as));
    m_picture->set_description(word);
    m_label->set_label(text);
    wx_helpers1::SetTooltip(m_label, text);
    const std::string spoken = translate_message(
        "caption.message", CPIL_2_18::generic::varg_list{{"severity", word}, {"text", text}});
    wx_helpers1::set_accessible_name(m_label, spoken);
    wx_helpers1::set_accessible_name(this, spoken);
}

void simple_message_panel_t::enable(bool shown)
{
    Show(shown);
}

// A strip that is narrower than its page, or beside something else in it, has a delta that takes that into
// account too: the label then gets what it needs to use the room that it really has.
bool simple_message_panel_t::wrap(int width)
{
    const int beside_label = GetSizer()->CalcMin().x; // to a sizer the label itself has no width
    return m_label->wrap_to_width(width + std::max(0, m_label->get_delta() - beside_label));
}

void simple_message_panel_t::on_size(wxSizeEvent& event)
{
    event.Skip();
    m_frame->set_rect(wxRect(GetClientSize()));
    if (IsShown())
        wrap_and_lay_out(event.GetSize().x);
}

void simple_message_panel_t::wrap_and_lay_out(int width)
{
    if (!wrap(width))
        return;
    Layout();
    m_parent_layout->later();
}

// A vertical sizer says how wide the panel will be before it asks how high.
bool simple_message_panel_t::InformFirstDirection(int direction, int size, int)
{
    if (direction != wxHORIZONTAL || size <= 0 || !IsShown())
        return false;
    if (wrap(size))
        m_parent_layout->later(); // not every sizer around this one has asked in time
    return true;
}

void simple_message_panel_t::on_ui_changed()
{
    const wx_helpers1::ui_settings_t* settings = wx_helpers1::ui_settings_t::get();
    if (!settings)
        return;
    const wxColour background = settings->get_colour(wx_helpers1::ui_colour::notice_background);
    SetBackgroundColour(background);
    m_frame->set_fill(background);
    m_frame->set_border(settings->get_colour(wx_helpers1::ui_colour::border));
    fit_picture();
    wx_helpers1::set_font(m_label, settings->get_font(wx_helpers1::ui_font::text));
    m_label->SetForegroundColour(settings->get_colour(wx_helpers1::ui_colour::notice_text));
    m_label->update_delta(0);
    Refresh();
}

} // namespace commondlg3
