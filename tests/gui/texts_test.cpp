#include "support.h"

#include <commondlg3/text_utils.h>

#include <wx/stattext.h>

#include <string>

namespace {

using commondlg3::translate_message;

TEST(Texts, ComeFromTheCatalogWithTheProductsNamesOnlyWhenNothingIsGiven)
{
    EXPECT_EQ("&OK", translate_message("btn.ok"));
    EXPECT_NE(std::string::npos, translate_message("message_window.title.error").find("Vorbex"));
    EXPECT_EQ(std::string::npos,
              translate_message("message_window.title.error", {{"field_name", "x"}}).find("Vorbex"))
        << "a list that is not empty stays as it was given";
    EXPECT_EQ("Name is too long", translate_message("max_len", {{"field_name", "Name"}}));
    EXPECT_EQ("Message is not found: 'no.key'", translate_message("no.key"));
    EXPECT_EQ("Message is not found: ''", translate_message(""));
    const test::product_guard_t elsewhere(RESOURCE_DIR, "/nowhere");
    EXPECT_EQ("Message catalog 'commondlg' is not loaded. Message: btn.ok", translate_message("btn.ok"));
}

TEST(Texts, EveryLanguageSpeaksAndCountsItsOwnWay)
{
    for (const std::string language : {"de", "ja", "ar"}) {
        const test::language_guard_t guard(language);
        EXPECT_NE("&Cancel", translate_message("btn.cancel")) << language;
        const std::string text = translate_message(
            "max_len_details", {{"product_name", "Vorbex"}, {"field_name", "Größe"}, {"max_len", 10000}});
        EXPECT_NE(std::string::npos, text.find("Größe")) << text;
        EXPECT_EQ(std::string::npos, text.find('{')) << text;
    }
}

TEST(Texts, FirstLetterOfAnyScript)
{
    using commondlg3::set_1st_letter_uppercase;
    EXPECT_EQ("", set_1st_letter_uppercase(""));
    EXPECT_EQ("Éclair ab", set_1st_letter_uppercase("éclair ab"));
    EXPECT_EQ("Ωμέγα", set_1st_letter_uppercase("ωμέγα"));
    EXPECT_EQ("日本", set_1st_letter_uppercase("日本"));
    EXPECT_EQ("\xe9t", set_1st_letter_uppercase("\xe9t")) << "no character: left as it is";
}

TEST(Texts, LineEndings)
{
    using commondlg3::restore_line_endings;
    EXPECT_EQ("\r\na\r\nb\r\n\r\n", restore_line_endings("\na\r\nb\n\n"));
    EXPECT_EQ("a\rb", restore_line_endings("a\rb"));
    const std::string done = "a\r\nb\r\n";
    EXPECT_EQ(done, restore_line_endings(done));
}

TEST(Texts, MeasuringAndWrappingOfLabels)
{
    auto* label = new wxStaticText(test::main_window(), wxID_ANY, "x");
    int width = 0;
    commondlg3::process_max_width(label, "narrow", width);
    const int narrow = width;
    commondlg3::process_max_width(label, "a much wider text", width);
    EXPECT_GT(width, narrow);
    commondlg3::process_max_width(label, "i", width);
    EXPECT_EQ(commondlg3::get_text_extent(label, "a much wider text").x, width);
    EXPECT_GT(commondlg3::get_text_extent(label, "\xff\xfe").x, 0);

    std::string words;
    for (int i = 0; i < 60; ++i)
        words += "R&D words ";
    commondlg3::wrap_by_parent(test::main_window(), label, words, 40);
    EXPECT_LE(label->GetBestSize().x, test::main_window()->GetSize().x - 40);
    EXPECT_NE(wxNOT_FOUND, label->GetLabelText().Find("R&D"));
    label->Destroy();
    commondlg3::wrap_by_parent(nullptr, nullptr, "x", 1);
    commondlg3::set_bold_font(nullptr);
    commondlg3::set_color_and_tooltip(nullptr, "x", *wxRED);
    commondlg3::set_tooltip("x", nullptr);
    EXPECT_EQ(wxSize(0, 0), commondlg3::get_text_extent(nullptr, "x"));
}

} // namespace
