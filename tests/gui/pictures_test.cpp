#include "support.h"

#include <commondlg3/image_loader.h>
#include <vdx/caption.h>
#include <wx_helpers1/static_picture_ctrl.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/dcmemory.h>

#include <set>
#include <string>

namespace {

using commondlg3::image_loader_t;
using type_t = image_loader_t::image_type_t;
using wx_helpers1::wxStaticPicture;

constexpr int count = 39;

TEST(Pictures, EveryNameHasADrawingThatIsReadOnce)
{
    image_loader_t& loader = image_loader_t::get();
    std::set<std::string> drawings;
    for (int i = 0; i < count; ++i) {
        const wxStaticPicture picture = loader.load_image(static_cast<type_t>(i));
        ASSERT_FALSE(picture.is_empty()) << i;
        EXPECT_TRUE(picture.is_same(loader.load_image(static_cast<type_t>(i)))) << i;
        const wxImage image = picture.getImage(true);
        EXPECT_EQ(picture.get_size(), image.GetSize());
        const int bytes = image.GetWidth() * image.GetHeight();
        drawings.insert(std::string(reinterpret_cast<char*>(image.GetData()), 3 * bytes) +
                        std::string(reinterpret_cast<char*>(image.GetAlpha()), bytes));
    }
    EXPECT_EQ(std::size_t(count), drawings.size()) << "two names show the same drawing";
    EXPECT_TRUE(loader.load_image(static_cast<type_t>(count)).is_empty());
    EXPECT_EQ(wxSize(12, 12), loader.load_image(type_t::error12).get_size());
    EXPECT_EQ(wxSize(24, 24), loader.load_image(type_t::error24).get_size());

    const auto animation = loader.load_animation(image_loader_t::animation_type_t::progress);
    EXPECT_GT(animation.get_frame_count(), 5u);
    EXPECT_GE(animation.get_delay(), 20);
}

// Share of pixels that stand out from the background.
double visible_share(const wxStaticPicture& picture, const wxColour& ink, const wxColour& back)
{
    const wxSize size = picture.get_size();
    wxBitmap bitmap(size);
    {
        wxMemoryDC dc(bitmap);
        dc.SetBackground(wxBrush(back));
        dc.Clear();
        dc.DrawBitmap(picture.get_bundle(ink).GetBitmap(size), 0, 0, true);
    }
    const wxImage image = bitmap.ConvertToImage();
    int visible = 0;
    for (int y = 0; y < size.y; ++y)
        for (int x = 0; x < size.x; ++x)
            visible +=
                wx_helpers1::contrast_ratio(
                    wxColour(image.GetRed(x, y), image.GetGreen(x, y), image.GetBlue(x, y)), back) >= 3;
    return double(visible) / (size.x * size.y);
}

TEST(Pictures, CanBeSeenOnLightAndDarkInTheThemesInk)
{
    for (int i = 0; i < count; ++i) {
        const auto type = static_cast<type_t>(i);
        const std::set<type_t> faint = {type_t::empty12,
                                        type_t::advanced_close_disabled,
                                        type_t::advanced_open_disabled,
                                        type_t::scroll_left_disabled,
                                        type_t::scroll_right_disabled,
                                        type_t::advanced_cb_close_disabled,
                                        type_t::advanced_cb_open_disabled};
        if (faint.count(type))
            continue;
        const wxStaticPicture picture = image_loader_t::get().load_image(type);
        EXPECT_GT(visible_share(picture, wxColour(46, 52, 54), wxColour(255, 255, 255)), 0.05) << i;
        EXPECT_GT(visible_share(picture, wxColour(238, 238, 236), wxColour(53, 53, 53)), 0.05) << i;
    }
}

TEST(Pictures, AreDrawnAnewAtEachScaleAndKeepTheirColours)
{
    const auto picture = image_loader_t::get().load_image(type_t::error12);
    EXPECT_EQ(wxSize(24, 24), picture.get_bundle().GetBitmap(wxSize(24, 24)).GetSize());
    // Half-transparent white must stay white: the toolkit's renderer alone would give grey.
    const auto half =
        wxStaticPicture::from_svg("<svg xmlns='http://www.w3.org/2000/svg' width='8' height='8'><rect "
                                  "width='8' height='8' fill='#fff' fill-opacity='0.5'/></svg>",
                                  wxSize(8, 8));
    const wxImage image = half.getImage(true);
    EXPECT_GE(int(image.GetRed(4, 4)), 250);
    EXPECT_NEAR(128, int(image.GetAlpha(4, 4)), 3);
    EXPECT_FALSE(half.getImage(false).HasAlpha());
}

TEST(Pictures, AnimationRunsInItsControlAndEndsWithIt)
{
    auto* control = new wx_helpers1::static_picture_ctrl_t(test::main_window(), wxID_ANY);
    control->set_picture(image_loader_t::get().load_animation(image_loader_t::animation_type_t::progress));
    std::set<std::string> seen;
    EXPECT_TRUE(test::wait_for([&] {
        const wxImage frame = control->GetBitmap().ConvertToImage();
        seen.insert(std::string(reinterpret_cast<char*>(frame.GetAlpha()), 24 * 24) +
                    std::string(reinterpret_cast<char*>(frame.GetData()), 3 * 24 * 24));
        return seen.size() >= 3;
    }));
    control->set_picture(image_loader_t::get().load_image(type_t::info24));
    EXPECT_EQ(24, control->GetBitmap().ConvertToImage().GetWidth());
    control->Destroy();
}

} // namespace
