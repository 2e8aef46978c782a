#include "commondlg3/image_loader.h"

#include "commondlg3/resources.h"

namespace commondlg3 {

image_loader_t& image_loader_t::get()
{
    static image_loader_t the_loader;
    return the_loader;
}

image_loader_t::image_loader_t()
    : m_loader(create_resource_filename("commondlg3.dat", "commondlg_images.xrc"))
{
    create_image_names_map();
    create_animation_names_map();
}

void image_loader_t::create_image_names_map()
{
    using type = image_type_t;
    m_image_names = {
        {type::advanced_close, "advanced_close"},
        {type::advanced_close_hovered, "advanced_close_hovered"},
        {type::advanced_close_pressed, "advanced_close_pressed"},
        {type::advanced_close_disabled, "advanced_close_disabled"},
        {type::advanced_open, "advanced_open"},
        {type::advanced_open_hovered, "advanced_open_hovered"},
        {type::advanced_open_pressed, "advanced_open_pressed"},
        {type::advanced_open_disabled, "advanced_open_disabled"},
        {type::up, "up"},
        {type::down, "down"},
        {type::cross, "cross"},
        {type::error12, "error12"},
        {type::warning12, "warning12"},
        {type::info12, "info12"},
        {type::empty12, "empty12"},
        {type::severity_critical, "severity_critical"},
        {type::severity_error, "severity_error"},
        {type::severity_warn, "severity_warn"},
        {type::severity_info, "severity_info"},
        {type::error24, "error24"},
        {type::warning24, "warning24"},
        {type::checkmark24, "checkmark24"},
        {type::info24, "info24"},
        {type::scroll_left_normal, "scroll_left_normal"},
        {type::scroll_left_hover, "scroll_left_hover"},
        {type::scroll_left_pressed, "scroll_left_pressed"},
        {type::scroll_left_disabled, "scroll_left_disabled"},
        {type::scroll_right_normal, "scroll_right_normal"},
        {type::scroll_right_hover, "scroll_right_hover"},
        {type::scroll_right_pressed, "scroll_right_pressed"},
        {type::scroll_right_disabled, "scroll_right_disabled"},
        {type::advanced_cb_close, "advanced_cb_close"},
        {type::advanced_cb_close_hovered, "advanced_cb_close_hovered"},
        {type::advanced_cb_close_pressed, "advanced_cb_close_pressed"},
        {type::advanced_cb_close_disabled, "advanced_cb_close_disabled"},
        {type::advanced_cb_open, "advanced_cb_open"},
        {type::advanced_cb_open_hovered, "advanced_cb_open_hovered"},
        {type::advanced_cb_open_pressed, "advanced_cb_open_pressed"},
        {type::advanced_cb_open_disabled, "advanced_cb_open_disabled"},
    };
}

void image_loader_t::create_animation_names_map()
{
    m_animation_names = {{animation_type_t::progress, "progress"}};
}

wx_helpers1::wxStaticPicture image_loader_t::load_image(image_type_t type)
{
    const auto cached = m_images.find(type);
    if (cached != m_images.end())
        return cached->second;
    const auto name = m_image_names.find(type);
    if (name == m_image_names.end())
        return {};
    const auto picture = m_loader.load_static_picture(name->second);
    // An empty picture is not kept: the archive may be there next time.
    if (!picture.is_empty())
        m_images[type] = picture;
    return picture;
}

wx_helpers1::wxAnimation image_loader_t::load_animation(animation_type_t type)
{
    const auto name = m_animation_names.find(type);
    return name != m_animation_names.end() ? m_loader.load_animation(name->second)
                                           : wx_helpers1::wxAnimation();
}

} // namespace commondlg3
