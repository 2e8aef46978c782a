/// @file
/// Pictures as values: cheap to copy, sharp at any scale, in the theme's ink.
#pragma once

#include "wx_helpers1/export.h"

#include <wx/bmpbndl.h>
#include <wx/colour.h>
#include <wx/image.h>

#include <memory>
#include <string>
#include <variant>
#include <vector>

namespace wx_helpers1 {

/// A still picture: a vector drawing, or an image of pixels. Copies share the data. An empty one draws
/// nothing.
///
///     const wxStaticPicture picture = wxStaticPicture::from_svg(bytes, wxSize(24, 24));
///     control->SetBitmap(picture.get_bundle());
///
/// In a drawing the colour `currentColor` stands for the ink, by default the theme's text colour: ask for the
/// bundle again after ui_settings_t::changed(). GUI thread.
class WX_HELPERS1_EXPORT wxStaticPicture
{
public:
    wxStaticPicture() = default;
    /// @param size in pixels, at the usual size of texts. A drawing that cannot be read gives an empty picture.
    static wxStaticPicture from_svg(const std::string& svg, const wxSize& size);
    /// Of pixels, which are not sharp at other scales.
    static wxStaticPicture from_image(const wxImage& image);

    bool is_empty() const { return !m_data; }
    /// In pixels, a drawing's at the present size of texts; (0, 0) when empty.
    wxSize get_size() const;
    /// The picture for a control, of that size; an invalid `ink` is the theme's text colour.
    wxBitmapBundle get_bundle(const wxColour& ink = wxColour()) const;
    /// The pixels at the usual size of texts; with false, laid on the theme's background instead of keeping their
    /// transparency.
    wxImage getImage(bool keep_alpha) const;
    /// True when both are the same picture, not merely alike.
    bool is_same(const wxStaticPicture& other) const { return m_data == other.m_data; }

private:
    struct data_t;
    std::shared_ptr<data_t> m_data;
};

/// Drawings shown one after another, for ever.
class WX_HELPERS1_EXPORT wxAnimation
{
public:
    wxAnimation() = default;
    /// @param delay of each frame, in milliseconds
    wxAnimation(std::vector<wxStaticPicture> frames, int delay) : m_frames(std::move(frames)), m_delay(delay)
    {
    }

    bool is_empty() const { return m_frames.empty(); }
    std::size_t get_frame_count() const { return m_frames.size(); }
    /// Counted on from the beginning behind the last; there must be one.
    const wxStaticPicture& get_frame(std::size_t index) const { return m_frames.at(index % m_frames.size()); }
    int get_delay() const { return m_delay; }

private:
    std::vector<wxStaticPicture> m_frames;
    int m_delay = 100;
};

/// Either a still picture, or an animation, or nothing.
class WX_HELPERS1_EXPORT picture_t
{
public:
    picture_t() = default;
    picture_t(const wxStaticPicture& still) : m_value(still) {}
    picture_t(const wxAnimation& animation) : m_value(animation) {}

    bool is_empty() const;
    bool is_still() const { return std::holds_alternative<wxStaticPicture>(m_value); }
    bool is_animation() const { return std::holds_alternative<wxAnimation>(m_value); }
    /// The still picture, or the first frame of the animation.
    wxStaticPicture get_still() const;
    /// Empty when the picture is a still one.
    wxAnimation get_animation() const;

private:
    std::variant<std::monostate, wxStaticPicture, wxAnimation> m_value;
};

} // namespace wx_helpers1
