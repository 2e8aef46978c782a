#include "caption_tools.h"

#include <commondlg3/image_loader.h>
#include <commondlg3/simple_message_panel.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/static_picture_ctrl.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/dcclient.h>
#include <wx/dcmemory.h>
#include <wx/sizer.h>

#include <string>

using commondlg3::caption_label_t;
using commondlg3::image_loader_t;
using commondlg3::simple_message_panel_t;
using strip_severity_t = simple_message_panel_t::severity_t;

namespace {

const std::string notice =
    "The disk could not keep up, and about 2% of the samples were not written. To keep all "
    "samples, choose a longer sampling interval.";

caption_label_t* label_of(simple_message_panel_t* strip)
{
    return test::all_below<caption_label_t>(strip).at(0);
}

} // namespace

TEST(SimpleMessage, severity_is_a_picture_and_a_word)
{
    using image = image_loader_t::image_type_t;
    test::window_t window;
    auto* strip = new simple_message_panel_t(window);
    const struct
    {
        int severity;
        image picture;
        const char* spoken;
    } rows[] = {{0, image::severity_critical, "Critical: x"}, {1, image::severity_error, "Error: x"},
                {2, image::severity_warn, "Warning: x"},      {3, image::severity_info, "Information: x"},
                {4, image::severity_info, "Information: x"},  {-1, image::severity_info, "Information: x"}};
    for (const auto& row : rows) {
        strip->set_message(static_cast<strip_severity_t>(row.severity), "x");
        const auto shown = test::all_below<wx_helpers1::static_picture_ctrl_t>(strip).at(0)->get_picture();
        EXPECT_TRUE(shown.get_still().is_same(image_loader_t::get().load_image(row.picture))) << row.severity;
        EXPECT_EQ(wx_helpers1::get_accessible_name(strip), row.spoken);
    }
    EXPECT_EQ(label_of(strip)->GetToolTipText(), "x");
    strip->set_message(strip_severity_t::error, "");
    EXPECT_FALSE(strip->IsShown());
    strip->set_message(strip_severity_t::error, "y");
    EXPECT_FALSE(strip->IsShown()) << "the page decides when";
    strip->enable(true);
    EXPECT_TRUE(strip->IsShown());
}

// Its delta is learned from its parent's width: in a margin, or beside something else, that is not its own.
TEST(SimpleMessage, text_is_never_cut_off_wherever_the_strip_stands)
{
    for (const bool beside : {false, true}) {
        test::window_t window(700);
        auto* strip = new simple_message_panel_t(window);
        strip->set_message(strip_severity_t::warning, notice);
        auto* row = new wxBoxSizer(wxHORIZONTAL);
        auto* column = new wxBoxSizer(wxVERTICAL);
        column->Add(strip, 0, wxEXPAND | wxALL, 18);
        row->Add(column, 1, wxEXPAND);
        if (beside)
            row->Add(new wxPanel(window), 1, wxEXPAND);
        window->GetSizer()->Add(row, 1, wxEXPAND);
        for (int width : {700, 360, 420, 900, 500}) {
            window.drag_to(width);
            test::settle();
            EXPECT_EQ(test::cut_off(strip), "") << width;
            if (width == 420) {
                const test::theme_guard_t dark(true); // learns its delta again
                EXPECT_EQ(test::cut_off(strip), "") << "dark";
            }
        }
        window.drag_to(beside ? 1400 : 700);
        test::settle();
        EXPECT_LE(label_of(strip)->get_line_num(), 2) << "the room there is, is used";
    }
}

TEST(SimpleMessage, colours_follow_the_theme_to_the_pixel)
{
    using namespace wx_helpers1;
    test::window_t window;
    auto* strip = new simple_message_panel_t(window);
    strip->set_message(strip_severity_t::warning, notice);
    window->GetSizer()->Add(strip, 0, wxEXPAND);
    window->Layout();
    for (const bool is_dark : {true, false}) {
        const test::theme_guard_t theme(is_dark);
        const auto pixel = [&](int x, int y) {
            wxClientDC dc(strip);
            wxColour colour;
            dc.GetPixel(x, y, &colour);
            return colour;
        };
        EXPECT_TRUE(test::wait_for([&] { return is_dark == (pixel(3, 3).Red() < 128); }));
        EXPECT_GE(contrast_ratio(label_of(strip)->GetForegroundColour(), pixel(3, 3)), 4.5);
        EXPECT_NE(pixel(0, strip->GetSize().y / 2), pixel(3, 3)) << "the border";
    }
}
