#include "icon_type.h"

#include "commondlg3/image_loader.h"

#include <cpil/catalog.h>
#include <gen_helpers2/assertion.h>

#include <iterator>

namespace commondlg3 {
namespace {

using CPIL_2_18::i18n::catalog_key;
using image = image_loader_t::image_type_t;

constexpr char icon_type_unit[] = "message_window";

// In the order of icon_types_t; progress has an animation in place of a picture.
constexpr struct
{
    icon_type_t texts;
    image picture;
} types[] = {
    {{catalog_key("message_window.title.error"), catalog_key("severity.error")}, image::error24},
    {{catalog_key("message_window.title.warning"), catalog_key("severity.warning")}, image::warning24},
    {{catalog_key("message_window.title.success"), catalog_key("severity.success")}, image::checkmark24},
    {{catalog_key("message_window.title.information"), catalog_key("severity.information")}, image::info24},
    {{catalog_key("message_window.title.progress"), catalog_key("severity.progress")}, image::info24},
};

bool is_known(message_window_t::icon_types_t type)
{
    return static_cast<int>(type) >= 0 && static_cast<std::size_t>(type) < std::size(types);
}

} // namespace

const icon_type_t& icon_type_of(message_window_t::icon_types_t type)
{
    return types[is_known(type) ? static_cast<std::size_t>(type) : 0].texts;
}

wx_helpers1::picture_t message_window_t::get_icon_by_type(icon_types_t type)
{
    if (!is_known(type)) {
        GH2_ASSERT_TEXT(false, "unsupported picture type", icon_type_unit);
        return {};
    }
    image_loader_t& loader = image_loader_t::get();
    if (type == icon_types_t::progress)
        return loader.load_animation(image_loader_t::animation_type_t::progress);
    return loader.load_image(types[static_cast<std::size_t>(type)].picture);
}

} // namespace commondlg3
