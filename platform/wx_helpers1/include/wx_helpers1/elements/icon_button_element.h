#pragma once

#include "wx_helpers1/elements/element.h"
#include "wx_helpers1/picture.h"

#include <gen_helpers2/signal.h>

#include <array>
#include <string>

namespace wx_helpers1 {

/// A button that is a picture for each of its states. GUI thread.
class WX_HELPERS1_EXPORT icon_button_element_t : public element_t
{
public:
    /// @param states element_state's flags: all of these get the picture. A state without one shows the
    /// normal picture.
    void set_picture(int states, const wxStaticPicture& picture);

    /// What a screen reader calls it.
    void set_name(const std::string& name);
    /// Says that the button opens and closes something, and which of both it has done.
    void set_expanded(bool expanded);
    /// Marks the focus around more than the picture.
    void set_focus_rect(const wxRect& rect);

    /// Raised when it is operated, by mouse, keyboard or a screen reader.
    gen_helpers2::signal_t<>& clicked() { return m_clicked; }

    bool is_active() const override { return true; }
    void activate() override;
    /// The size of the normal picture.
    wxSize get_best_size() const override;
    wxRect get_focus_rect() const override;
    element_description_t describe() const override { return m_description; }

protected:
    void draw(wxDC& dc, wxWindow& window) const override;

private:
    static constexpr std::size_t states = 4;

    std::array<wxStaticPicture, states> m_pictures;
    element_description_t m_description;
    wxRect m_focus_rect;
    gen_helpers2::signal_t<> m_clicked;
};

} // namespace wx_helpers1
