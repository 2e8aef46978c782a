#pragma once

#include "commondlg3/export.h"

#include <wx_helpers1/image_loader.h>
#include <wx_helpers1/picture.h>

#include <map>

namespace commondlg3 {

/// The single source of the library's pictures, each read once a process.
///
///     icon->set_picture(image_loader_t::get().load_image(image_loader_t::image_type_t::error24));
///
/// Not for a product's own pictures, which have a resource of their own. GUI thread. A picture that the
/// resource lacks is an empty one.
class COMMONDLG3_EXPORT image_loader_t
{
public:
    /// Named as the objects of the image resource; the values count from 0.
    enum image_type_t : int
    {
        advanced_close,
        advanced_close_hovered,
        advanced_close_pressed,
        advanced_close_disabled,
        advanced_open,
        advanced_open_hovered,
        advanced_open_pressed,
        advanced_open_disabled,
        up,
        down,
        cross,
        error12,
        warning12,
        info12,
        empty12,
        severity_critical,
        severity_error,
        severity_warn,
        severity_info,
        error24,
        warning24,
        checkmark24,
        info24,
        scroll_left_normal,
        scroll_left_hover,
        scroll_left_pressed,
        scroll_left_disabled,
        scroll_right_normal,
        scroll_right_hover,
        scroll_right_pressed,
        scroll_right_disabled,
        advanced_cb_close,
        advanced_cb_close_hovered,
        advanced_cb_close_pressed,
        advanced_cb_close_disabled,
        advanced_cb_open,
        advanced_cb_open_hovered,
        advanced_cb_open_pressed,
        advanced_cb_open_disabled
    };

    /// The animations that there are.
    enum animation_type_t : int
    {
        progress
    };

    /// The one of the process, made when it is first asked for.
    static image_loader_t& get();

    /// Kept from the first call on. An unknown number gives an empty one.
    wx_helpers1::wxStaticPicture load_image(image_type_t type);
    /// An unknown number gives an empty one.
    wx_helpers1::wxAnimation load_animation(animation_type_t type);

protected:
    image_loader_t();
    /// Fills the table of names; the constructor's affair.
    void create_image_names_map();
    /// The same for animations.
    void create_animation_names_map();

private:
    wx_helpers1::image_loader_t m_loader;
    std::map<image_type_t, const char*> m_image_names;
    std::map<animation_type_t, const char*> m_animation_names;
    std::map<image_type_t, wx_helpers1::wxStaticPicture> m_images;
};

} // namespace commondlg3
