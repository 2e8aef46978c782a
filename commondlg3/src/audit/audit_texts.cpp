#include "audited_window.h"
#include "commondlg3/text_utils.h"

#include <cfgmgr2/message_catalog.h>
#include <wx_helpers1/inspect.h>
#include <wx_helpers1/painted.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/listbox.h>

#include <algorithm>
#include <map>
#include <regex>
#include <string>

namespace commondlg3 {
namespace {

constexpr double least_contrast = 4.5;

// The contrast of the most common colour, which is what lies behind the text, with the one that stands out
// most.
double contrast_in(const wxImage& image)
{
    std::map<unsigned, int> counts;
    const unsigned char* pixel = image.GetData();
    for (int i = image.GetWidth() * image.GetHeight(); i > 0; --i, pixel += 3)
        ++counts[pixel[0] << 16 | pixel[1] << 8 | pixel[2]];
    const auto colour = [](unsigned rgb) { return wxColour(rgb >> 16, rgb >> 8 & 255, rgb & 255); };
    const auto common = std::max_element(counts.begin(), counts.end(),
                                         [](const auto& a, const auto& b) { return a.second < b.second; });
    double best = 1;
    for (const auto& [rgb, count] : counts)
        best = std::max(best, wx_helpers1::contrast_ratio(colour(common->first), colour(rgb)));
    return best;
}

std::string in_digits(double ratio)
{
    return wxString::Format("%.1f to 1", ratio).utf8_string();
}

// The languages that the build makes up from English; their texts stand in brackets.
bool is_made_up(const std::string& language)
{
    return language == "en_XA" || language == "ar_XB";
}

bool is_of_language(const std::string& text, const std::string& language)
{
    static const std::regex words_of_ascii("[A-Z][a-z]+( [A-Za-z]{2,}){1,}[.:?]?");
    if (is_made_up(language))
        return text.find('[') != std::string::npos || !std::regex_search(text, std::regex("[A-Za-z]{2}"));
    // Words of English can be told from a language that calls itself by a name in other letters.
    static const std::regex latin("[A-Za-z]");
    return std::regex_search(translate_message("language.name"), latin) ||
           !std::regex_match(text, words_of_ascii);
}

void audit_words(audited_window_t& audited, const wxWindow& window, const std::string& text)
{
    static const std::regex key("%?[a-z][a-z0-9_]*(\\.[a-z0-9_]+)+|%[A-Z][A-Za-z]+");
    if (std::regex_match(text, key))
        audited.add("raw_key", window, text);
    else if (!is_of_language(text, cfgmgr2::get_language()))
        audited.add("other_language", window, text);
}

} // namespace

void audit_texts(audited_window_t& audited)
{
    const wxRect whole = wx_helpers1::get_place(audited.top());
    const wxImage picture = wx_helpers1::get_screen_pixels(whole);
    const int scale = picture.IsOk() && whole.width > 0 ? picture.GetWidth() / whole.width : 1;
    audit_words(audited, audited.top(), wx_helpers1::from_wx(audited.top().GetTitle()));
    for (const wxWindow* window : audited.get_shown()) {
        if (const auto* list = wxDynamicCast(window, wxListBox);
            list && list->GetBestSize().x > list->GetSize().x && !wx_helpers1::is_scrolling(*list))
            audited.add("text_cut", *window, "the longest row");
        for (const wx_helpers1::shown_text_t& shown : wx_helpers1::get_shown_texts(*window)) {
            if (shown.is_cut && !shown.text.empty())
                audited.add("text_cut", *window, shown.text);
            if (!shown.is_drawn)
                audit_words(audited, *window, shown.text);
            wxRect seen = audited_window_t::get_seen_part(*window, shown.rect).Intersect(whole);
            if (!picture.IsOk() || seen.IsEmpty() || seen != shown.rect || !window->IsThisEnabled() ||
                !window->IsEnabled() || !has_letters(shown.text))
                continue;
            seen.Offset(-whole.x, -whole.y);
            const double ratio = contrast_in(picture.GetSubImage(
                wxRect(seen.x * scale, seen.y * scale, seen.width * scale, seen.height * scale)));
            if (ratio < least_contrast)
                audited.add("low_contrast", *window, in_digits(ratio) + ": " + shown.text);
        }
    }
}

} // namespace commondlg3
