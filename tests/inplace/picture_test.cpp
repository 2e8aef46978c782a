// What the log's window shows, by its pixels.
#include "log_tools.h"

#include <wx_helpers1/ui_settings.h>

#include <algorithm>
#include <cstdint>
#include <functional>
#include <map>
#include <string>

using namespace commondlg3;
using namespace msngr2;

namespace {

wxColour colour_at(const wxImage& image, int x, int y)
{
    return wxColour(image.GetRed(x, y), image.GetGreen(x, y), image.GetBlue(x, y));
}

wxRect inside(const wxImage& image, const wxRect& rect)
{
    return rect.Intersect(wxRect(image.GetSize()));
}

// The colour that most of the rectangle has, and the best contrast that anything in it has to it.
struct ink_t
{
    wxColour background;
    double contrast = 1;
};

ink_t ink_in(const wxImage& image, const wxRect& given)
{
    const wxRect rect = inside(image, given);
    std::map<unsigned int, int> counts;
    for (int y = rect.y; y < rect.y + rect.height; ++y)
        for (int x = rect.x; x < rect.x + rect.width; ++x)
            ++counts[colour_at(image, x, y).GetRGB()];
    ink_t ink;
    int most = 0;
    for (const auto& [rgb, count] : counts)
        if (count > most) {
            most = count;
            ink.background.SetRGB(rgb);
        }
    for (const auto& [rgb, count] : counts) {
        wxColour colour;
        colour.SetRGB(rgb);
        ink.contrast = std::max(ink.contrast, wx_helpers1::contrast_ratio(colour, ink.background));
    }
    return ink;
}

bool same_in(const wxImage& a, const wxImage& b, const wxRect& given)
{
    const wxRect rect = inside(a, given);
    for (int y = rect.y; y < rect.y + rect.height; ++y)
        for (int x = rect.x; x < rect.x + rect.width; ++x)
            if (colour_at(a, x, y) != colour_at(b, x, y))
                return false;
    return true;
}

// A rectangle of the log's window as it lies in its frame's picture.
wxRect in_picture(test::log_window_t& window, wxRect rect)
{
    rect.Offset(window.log().GetWindow()->GetScreenPosition() -
                window.frame()->GetScreenRect().GetPosition());
    return rect;
}

wxRect row_rect(test::log_window_t& window, std::size_t line)
{
    wxRect rect = window.log().GetLineRect(window.element(0), line);
    rect.width = 100;
    return in_picture(window, rect);
}

} // namespace

// What is selected must be readable, and everything else as it was: whatever made the selection.
TEST(InplacePictures, a_selection_leaves_the_rest_painted)
{
    constexpr std::size_t count = 10;
    test::log_window_t window;
    const auto tag = window->add_message(test::make_message("Caption", "A <b>body</b>"), {});
    for (std::size_t i = 0; i < count; ++i)
        window->get_messenger(tag)->say(sev_none, ("row number " + std::to_string(i)).c_str());
    window.focus();
    for (const bool dark : {false, true}) {
        const test::theme_guard_t themed(dark);
        test::press(WXK_ESCAPE); // nothing is selected
        const wxImage before = test::picture_of(*window.frame());
        EXPECT_EQ(dark, ink_in(before, row_rect(window, 0)).background.Red() < 90);
        const auto middle_of = [&](std::size_t line) {
            const wxRect rect = window.log().GetLineRect(window.element(0), line);
            return window.log().GetWindow()->ClientToScreen(wxPoint(rect.x, rect.y + rect.height / 2));
        };
        const std::function<void()> ways[] = {
            [&] { test::drag(middle_of(2) - wxPoint(2, 0), middle_of(4) + wxPoint(300, 0)); },
            [&] { EXPECT_TRUE(window.log().Find("row number 3", true)); },
            [&] { test::press(WXK_DOWN, wxMOD_SHIFT); },
            [&] { test::press('A', wxMOD_CONTROL); },
        };
        for (const auto& way : ways) {
            SCOPED_TRACE(testing::Message() << (dark ? "dark" : "light") << ", way " << &way - ways);
            way();
            const wxImage after = test::picture_of(*window.frame());
            const std::string selected = window.log().GetSelectedText();
            ASSERT_NE(std::string::npos, selected.find("row number 3"));
            for (std::size_t i = 0; i < count; ++i) {
                const wxRect rect = row_rect(window, i);
                const ink_t ink = ink_in(after, rect.Deflate(0, 2));
                EXPECT_GE(ink.contrast, 4.5) << "row " << i;
                if (selected.find("row number " + std::to_string(i)) == std::string::npos)
                    EXPECT_TRUE(same_in(before, after, rect)) << "row " << i;
                else
                    EXPECT_NE(ink.background, ink_in(before, rect).background) << "row " << i;
            }
        }
        // The body, which is selected as a whole, stands between the head and the first row.
        const wxRect first = row_rect(window, 0);
        const ink_t body =
            ink_in(test::picture_of(*window.frame()), wxRect(first.x - 12, first.y - 18, 30, 12));
        EXPECT_GE(body.contrast, 4.5);
    }
}

namespace {

void set_direction(test::log_window_t& window, wxLayoutDirection direction)
{
    for (wxWindow* at : {static_cast<wxWindow*>(window.frame()), static_cast<wxWindow*>(&window.control()),
                         window.log().GetWindow()})
        at->SetLayoutDirection(direction);
    wx_helpers1::ui_settings_t::get()->changed().emit();
    test::settle();
}

// Where the log's window lies in its frame's picture; a mirrored one counts from its right edge.
wxRect view_in_picture(test::log_window_t& window)
{
    wxWindow* view = window.log().GetWindow();
    const wxSize size = view->GetClientSize();
    wxPoint corner = view->ClientToScreen(wxPoint(0, 0));
    corner.x = std::min(corner.x, view->ClientToScreen(wxPoint(size.x, 0)).x);
    return wxRect(corner - window.frame()->GetScreenRect().GetPosition(), size);
}

const wxLayoutDirection both_directions[] = {wxLayout_LeftToRight, wxLayout_RightToLeft};

} // namespace

// Text without blanks must not run out of the window, in bodies and in rows.
TEST(InplacePictures, every_script_wraps_inside_the_window)
{
    const auto repeated = [](const char* part, int count) {
        std::string text;
        for (int i = 0; i < count; ++i)
            text += part;
        return text;
    };
    const std::string texts[] = {repeated("とても長い文章", 20), repeated("w", 150), repeated("ทดสอบ", 40),
                                 repeated("क्षत्रियों का", 20), repeated("/مجلد/file", 20)};
    for (const auto direction : both_directions)
        for (const std::string& text : texts) {
            SCOPED_TRACE(text.substr(0, 30) + (direction == wxLayout_RightToLeft ? ", mirrored" : ""));
            test::log_window_t window;
            set_direction(window, direction);
            window.frame()->SetClientSize(300, 600);
            const auto tag = window->add_message(test::make_message("c", "<b>" + text + "</b>"), {});
            const auto height = [&] { return window.log().GetState().height; };
            test::settle();
            const std::int64_t body = height();
            window->get_messenger(tag)->say(sev_none, text.c_str());
            window->get_messenger(tag)->say(sev_none, "x");
            test::settle();
            const wxRect one = window.log().GetLineRect(window.element(0), 1);
            EXPECT_GT(body, 4 * one.height);
            EXPECT_GE(height() - body, 4 * one.height);
            const wxImage picture = test::picture_of(*window.frame());
            const wxRect view = view_in_picture(window);
            const wxRect inner = wxRect(view).Deflate(2); // newer versions of the toolkit draw a frame
            for (const int edge : {inner.x, inner.x + inner.width - 2})
                EXPECT_LT(ink_in(picture, wxRect(edge, inner.y, 2, inner.height)).contrast, 1.1) << edge;
        }
}

TEST(InplacePictures, a_drag_selects_what_is_under_the_pointer)
{
    const std::string latin = "a row that is read from left to right", hebrew = "שורה שנקראת מימין לשמאל";
    for (const auto direction : both_directions) {
        test::log_window_t window;
        set_direction(window, direction);
        const auto tag = window->add_message(test::make_message("c"), {});
        for (const std::string& row : {latin, hebrew})
            window->get_messenger(tag)->say(sev_none, row.c_str());
        test::settle();
        window.focus();
        const wxImage picture = test::picture_of(*window.frame());
        for (const bool is_latin : {true, false}) {
            SCOPED_TRACE(testing::Message() << direction << (is_latin ? " latin" : " hebrew"));
            // From the middle of the ink to the right of it, on the screen.
            const wxRect rect =
                in_picture(window, window.log().GetLineRect(window.element(0), is_latin ? 0 : 1));
            const int y = rect.y + rect.height / 2;
            const wxRect view = view_in_picture(window);
            int left = picture.GetWidth(), right = 0;
            for (int x = view.x; x < view.x + view.width; ++x)
                if (ink_in(picture, wxRect(x, rect.y, 1, rect.height)).contrast > 2) {
                    left = std::min(left, x);
                    right = std::max(right, x);
                }
            const wxPoint corner = window.frame()->GetScreenRect().GetPosition();
            ASSERT_LT(left + 50, right);
            test::drag(corner + wxPoint((left + right) / 2, y), corner + wxPoint(right + 4, y));
            const std::string& row = is_latin ? latin : hebrew;
            const std::string selected = window.log().GetSelectedText();
            ASSERT_GT(selected.size(), row.size() / 4);
            ASSERT_LT(selected.size(), row.size() * 3 / 4);
            EXPECT_EQ(is_latin ? row.size() - selected.size() : 0, row.find(selected)) << selected;
        }
    }
}

// Smaller letters would begin below them, and beside larger ones they would be lost.
TEST(InplacePictures, pictures_zoom_with_the_text)
{
    test::log_window_t window;
    const message_t::ptr_t message = test::make_message("caption");
    wxImage square(24, 24);
    square.SetRGB(wxRect(0, 0, 24, 24), 0, 200, 0);
    message->picture = wx_helpers1::wxStaticPicture::from_image(square);
    window->get_messenger(window->add_message(message, {}))->say(sev_error, "line");
    const auto width_of = [&](const auto& is_meant) {
        const wxImage picture = test::picture_of(*window.frame());
        const wxRect view = view_in_picture(window);
        int left = picture.GetWidth(), right = 0;
        for (int x = view.x; x < view.x + view.width / 2; ++x)
            for (int y = view.y; y < view.y + view.height; ++y)
                if (is_meant(colour_at(picture, x, y)))
                    left = std::min(left, x), right = std::max(right, x + 1);
        return right - left;
    };
    const auto is_square = [](const wxColour& c) {
        return c.Green() > c.Red() + 60 && c.Green() > c.Blue() + 60;
    };
    const auto is_error = [](const wxColour& c) {
        return c.Red() > c.Green() + 60 && c.Red() > c.Blue() + 60;
    };
    for (const int zoom : {100, 50, 300}) {
        window->set_view({inplace_ctrl_t::view_t::no_times, true, false, zoom, false});
        test::settle();
        EXPECT_NEAR(24 * zoom / 100, width_of(is_square), 2) << zoom;
        EXPECT_NEAR(12 * zoom / 100, width_of(is_error), 2) << zoom;
    }
}
