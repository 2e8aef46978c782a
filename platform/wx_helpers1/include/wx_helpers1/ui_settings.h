#pragma once

#include "wx_helpers1/export.h"

#include <gen_helpers2/signal.h>

#include <wx/colour.h>
#include <wx/font.h>

#include <memory>

class wxWindow;

namespace wx_helpers1 {

/// Numbers of the fonts, colours and metrics that the settings answer for.
struct ui_font
{
    /// For ui_settings_t::get_font().
    enum number_t
    {
        text = 1,
        bold = 2
    };
};

/// Numbers of colours.
struct ui_colour
{
    /// For ui_settings_t::get_colour().
    enum number_t
    {
        border = 3,
        background = 5,
        text = 7,
        secondary_text = 8,
        error = 12,
        warning = 13,
        notice_text = 23,
        notice_background = 24
    };
};

/// Numbers of lengths.
struct ui_metric
{
    /// For ui_settings_t::get_metric().
    enum number_t
    {
        window_border = 5
    };
};

/// Which form of the theme is asked for.
enum class theme_t
{
    system, ///< what the desktop says
    light,  ///< its light form
    dark    ///< its dark form
};

/// The look of the product's windows, taken from the running theme: fonts, colours, metrics, and a signal
/// when any of them changes while windows are open.
///
/// Use it for everything that a window draws or colours itself; leave alone what the toolkit's own controls
/// draw. Text colours keep a contrast of at least 4.5:1 on their background in every theme, light, dark or
/// high-contrast.
///
///     wx_helpers1::ui_settings_t::initialize();                        // the host, once the toolkit runs
///     label->SetFont(ui_settings_t::get()->get_font(ui_font::bold));
///     ui_settings_t::get()->changed().connect(this, &my_panel_t::on_ui_changed);
///
/// GUI thread. An unknown number answers with the text font, the text colour, or 0.
class WX_HELPERS1_EXPORT ui_settings_t
{
public:
    /// Makes the single instance from the running theme; calling it again changes nothing.
    static void initialize();
    /// Forgets the instance; before the toolkit ends.
    static void shutdown();
    /// The instance, or null before initialize() and after shutdown().
    static ui_settings_t* get();

    ~ui_settings_t();
    ui_settings_t(const ui_settings_t&) = delete;
    ui_settings_t& operator=(const ui_settings_t&) = delete;

    wxFont get_font(int number) const;
    /// The average width of the font's characters, in pixels; at least 1.
    int get_char_width(int number) const;
    /// One of ui_colour's numbers, as the theme has it now.
    wxColour get_colour(int number) const;
    /// The same as get_colour().
    /// @since 3.1
    wxColour get_color(int number) const { return get_colour(number); }
    /// In pixels.
    int get_metric(int number) const;
    bool is_dark() const;
    /// False when the user asked the desktop for no animations.
    bool animations_enabled() const;

    /// How much larger texts are than usual, in quarters; at least 1. What stands beside texts and is drawn
    /// grows with them.
    /// @since 3.1
    double get_text_scale() const;
    /// How often the look has changed: what was measured at another count is out of date.
    /// @since 3.1
    int get_change_count() const;

    /// Raised once a change of theme, font or scale is in force; read everything again then.
    gen_helpers2::signal_t<>& changed();
    /// Raised after it, when all that is in windows has the new look: they fit themselves to it then.
    /// @since 3.1
    gen_helpers2::signal_t<>& settled();

    /// Puts the process into the light or the dark form of its theme. `changed()` follows.
    void set_theme(theme_t theme);

private:
    friend WX_HELPERS1_EXPORT void set_font(wxWindow* window, const wxFont& font);

    ui_settings_t();
    struct impl_t;
    std::unique_ptr<impl_t> m_impl;
};

/// Gives the window the face and the size of a font; it keeps its own slant and weight, such as a bold label
/// has from its layout.
WX_HELPERS1_EXPORT void apply_font(wxWindow* window, const wxFont& font);

/// Gives a text field of one line the height that the theme wants for it, as its least one; nothing for any
/// other window. The toolkit derives the height from the one that the field has at the moment: too low before
/// it is shown, and higher each time it is asked afterwards.
WX_HELPERS1_EXPORT void apply_native_height(wxWindow* window);

/// The window's SetFont(), without what that costs on a label that never had a font of its own.
WX_HELPERS1_EXPORT void set_font(wxWindow* window, const wxFont& font);

/// The contrast ratio of two opaque colours, from 1 to 21, as accessibility guidelines define it.
WX_HELPERS1_EXPORT double contrast_ratio(const wxColour& a, const wxColour& b);

/// The colour nearest to `wanted` that reaches the ratio on `background`, by mixing in black or white.
WX_HELPERS1_EXPORT wxColour readable_colour(const wxColour& wanted, const wxColour& background,
                                            double ratio = 4.5);

} // namespace wx_helpers1
