#include "commondlg3/text_utils.h"

#include "message_of.h"

#include <cpil/strings.h>
#include <gen_helpers2/assertion.h>
#include <vdx/caption.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/tooltip.h>
#include <wx_helpers1/ui_settings.h>
#include <wx_helpers1/wrap_text.h>

#include <wx/dcclient.h>
#include <wx/gdicmn.h>

#include <algorithm>

namespace commondlg3 {
namespace {

constexpr char text_utils_unit[] = "text_utils";
constexpr char catalog_name[] = "commondlg";

} // namespace

std::string translate_message(const std::string& key, const CPIL_2_18::generic::varg_list& args)
{
    return message_of(catalog_name, key, args);
}

std::string set_1st_letter_uppercase(const std::string& text)
{
    if (text.empty())
        return text;
    std::size_t length = 1;
    while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80)
        ++length;
    return CPIL_2_18::strings::to_upper(text.substr(0, length)) + text.substr(length);
}

std::string restore_line_endings(const std::string& text)
{
    std::string result;
    result.reserve(text.size() + text.size() / 16);
    char previous = '\0';
    for (const char c : text) {
        if (c == '\n' && previous != '\r')
            result += '\r';
        result += c;
        previous = c;
    }
    return result;
}

void set_bold_font(wxControl* ctrl)
{
    if (!ctrl)
        return;
    const auto* m_ptr = wx_helpers1::ui_settings_t::get();
    if (GH2_ASSERT(m_ptr != 0, text_utils_unit))
        ctrl->SetFont(m_ptr->get_font(wx_helpers1::ui_font::bold));
}

void wrap_by_parent(wxWindow* parent, wxStaticText* label, const std::string& text, int margin)
{
    if (!parent || !label)
        return;
    label->SetLabel(wx_helpers1::to_plain_label(text));
    label->Wrap(parent->GetSize().x - margin);
}

void process_max_width(wxWindow* win, const wxString& text, int& max_width)
{
    max_width = std::max(max_width, get_text_extent(win, wx_helpers1::from_wx(text)).x);
}

wxSize get_text_extent(wxWindow* win, const std::string& text)
{
    if (!win)
        return wxSize(0, 0);
    wxClientDC dc(win);
    dc.SetFont(win->GetFont());
    return dc.GetTextExtent(wx_helpers1::to_label(text));
}

void set_color_and_tooltip(wxControl* ctrl, const std::string& tooltip, wxColour colour)
{
    if (!ctrl)
        return;
    // The toolkit has readers say the description again when the tool tip changes: it is empty meanwhile.
    if (wx_helpers1::from_wx(ctrl->GetToolTipText()) != tooltip)
        wx_helpers1::set_accessible_description(ctrl, std::string());
    wx_helpers1::SetTooltip(ctrl, tooltip, -1, true);
    if (!wx_helpers1::is_described(ctrl))
        wx_helpers1::set_accessible_description(ctrl, tooltip);
    ctrl->SetForegroundColour(colour);
    ctrl->Refresh(true, nullptr);
}

void set_tooltip(const std::string& text, wxWindow* win)
{
    if (!win)
        return;
    constexpr int average_characters_in_line = 60;
    constexpr int least_milliseconds = 10000;
    constexpr int milliseconds_per_byte = 80; // twice the time that reading takes
    const int width = average_characters_in_line * win->GetCharWidth();
    wx_helpers1::SetTooltip(win, wx_helpers1::wrap_text(text, width, win));
    const std::size_t bytes = std::min<std::size_t>(text.size(), 10000);
    wx_helpers1::wxCustomTooltip::SetHideDelay(
        win, std::max(least_milliseconds, static_cast<int>(bytes) * milliseconds_per_byte));
}

std::string get_disabled_tooltip_text(const std::string& text, const std::string& reason, bool disabled)
{
    if (!disabled || reason.empty())
        return text;
    return text.empty() ? reason : text + "\n\n" + reason;
}

void move_to_visible_area(wxWindow* win)
{
    if (!win)
        return;
    const wxPoint position = win->GetScreenPosition();
    const wxSize size = win->GetSize();
    const wxSize display = wxGetDisplaySize();
    const int dx = display.x - (position.x + size.x);
    const int dy = display.y - (position.y + size.y);
    if (dx >= 0 && dy >= 0)
        return;
    const auto* m_ptr = wx_helpers1::ui_settings_t::get();
    const int margin = GH2_ASSERT(m_ptr != 0, text_utils_unit)
                           ? m_ptr->get_metric(wx_helpers1::ui_metric::window_border)
                           : 0;
    const int x = dx < 0 ? position.x + dx : position.x;
    const int y = dy < 0 ? position.y + dy - 2 * margin : position.y;
    win->Move(x, y);
}

void set_vdxc_icon(vdxcfrw7::CImage& image, const wx_helpers1::picture_t& picture)
{
    image = vdxcfrw7::CImage(picture);
}

} // namespace commondlg3
