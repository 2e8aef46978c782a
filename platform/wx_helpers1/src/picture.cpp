#include "wx_helpers1/picture.h"

#include "wx_helpers1/ui_settings.h"

#include <algorithm>
#include <map>
#include <utility>

#include <wx/math.h>

namespace wx_helpers1 {
namespace {

constexpr char ink_name[] = "currentColor";

std::string inked(const std::string& svg, const wxColour& ink)
{
    const std::string colour = ink.GetAsString(wxC2S_HTML_SYNTAX).utf8_string();
    std::string result;
    result.reserve(svg.size());
    std::size_t from = 0;
    for (std::size_t at; (at = svg.find(ink_name, from)) != std::string::npos;
         from = at + sizeof(ink_name) - 1) {
        result.append(svg, from, at - from);
        result += colour;
    }
    return result.append(svg, from, std::string::npos);
}

// The toolkit's line that Debian 12 ships multiplies the colours of a rendered drawing by their alpha,
// which its own bitmaps do not expect: half-transparent white comes out grey. Found out once, by drawing
// just that.
bool toolkit_premultiplies()
{
    static const bool premultiplies = [] {
        const char svg[] = "<svg xmlns='http://www.w3.org/2000/svg' width='4' height='4'>"
                           "<rect width='4' height='4' fill='#ffffff' fill-opacity='0.5'/></svg>";
        const auto bundle = wxBitmapBundle::FromSVG(svg, wxSize(4, 4));
        const wxImage image = bundle.GetBitmap(wxSize(4, 4)).ConvertToImage();
        return image.IsOk() && image.HasAlpha() && image.GetRed(1, 1) < 200;
    }();
    return premultiplies;
}

wxBitmap with_plain_colours(const wxBitmap& bitmap)
{
    wxImage image = bitmap.ConvertToImage();
    if (!image.IsOk() || !image.HasAlpha())
        return bitmap;
    unsigned char* rgb = image.GetData();
    const unsigned char* alpha = image.GetAlpha();
    const int pixels = image.GetWidth() * image.GetHeight();
    for (int i = 0; i < pixels; ++i)
        if (alpha[i] != 0)
            for (int c = 0; c < 3; ++c)
                rgb[3 * i + c] = static_cast<unsigned char>(
                    std::min(255, (rgb[3 * i + c] * 255 + alpha[i] / 2) / alpha[i]));
    return wxBitmap(image);
}

// A drawing at every scale, with its colours as they were drawn.
class drawing_t : public wxBitmapBundleImpl
{
public:
    explicit drawing_t(const wxBitmapBundle& rendered) : m_rendered(rendered) {}

    wxSize GetDefaultSize() const override { return m_rendered.GetDefaultSize(); }
    wxSize GetPreferredBitmapSizeAtScale(double scale) const override
    {
        return m_rendered.GetDefaultSize() * scale;
    }
    wxBitmap GetBitmap(const wxSize& size) override
    {
        wxBitmap& bitmap = m_bitmaps[{size.x, size.y}];
        if (!bitmap.IsOk())
            bitmap = with_plain_colours(m_rendered.GetBitmap(size));
        return bitmap;
    }

private:
    wxBitmapBundle m_rendered;
    std::map<std::pair<int, int>, wxBitmap> m_bitmaps;
};

wxBitmapBundle draw(const std::string& svg, const wxSize& size)
{
    const auto bundle =
        wxBitmapBundle::FromSVG(reinterpret_cast<const wxByte*>(svg.data()), svg.size(), size);
    return bundle.IsOk() && toolkit_premultiplies() ? wxBitmapBundle::FromImpl(new drawing_t(bundle))
                                                    : bundle;
}

wxColour default_ink()
{
    const ui_settings_t* settings = ui_settings_t::get();
    return settings ? settings->get_colour(ui_colour::text) : wxColour(0, 0, 0);
}

} // namespace

struct wxStaticPicture::data_t
{
    std::string svg;
    wxSize size;
    wxBitmapBundle pixels;                                        // of a picture made from an image
    std::map<std::pair<unsigned int, int>, wxBitmapBundle> drawn; // already, by ink and width

    wxSize shown_size() const
    {
        const ui_settings_t* settings = ui_settings_t::get();
        const double scale = settings && !svg.empty() ? settings->get_text_scale() : 1;
        return wxSize(wxRound(size.x * scale), wxRound(size.y * scale));
    }
};

wxStaticPicture wxStaticPicture::from_svg(const std::string& svg, const wxSize& size)
{
    wxStaticPicture picture;
    if (size.x > 0 && size.y > 0 && draw(svg, size).IsOk()) {
        picture.m_data = std::make_shared<data_t>();
        picture.m_data->svg = svg;
        picture.m_data->size = size;
    }
    return picture;
}

wxStaticPicture wxStaticPicture::from_image(const wxImage& image)
{
    wxStaticPicture picture;
    if (image.IsOk()) {
        picture.m_data = std::make_shared<data_t>();
        picture.m_data->size = image.GetSize();
        picture.m_data->pixels = wxBitmapBundle::FromImage(image);
    }
    return picture;
}

wxSize wxStaticPicture::get_size() const
{
    return m_data ? m_data->shown_size() : wxSize(0, 0);
}

wxBitmapBundle wxStaticPicture::get_bundle(const wxColour& ink) const
{
    if (!m_data)
        return wxBitmapBundle();
    if (m_data->svg.empty())
        return m_data->pixels;
    const wxColour colour = ink.IsOk() ? ink : default_ink();
    const wxSize size = m_data->shown_size();
    wxBitmapBundle& bundle = m_data->drawn[{colour.GetRGB(), size.x}];
    if (!bundle.IsOk())
        bundle = draw(inked(m_data->svg, colour), size);
    return bundle;
}

wxImage wxStaticPicture::getImage(bool keep_alpha) const
{
    if (!m_data)
        return wxImage();
    wxImage image = get_bundle().GetBitmap(m_data->size).ConvertToImage();
    if (!keep_alpha && image.HasAlpha()) {
        const ui_settings_t* settings = ui_settings_t::get();
        const wxColour back = settings ? settings->get_colour(ui_colour::background) : *wxWHITE;
        unsigned char* rgb = image.GetData();
        const unsigned char* alpha = image.GetAlpha();
        const int pixels = image.GetWidth() * image.GetHeight();
        const unsigned char under[] = {back.Red(), back.Green(), back.Blue()};
        for (int i = 0; i < pixels; ++i)
            for (int c = 0; c < 3; ++c)
                rgb[3 * i + c] = static_cast<unsigned char>(
                    (rgb[3 * i + c] * alpha[i] + under[c] * (255 - alpha[i]) + 127) / 255);
        image.ClearAlpha();
    }
    return image;
}

bool picture_t::is_empty() const
{
    if (const auto* still = std::get_if<wxStaticPicture>(&m_value))
        return still->is_empty();
    if (const auto* animation = std::get_if<wxAnimation>(&m_value))
        return animation->is_empty();
    return true;
}

wxStaticPicture picture_t::get_still() const
{
    if (const auto* still = std::get_if<wxStaticPicture>(&m_value))
        return *still;
    if (const auto* animation = std::get_if<wxAnimation>(&m_value))
        return animation->is_empty() ? wxStaticPicture() : animation->get_frame(0);
    return {};
}

wxAnimation picture_t::get_animation() const
{
    const auto* animation = std::get_if<wxAnimation>(&m_value);
    return animation ? *animation : wxAnimation();
}

} // namespace wx_helpers1
