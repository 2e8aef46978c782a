// What programs print: tabs, sequences for a terminal, control characters.
#include "log_tools.h"

#include "font_metrics.h"
#include "styled_text.h"

#include <wx_helpers1/ui_settings.h>

#include <wx/dcclient.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

using namespace vdxcfrw7;

namespace {

// Relative luminance, by its definition.
double contrast_of(const wxColour& a, const wxColour& b)
{
    const auto luminance = [](const wxColour& colour) {
        const auto linear = [](double c) {
            return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(colour.Red() / 255.0) + 0.7152 * linear(colour.Green() / 255.0) +
               0.0722 * linear(colour.Blue() / 255.0);
    };
    const double la = luminance(a), lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

} // namespace

// A sequence that takes a letter with it, or leaves one, is read, found, copied or spoken wrong.
TEST(InplacePrinted, sequences_are_no_part_of_what_is_read)
{
    const std::vector<std::pair<std::string, std::string>> said = {
        {"\x1b[01m\x1b[Kbroken.cpp:5:\x1b[m\x1b[K \x1b[01;31merror: \x1b[mno member",
         "broken.cpp:5: error: no member"},
        {"\x1b]8;;https://a.example/x\x07-Wall\x1b]8;;\x1b\\ and \x1b]0;title\x07"
         "text",
         "-Wall and text"},
        {"\x1b(B\x1b[?25l\x1b[2K\x1b[1;31Hplain\x1b"
         "7\x1b=",
         "plain"},
        {"\x1bP+q\x1b\\dcs \x1b[38;2;1;2;3mrgb\x1b[38:2::1:2:3m \x1b[38;5mcut", "dcs rgb cut"},
        // What is not ended, or none, takes nothing with it.
        {"\x1b]0;never ended", "\x1b]0;never ended"},
        {"a\x1b\tb \x1b", "a\x1b\tb \x1b"},
        {"\x1b[31", ""},
        {"\x1b[31\xc3\xa9t\xc3\xa9", "\xc3\xa9t\xc3\xa9"},
    };
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("entry"), {});
    std::string read = "entry";
    std::vector<std::string> kept;
    for (const auto& [text, shown] : said) {
        window->get_messenger(tag)->say(msngr2::sev_none, text.c_str());
        kept.push_back(text);
        read += "\n" + shown;
    }
    ASSERT_TRUE(test::wait_for([&] { return window.element(0).GetLines().size() == said.size(); }));
    EXPECT_EQ(test::lines_of(window.control(), 0), kept) << "what is saved is what was said";
    window.log().SelectAll();
    EXPECT_EQ(window.log().GetSelectedText(), read);
    EXPECT_NE(window.log().GetText().find(read.substr(6)), std::string::npos);
    ASSERT_TRUE(window.log().Find("ERROR: no", true));
    EXPECT_EQ(window.log().GetSelectedText(), "error: no");
    window.log().SetFilter(0, "-wall and");
    ASSERT_TRUE(test::wait_for([&] { return window.log().GetHiddenCount() == said.size() - 1; }));
}

// Colours of a terminal are made for one ground; here it may be any.
TEST(InplacePrinted, every_colour_can_be_read)
{
    for (const auto& [ink, background] : {std::make_pair(*wxBLACK, *wxWHITE),
                                          std::make_pair(wxColour(238, 238, 236), wxColour(53, 53, 53))}) {
        style_colours_t colours;
        colours.set(ink, background, ink);
        styled_text_t text;
        for (int i = 0; i < 256; ++i)
            for (const char* form : {"\x1b[38;5;%dmx", "\x1b[48;5;%dmx", "\x1b[7;38;5;%dmx",
                                     "\x1b[2;38;5;%dmx", "\x1b[38;5;%d;48;5;100mx"}) {
                char said[64];
                std::snprintf(said, sizeof said, form, i);
                read_styled_text(said, text);
                ASSERT_EQ(text.runs.size(), 1u);
                const auto& pair = colours.get(text.runs[0].style);
                EXPECT_GE(contrast_of(pair.ink, pair.ground.IsOk() ? pair.ground : background), 4.5)
                    << said + 1;
            }
    }

    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("entry"), {});
    window->get_messenger(tag)->say(msngr2::sev_none, "\x1b[1;48;2;1;250;3mWWWW\x1b[m plain");
    const auto count = [&] {
        const wxImage picture = test::picture_of(*window.frame());
        int pixels = 0;
        for (int i = 0; i < picture.GetWidth() * picture.GetHeight(); ++i)
            pixels += picture.GetData()[3 * i] == 1 && picture.GetData()[3 * i + 1] == 250;
        return pixels;
    };
    EXPECT_GT(count(), 100);
    window.log().SelectAll();
    EXPECT_EQ(count(), 0) << "a selection has colours of its own";
}

// A table measures what the shaper draws: where they disagree about a tab, a row is cut or broken too early.
TEST(InplacePrinted, tabs_stand_where_they_were_measured)
{
    test::log_window_t window;
    const wxFont font = wx_helpers1::ui_settings_t::get()->get_font(wx_helpers1::ui_font::text);
    wxClientDC dc(window.frame());
    font_metrics_t metrics;
    metrics.set(*window.frame(), font, dc);
    std::mt19937 random(7);
    int certain = 0;
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (auto i = random() % 30; i > 0; --i)
            text += "aWi. \t\tTol"[random() % 10];
        const auto extent = metrics.measure(text);
        const int drawn = metrics.get_shaper().width_of(text, PANGO_DIRECTION_LTR);
        if (extent.complex)
            continue;
        ++certain;
        // Kerning, which the table does not know, is less than a step of tabs.
        ASSERT_NEAR(extent.width, drawn, metrics.get_shaper().get_tab_width() / 2)
            << testing::PrintToString(text);
    }
    EXPECT_GT(certain, 1000) << "most are not worth shaping";
    EXPECT_GT(metrics.get_shaper().width_of("\x07", PANGO_DIRECTION_LTR), 5) << "no hole";
    // A column begins at the same place below a shorter and a longer word, and never touches what is before it.
    text_shaper_t& shaper = metrics.get_shaper();
    const auto place = [&](const std::string& text) {
        return shaper.places_of(text, PANGO_DIRECTION_LTR, text.size() - 1, text.size()).at(0).first;
    };
    EXPECT_EQ(place("a\tx"), place("Wo\tx"));
    EXPECT_EQ(place("\ta\tx"), 2 * shaper.get_tab_width());
    std::string word;
    for (; shaper.width_of(word, PANGO_DIRECTION_LTR) < 2 * shaper.get_tab_width(); word += 'i')
        EXPECT_GE(place(word + "\tx") - shaper.width_of(word, PANGO_DIRECTION_LTR),
                  shaper.width_of(" ", PANGO_DIRECTION_LTR));
    EXPECT_EQ(shaper.byte_at("a\tx", PANGO_DIRECTION_LTR, shaper.get_tab_width() - 1), 2u);
}

// Rows of bold letters are as wide as they are drawn, also where the ordinary ones would fit.
TEST(InplacePrinted, faces_are_broken_where_they_are_drawn)
{
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("entry"), {});
    std::string words;
    for (int i = 0; i < 200; ++i)
        words += "mmwm ";
    for (const std::string& text : {words, "\x1b[1m" + words, "\x1b[31m" + words})
        window->get_messenger(tag)->say(msngr2::sev_none, text.c_str());
    ASSERT_TRUE(test::wait_for([&] { return window.element(0).GetLines().size() == 3; }));
    ASSERT_TRUE(test::wait_for([&] { return window.log().GetState().exact; }));
    const auto height = [&](std::size_t line) {
        return window.log().GetLineRect(window.element(0), line).height;
    };
    EXPECT_GT(height(1), height(0));
    EXPECT_EQ(height(2), height(0));
}
