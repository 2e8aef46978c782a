#pragma once

#include "wx_helpers1/export.h"
#include "wx_helpers1/picture.h"

#include <gen_helpers2/signal.h>

#include <wx/statbmp.h>
#include <wx/timer.h>

#include <string>

namespace wx_helpers1 {

/// A control that shows a picture_t: a still picture, or an animation, which it runs while it is shown.
///
/// In a resource it is `<object class="static_picture_ctrl_t" name="m_icon"/>`. It follows the theme's ink,
/// and stands still when the desktop wants no animations. Give it a description: a picture alone says nothing
/// to a screen reader. GUI thread.
class WX_HELPERS1_EXPORT static_picture_ctrl_t : public wxStaticBitmap, public gen_helpers2::subscriber_base_t
{
public:
    static_picture_ctrl_t() = default;
    static_picture_ctrl_t(wxWindow* parent, wxWindowID id);
    /// The second step of what was made without arguments.
    bool Create(wxWindow* parent, wxWindowID id);

    /// Shows another picture, an animation from its beginning.
    void set_picture(const picture_t& picture);
    const picture_t& get_picture() const { return m_picture; }
    /// What the picture says, for screen readers and as the tool tip.
    void set_description(const std::string& text);

private:
    void show_frame();
    void start_or_stop();

    picture_t m_picture;
    wxTimer m_timer;
    std::size_t m_frame = 0;
};

} // namespace wx_helpers1
