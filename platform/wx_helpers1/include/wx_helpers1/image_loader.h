#pragma once

#include "wx_helpers1/export.h"
#include "wx_helpers1/picture.h"

#include <memory>
#include <string>

namespace wx_helpers1 {

/// Reads pictures and animations by name from an image resource: an XML file of `wxBitmap` and `wxAnimation`
/// objects whose content names SVG members of the same archive.
///
///     <object class="wxBitmap" name="error24" size="24,24">pictures/error24.svg</object>
///     <object class="wxAnimation" name="progress" size="24,24" delay="80">
///       <frame>pictures/progress_00.svg</frame> ...
///     </object>
///
/// The list is read at the first picture asked for, each drawing when it is needed; what fails is tried
/// again. GUI thread.
class WX_HELPERS1_EXPORT image_loader_t
{
public:
    /// @param resource_file "<archive>#zip:<member>"
    explicit image_loader_t(const std::string& resource_file);
    ~image_loader_t();
    image_loader_t(const image_loader_t&) = delete;
    image_loader_t& operator=(const image_loader_t&) = delete;

    /// An empty picture when there is none of that name, or it cannot be read.
    wxStaticPicture load_static_picture(const std::string& name);
    /// The same with an animation.
    wxAnimation load_animation(const std::string& name);

private:
    struct impl_t;
    std::unique_ptr<impl_t> m_impl;
};

} // namespace wx_helpers1
