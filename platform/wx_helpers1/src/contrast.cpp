#include "contrast.h"

#include "wx_helpers1/ui_settings.h"

#include <algorithm>
#include <cmath>

namespace wx_helpers1 {
namespace {

double linear(unsigned char channel)
{
    const double c = channel / 255.0;
    return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

double luminance(const wxColour& colour)
{
    return 0.2126 * linear(colour.Red()) + 0.7152 * linear(colour.Green()) + 0.0722 * linear(colour.Blue());
}

} // namespace

wxColour mixed(const wxColour& from, const wxColour& to, double share)
{
    const auto mix = [share](int a, int b) {
        return static_cast<unsigned char>(std::lround(a + (b - a) * share));
    };
    return wxColour(mix(from.Red(), to.Red()), mix(from.Green(), to.Green()), mix(from.Blue(), to.Blue()));
}

double contrast_ratio(const wxColour& a, const wxColour& b)
{
    const double la = luminance(a);
    const double lb = luminance(b);
    return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

wxColour readable_colour(const wxColour& wanted, const wxColour& background, double ratio)
{
    const wxColour black(0, 0, 0);
    const wxColour white(255, 255, 255);
    const wxColour& far_end =
        contrast_ratio(black, background) > contrast_ratio(white, background) ? black : white;
    for (int step = 0; step <= 20; ++step) {
        const wxColour candidate = mixed(wanted, far_end, step / 20.0);
        if (contrast_ratio(candidate, background) >= ratio)
            return candidate;
    }
    return far_end;
}

} // namespace wx_helpers1
