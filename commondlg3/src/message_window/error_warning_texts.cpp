// The texts of a message window: their lines, and the room that they get.
#include "commondlg3/error_warning_dialog.h"
#include "commondlg3/text_utils.h"

#include "icon_type.h"
#include "long_text.h"
#include "message_extras.h"

#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/screen.h>
#include <wx_helpers1/scrolled_text.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <boost/tokenizer.hpp>

#include <wx/display.h>
#include <wx/settings.h>
#include <wx/sizer.h>

#include <algorithm>
#include <climits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace commondlg3 {
namespace {

// Lines that the eye finds its way back from, in characters. A text that would be tall becomes wide first.
constexpr int characters_of_line = 60;
constexpr int characters_of_wide_line = 90;
constexpr int lines_of_tall_text = 12;
constexpr int least_default_width = 460; // pixels
constexpr int least_text_width = 260;
// What a window needs beside its texts: its frame, the buttons, the check box, and a rim of the screen.
constexpr int usual_height_beside_texts = 220;
constexpr int width_beside_texts = 160;

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

void error_warning_panel_t::fill_text_controls()
{
    const auto* settings = wx_helpers1::ui_settings_t::get();
    const wxFont main_font = settings ? settings->get_font(wx_helpers1::ui_font::bold) : GetFont().Bold();
    const wxFont plain_font = settings ? settings->get_font(wx_helpers1::ui_font::text) : GetFont();
    const bool is_long = is_long_text(m_window.main_message) || is_long_text(m_window.supplemental_message) ||
                         is_long_text(shown_details());
    show_long_text(is_long);
    if (!is_long) {
        fill_static_text(m_main, true, m_window.main_message, main_font);
        fill_static_text(m_supplemental, false, m_window.supplemental_message, plain_font);
        fill_static_text(m_details, false, shown_details(), plain_font);
    }
    if (m_main)
        m_main->Show(!m_window.main_message.empty());
    if (m_supplemental)
        m_supplemental->Show(!m_window.supplemental_message.empty());
    if (m_details) {
        m_details->Show(!shown_details().empty());
        if (settings)
            m_details->SetForegroundColour(settings->get_colour(wx_helpers1::ui_colour::secondary_text));
    }
    fit_texts();
}

const std::string& error_warning_panel_t::shown_details() const
{
    static const std::string nothing;
    return are_details_folded() ? nothing : m_window.details_message;
}

int error_warning_panel_t::height_beside_texts() const
{
    const bool has_extras = m_extras && m_extras->IsShown();
    return usual_height_beside_texts + m_height_around + (has_extras ? m_extras->GetBestSize().y : 0);
}

void error_warning_panel_t::set_height_around(int height)
{
    if (std::exchange(m_height_around, height) != height && m_main)
        fill_text_controls();
}

void error_warning_panel_t::arrange_extras(int text_width)
{
    if (m_extras && m_extras->IsShown())
        m_extras->arrange(text_width + (m_icon ? m_icon->GetBestSize().x + 18 : 0));
}

// As many as are shown; of a text without an end of a line that is only known once it is broken.
bool error_warning_panel_t::has_long_details() const
{
    constexpr std::ptrdiff_t most_lines = 5;
    const std::string& details = m_window.details_message;
    const auto ends =
        std::count(details.begin(), details.end(), '\n') - (!details.empty() && details.back() == '\n');
    if (ends >= most_lines || is_long_text(details))
        return true;
    const auto max_len = static_cast<std::size_t>(std::max(0, max_string_len_in_label(false)));
    return details.size() > max_len &&
           create_multi_line(std::max(max_len, longest_word(details)), details).size() > most_lines;
}

void error_warning_panel_t::fold_details(bool folded)
{
    if (!m_folds || m_folded == folded)
        return;
    m_folded = folded;
    m_extras->set_folded(folded);
    fill_text_controls();
    const auto resized = m_resized; // a slot may end the panel
    resized.emit();
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
            m_long_text->set_texts(m_window.main_message, m_window.supplemental_message, shown_details());
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
    // Of the details also while they are folded, so that unfolding them changes the height alone.
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
        main ? m_window.main_message : m_window.supplemental_message + '\n' + shown_details();
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
        arrange_extras(width);
        const int needed = m_long_text->estimated_height(width);
        const int room = screen.height_up_to(needed + height_beside_texts()) - height_beside_texts();
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
    arrange_extras(width);
    std::size_t index = 0;
    for (wxStaticText* label : labels()) {
        const wxSize natural = naturals[index++];
        const bool wraps = natural.x > width;
        wx_helpers1::set_wrap_width(label, wraps ? width : 0);
        label->SetMinSize(wxSize(width, wraps ? wx_helpers1::height_for_width(label, width) : natural.y));
    }
    const wxSize needed = m_text_area->GetSizer()->CalcMin();
    const int room =
        std::max(100, screen.height_up_to(needed.y + height_beside_texts()) - height_beside_texts());
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

} // namespace commondlg3
