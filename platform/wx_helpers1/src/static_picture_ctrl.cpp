#include "wx_helpers1/static_picture_ctrl.h"

#include "wx_helpers1/accessibility.h"
#include "wx_helpers1/tooltip.h"
#include "wx_helpers1/ui_settings.h"

#include <algorithm>

namespace wx_helpers1 {

static_picture_ctrl_t::static_picture_ctrl_t(wxWindow* parent, wxWindowID id)
{
    Create(parent, id);
}

bool static_picture_ctrl_t::Create(wxWindow* parent, wxWindowID id)
{
    if (!wxStaticBitmap::Create(parent, id, wxBitmapBundle()))
        return false;
    set_accessible_role(this, accessible_role_t::image);
    m_timer.SetOwner(this);
    Bind(
        wxEVT_TIMER,
        [this](wxTimerEvent&) {
            ++m_frame;
            show_frame();
        },
        m_timer.GetId());
    if (ui_settings_t* settings = ui_settings_t::get())
        settings->changed().connect(this, [this] {
            show_frame();
            start_or_stop();
        });
    return true;
}

void static_picture_ctrl_t::set_picture(const picture_t& picture)
{
    m_picture = picture;
    m_frame = 0;
    show_frame();
    start_or_stop();
}

void static_picture_ctrl_t::set_description(const std::string& text)
{
    set_accessible_name(this, text);
    SetTooltip(this, text);
}

void static_picture_ctrl_t::show_frame()
{
    const bool moving = m_picture.is_animation() && !m_picture.is_empty();
    SetBitmap(moving ? m_picture.get_animation().get_frame(m_frame).get_bundle()
                     : m_picture.get_still().get_bundle());
}

void static_picture_ctrl_t::start_or_stop()
{
    const ui_settings_t* settings = ui_settings_t::get();
    const bool moves = m_picture.is_animation() && m_picture.get_animation().get_frame_count() > 1 &&
                       (!settings || settings->animations_enabled());
    if (moves && !m_timer.IsRunning())
        m_timer.Start(std::max(20, m_picture.get_animation().get_delay()));
    else if (!moves)
        m_timer.Stop();
}

} // namespace wx_helpers1
