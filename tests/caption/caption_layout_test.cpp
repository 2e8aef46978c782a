#include "caption_tools.h"

#include <commondlg3/caption_panel.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/bmpbuttn.h>
#include <wx/sizer.h>

#include <string>
#include <vector>

using commondlg3::caption_label_t;
using commondlg3::caption_panel_t;
using severity_t = caption_panel_t::severity_t;

namespace {

std::string sentences(std::size_t bytes)
{
    std::string text;
    while (text.size() < bytes)
        text += "The folder cannot be written to, so choose another one. ";
    return text;
}

// Arabic and Japanese lines may be taller than those of Latin letters.
struct texts_t
{
    std::string caption, description, message;
};

std::vector<texts_t> various_texts()
{
    return {{"Caption", "", "x"},
            {"Caption & more, in bold letters that are wider than the plain ones", "Short", sentences(120)},
            {sentences(100), sentences(300), sentences(700)},
            {"キャプション",
             "新しい結果を保存するフォルダーと、名前の付け方を選びます。既存の結果は移動されません。",
             "このフォルダーには書き込めません。別のフォルダーを選ぶか、管理者に許可を求めてください。"},
            {"مكان حفظ النتائج", "اختر مجلد النتائج الجديدة وطريقة تكوين أسمائها.",
             "لا يمكن الكتابة في المجلد. اختر مجلدًا آخر أو اطلب الإذن من المسؤول."},
            {"Caption", std::string(300, 'w'), "/home/" + std::string(200, 'm') + "\nsecond paragraph"}};
}

constexpr int widths[] = {180, 230, 300, 301, 302, 303, 420, 700, 1000, 260};

} // namespace

// Without this the texts are cut off, or everything below jumps once more after each step of a drag.
TEST(CaptionLayout, height_follows_the_wrapping_within_one_layout)
{
    for (const texts_t& texts : various_texts()) {
        test::window_t window(500);
        auto* heading = new caption_panel_t(window, texts.caption, texts.description);
        auto* page = new wxPanel(window);
        window->GetSizer()->Add(heading, 0, wxEXPAND | wxLEFT | wxRIGHT, 7);
        window->GetSizer()->Add(page, 1, wxEXPAND);
        heading->add_message(severity_t::error, texts.message);
        heading->add_message(severity_t::warning, "another");
        int sizes = 0;
        heading->Bind(wxEVT_SIZE, [&sizes](wxSizeEvent& event) {
            event.Skip();
            ++sizes;
        });
        for (int width : widths) {
            sizes = 0;
            window.drag_to(width);
            EXPECT_EQ(page->GetPosition().y, heading->GetSize().y) << "at once, at " << width;
            EXPECT_EQ(test::cut_off(heading), "") << width;
            const wxRect before = page->GetRect();
            test::settle();
            EXPECT_EQ(page->GetRect(), before) << "nothing moves afterwards, at " << width;
            EXPECT_LE(sizes, 3) << "a layout loop at " << width;
        }
    }
}

namespace {

wxSizer* make_grid()
{
    auto* columns = new wxFlexGridSizer(2);
    columns->AddGrowableCol(0);
    return columns;
}

} // namespace

// A sizer that does not ask for the height at a width leaves the panel to notice by itself.
TEST(CaptionLayout, height_follows_in_other_sizers_too)
{
    for (const bool grid : {false, true}) {
        test::window_t window;
        wxSizer* around = grid ? make_grid() : new wxBoxSizer(wxHORIZONTAL);
        auto* heading = new caption_panel_t(window, "Caption", sentences(300));
        auto* below = new wxPanel(window);
        around->Add(heading, 1, wxEXPAND);
        around->Add(new wxPanel(window, wxID_ANY, wxDefaultPosition, wxSize(30, 10)));
        window->GetSizer()->Add(around, 0, wxEXPAND);
        window->GetSizer()->Add(below, 1, wxEXPAND);
        heading->add_message(severity_t::error, sentences(400));
        for (int width : widths) {
            window.drag_to(width);
            test::settle();
            EXPECT_EQ(test::cut_off(heading), "") << width << (grid ? ", grid" : "");
            EXPECT_EQ(below->GetPosition().y, heading->GetSize().y) << width << (grid ? ", grid" : "");
        }
    }
}

TEST(CaptionLayout, page_moves_by_the_change_of_the_height_and_no_more)
{
    test::window_t window;
    auto* heading = new caption_panel_t(window, "Caption", "");
    auto* page = new wxPanel(window);
    window->GetSizer()->Add(heading, 0, wxEXPAND);
    window->GetSizer()->Add(page, 1, wxEXPAND);
    window->Layout();
    const auto page_is_right_below = [&](const char* when) {
        EXPECT_EQ(page->GetPosition().y, heading->GetSize().y) << when << ", at once";
        EXPECT_EQ(test::cut_off(heading), "") << when;
        const wxRect at_once = page->GetRect();
        test::settle();
        EXPECT_EQ(page->GetRect(), at_once) << when << ", nothing moves afterwards";
    };
    const int id = heading->add_message(severity_t::error, sentences(200));
    page_is_right_below("first");
    heading->add_message(severity_t::warning, sentences(400));
    page_is_right_below("arrows");
    heading->show_next_message();
    page_is_right_below("longer one");
    heading->edit_message(id + 1, sentences(900));
    page_is_right_below("edited");
    heading->set_caption(sentences(100));
    page_is_right_below("caption");
    heading->set_description(sentences(100));
    page_is_right_below("description");
    heading->remove_message(id + 1);
    heading->remove_message(id);
    page_is_right_below("none left");
}

TEST(CaptionLayout, label_wraps_to_its_width_less_the_delta)
{
    test::window_t window;
    auto* label = new caption_label_t(window, sentences(200), window);
    EXPECT_EQ(label->get_line_num(), -1);
    EXPECT_EQ(label->GetBestSize().x, 0) << "a long text must not widen its window";
    EXPECT_TRUE(label->wrap_to_width(300));
    EXPECT_FALSE(label->wrap_to_width(300));
    const int lines = label->get_line_num();
    EXPECT_GT(lines, 1);
    for (const wxString& line : wxSplit(label->GetLabelText(), '\n', '\0'))
        EXPECT_LE(label->GetTextExtent(line).x, 300) << line;
    label->SetSize(0, 0, 100, -1);
    window->SetSize(400, 300);
    label->update_delta(-200);
    label->update_delta(-250);
    EXPECT_EQ(label->get_delta(), 100) << "it never shrinks";
    EXPECT_FALSE(label->wrap_to_width(400)) << "the same room";
    EXPECT_FALSE(label->wrap_to_width(98)) << "below -1";
    EXPECT_EQ(label->get_line_num(), lines);
    label->set_label("short & sweet");
    EXPECT_TRUE(label->wrap_to_width(99)) << "-1 is still a width";
    EXPECT_EQ(label->GetLabelText(), "short & sweet");

    new caption_label_t(window, "text", nullptr);
    EXPECT_EQ(test::take_assertions(), std::vector<std::string>{"m_window_for_get_parent_size != NULL"});
}

TEST(CaptionLayout, colours_follow_the_theme_while_the_page_is_open)
{
    using namespace wx_helpers1;
    test::window_t window;
    auto* heading = new caption_panel_t(window, "Caption", "Description");
    heading->set_style(style_t::error);
    window->GetSizer()->Add(heading, 0, wxEXPAND);
    heading->add_message(severity_t::error, "text");
    const test::theme_guard_t dark(true);
    const auto labels = test::all_below<caption_label_t>(heading);
    ASSERT_EQ(3u, labels.size());
    for (auto* label : labels)
        EXPECT_GE(contrast_ratio(label->GetForegroundColour(), wxColour(53, 53, 53)), 4.5)
            << label->get_full_text();
    const wxColour red = labels[0]->GetForegroundColour();
    EXPECT_GT(red.Red(), red.Green() + 50) << "the caption of an error";
}
