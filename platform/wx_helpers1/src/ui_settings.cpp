#include "wx_helpers1/ui_settings.h"

#include "wx_helpers1/guarded.h"

#include "accessible_actions.h"
#include "accessible_focus.h"
#include "button_presses.h"
#include "contrast.h"
#include "least_sizes.h"
#include "popup_repairs.h"
#include "spare_layouts.h"
#include "user_requests.h"

#include <wx/event.h>
#include <wx/fontutil.h>
#include <wx/settings.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/window.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <string>

namespace wx_helpers1 {
namespace {

// The theme's named colours, read from a window of our own that is never shown: the toolkit's own colour
// functions keep what they read first.
class theme_reader_t
{
public:
    theme_reader_t() : m_window(gtk_window_new(GTK_WINDOW_POPUP)) {}
    ~theme_reader_t() { gtk_widget_destroy(m_window); }
    theme_reader_t(const theme_reader_t&) = delete;
    theme_reader_t& operator=(const theme_reader_t&) = delete;

    wxColour colour(const char* name, const wxColour& otherwise) const
    {
        GdkRGBA rgba;
        if (!gtk_style_context_lookup_color(gtk_widget_get_style_context(m_window), name, &rgba) ||
            rgba.alpha < 0.99)
            return otherwise;
        return wxColour(rgba);
    }

    wxFont font() const
    {
        PangoFontDescription* description = nullptr;
        gtk_style_context_get(gtk_widget_get_style_context(m_window), GTK_STATE_FLAG_NORMAL, "font",
                              &description, nullptr);
        if (!description)
            return wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT);
        char* text = pango_font_description_to_string(description);
        const wxFont font(wxString::FromUTF8(text));
        g_free(text);
        pango_font_description_free(description);
        return font.IsOk() ? font : wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT);
    }

    // As a label lays it out: a device context of the toolkit loads the font a second time.
    int text_width(const char* text, const wxFont& font) const
    {
        PangoLayout* layout = gtk_widget_create_pango_layout(m_window, text);
        pango_layout_set_font_description(layout, font.GetNativeFontInfo()->description);
        int width = 0;
        pango_layout_get_pixel_size(layout, &width, nullptr);
        g_object_unref(layout);
        return width;
    }

private:
    GtkWidget* m_window;
};

const char* const watched_properties[] = {"notify::gtk-theme-name",
                                          "notify::gtk-application-prefer-dark-theme",
                                          "notify::gtk-font-name", "notify::gtk-xft-dpi"};

std::unique_ptr<ui_settings_t>& instance()
{
    static std::unique_ptr<ui_settings_t> the_instance;
    return the_instance;
}

// Some themes set the headers of lists in a grey that is hard to read. And they let sizes change slowly,
// such as the inner border of a button once it has a label, or a field's letters with the desktop's font:
// what is measured before that is over would get too little room.
void mend_theme()
{
    GdkScreen* screen = gdk_screen_get_default();
    if (!screen)
        return;
    GtkCssProvider* provider = gtk_css_provider_new();
    gtk_css_provider_load_from_data(provider,
                                    "treeview.view header button { color: @theme_fg_color; }"
                                    "* { transition-property: background-color, background-image, "
                                    "border-color, box-shadow, color; }",
                                    -1, nullptr);
    gtk_style_context_add_provider_for_screen(screen, GTK_STYLE_PROVIDER(provider),
                                              GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    g_object_unref(provider);
}

// A changed style comes into force with the next frame, and in a window that is not seen, with none. What is
// measured before that would be measured with the old fonts.
void renew_styles(GtkWidget* widget, gpointer)
{
    g_signal_emit_by_name(widget, "style-updated");
    if (GTK_IS_CONTAINER(widget))
        gtk_container_forall(GTK_CONTAINER(widget), renew_styles, nullptr);
}

void renew_all_styles()
{
    GList* windows = gtk_window_list_toplevels();
    for (GList* at = windows; at; at = at->next)
        g_object_ref(at->data); // whatever the others' signals do
    for (GList* at = windows; at; at = at->next)
        renew_styles(GTK_WIDGET(at->data), nullptr);
    g_list_free_full(windows, g_object_unref);
}

// A window keeps the font that it was once asked for, as if it had been given it.
void forget_font(const wxWindowList& windows, const wxFont& font)
{
    for (wxWindow* window : windows) {
        if (window->GetFont() == font)
            window->SetFont(wxNullFont);
        forget_font(window->GetChildren(), font);
    }
}

void forget_best_sizes(const wxWindowList& windows)
{
    for (wxWindow* window : windows) {
        window->InvalidateBestSize();
        forget_best_sizes(window->GetChildren());
    }
}

// A host's own windows know nothing of the change; ours fit themselves later.
void lay_out(const wxWindowList& windows)
{
    for (wxWindow* window : windows) {
        if (window->GetSizer() && window->IsShown())
            window->Layout();
        lay_out(window->GetChildren());
    }
}

// How much larger the letters are than those for which pictures are drawn; in quarters, as drawings look
// better at some sizes than at others.
double find_text_scale(const wxFont& font)
{
    constexpr double usual_pixels = 11.0 * 96 / 72;
    GdkScreen* screen = gdk_screen_get_default();
    const double resolution = screen ? gdk_screen_get_resolution(screen) : -1;
    const double pixels = font.GetFractionalPointSize() * (resolution > 0 ? resolution : 96) / 72;
    return std::clamp(std::round(4 * pixels / usual_pixels) / 4, 1.0, 4.0);
}

} // namespace

struct ui_settings_t::impl_t
{
    std::map<int, wxFont> fonts;
    std::map<int, wxColour> colours;
    std::map<int, int> char_widths; // measured when first asked for
    bool dark = false;
    bool animations = true;
    bool system_dark = false;
    double text_scale = 1;
    int changes = 0;
    bool settling = false;
    gen_helpers2::signal_t<> changed;
    gen_helpers2::signal_t<> settled;
    guint pending = 0;

    impl_t()
    {
        GtkSettings* settings = gtk_settings_get_default();
        if (settings) {
            gboolean prefer_dark = FALSE;
            g_object_get(settings, "gtk-application-prefer-dark-theme", &prefer_dark, nullptr);
            system_dark = prefer_dark != FALSE;
            for (const char* property : watched_properties)
                g_signal_connect(settings, property, G_CALLBACK(on_notify), this);
        }
        read();
    }

    ~impl_t()
    {
        if (pending)
            g_source_remove(pending);
        if (GtkSettings* settings = gtk_settings_get_default())
            g_signal_handlers_disconnect_by_data(settings, this);
    }

    void read()
    {
        const theme_reader_t theme;
        const wxColour background =
            theme.colour("theme_bg_color", wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW));
        const wxColour text = readable_colour(
            theme.colour("theme_fg_color", wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT)), background);
        dark = contrast_ratio(background, wxColour(0, 0, 0)) <
               contrast_ratio(background, wxColour(255, 255, 255));

        colours[ui_colour::background] = background;
        colours[ui_colour::text] = text;
        colours[ui_colour::border] = theme.colour("borders", mixed(background, text, 0.25));
        // Of small letters no stroke may have the whole colour: there has to be something to spare.
        constexpr double spare_contrast = 1.2 * 4.5;
        colours[ui_colour::secondary_text] =
            readable_colour(mixed(text, background, 0.25), background, spare_contrast);
        // Red and amber of the theme where it has them, moved until they can be read on its background.
        colours[ui_colour::error] =
            readable_colour(theme.colour("error_color", wxColour(204, 0, 0)), background, spare_contrast);
        colours[ui_colour::warning] =
            readable_colour(theme.colour("warning_color", wxColour(245, 121, 0)), background, spare_contrast);
        colours[ui_colour::notice_background] = mixed(background, wxColour(245, 194, 17), dark ? 0.18 : 0.3);
        colours[ui_colour::notice_text] = readable_colour(text, colours[ui_colour::notice_background]);

        char_widths.clear();
        fonts[ui_font::text] = theme.font();
        fonts[ui_font::bold] = fonts[ui_font::text].Bold();
        text_scale = find_text_scale(fonts[ui_font::text]);
        if (GtkSettings* settings = gtk_settings_get_default()) {
            gboolean enabled = TRUE;
            g_object_get(settings, "gtk-enable-animations", &enabled, nullptr);
            animations = enabled != FALSE;
        }
    }

    static void on_notify(GtkSettings*, GParamSpec*, impl_t* self)
    {
        // One switch changes several properties, each told by an event of its own, and the style is not in
        // force before the loop's next turn. Before the next frame it must be.
        if (!self->pending)
            self->pending = g_idle_add_full(G_PRIORITY_HIGH_IDLE, settle, self, nullptr);
    }

    static gboolean settle(gpointer data)
    {
        auto* self = static_cast<impl_t*>(data);
        self->pending = 0;
        guarded([self] {
            self->settling = true;
            ++self->changes;
            const wxFont old_font = self->fonts[ui_font::text];
            self->read();
            spare_layouts::forget();
            if (self->fonts[ui_font::text] != old_font)
                forget_font(wxTopLevelWindows, old_font);
            renew_all_styles();
            forget_best_sizes(wxTopLevelWindows);
            lay_out(wxTopLevelWindows);
            const auto first = self->changed, second = self->settled; // a slot may shut the settings down
            first.emit();
            second.emit();
        });
        if (instance() && instance()->m_impl.get() == self)
            self->settling = false;
        return G_SOURCE_REMOVE;
    }
};

ui_settings_t::ui_settings_t() : m_impl(new impl_t) {}
ui_settings_t::~ui_settings_t() = default;

void ui_settings_t::initialize()
{
    if (!instance()) {
        instance().reset(new ui_settings_t);
        mend_theme();
    }
    run_accessible_actions_from_loop();
    tell_focus_of_fields_at_once();
    forget_presses_of_hidden_buttons();
    keep_least_sizes();
    repair_popups();
    follow_user_requests();
}

void ui_settings_t::shutdown()
{
    instance().reset();
}

ui_settings_t* ui_settings_t::get()
{
    return instance().get();
}

wxFont ui_settings_t::get_font(int number) const
{
    const auto found = m_impl->fonts.find(number);
    return found != m_impl->fonts.end() ? found->second : m_impl->fonts[ui_font::text];
}

int ui_settings_t::get_char_width(int number) const
{
    int& width = m_impl->char_widths[number];
    if (width == 0)
        width = std::max(1, theme_reader_t().text_width("g", get_font(number)));
    return width;
}

wxColour ui_settings_t::get_colour(int number) const
{
    const auto found = m_impl->colours.find(number);
    return found != m_impl->colours.end() ? found->second : m_impl->colours[ui_colour::text];
}

int ui_settings_t::get_metric(int number) const
{
    return number == ui_metric::window_border ? 5 : 0;
}

bool ui_settings_t::is_dark() const
{
    return m_impl->dark;
}

bool ui_settings_t::animations_enabled() const
{
    return m_impl->animations;
}

double ui_settings_t::get_text_scale() const
{
    return m_impl->text_scale;
}

int ui_settings_t::get_change_count() const
{
    return m_impl->changes;
}

gen_helpers2::signal_t<>& ui_settings_t::settled()
{
    return m_impl->settled;
}

gen_helpers2::signal_t<>& ui_settings_t::changed()
{
    return m_impl->changed;
}

void ui_settings_t::set_theme(theme_t theme)
{
    const bool dark = theme == theme_t::system ? m_impl->system_dark : theme == theme_t::dark;
    if (GtkSettings* settings = gtk_settings_get_default())
        g_object_set(settings, "gtk-application-prefer-dark-theme", static_cast<gboolean>(dark), nullptr);
}

void set_font(wxWindow* window, const wxFont& font)
{
    // The label's own way asks for its old font, which makes the toolkit look up all its colours as well: so
    // it is given one first, and only its size is left to it.
    const auto* label = wxDynamicCast(window, wxStaticText);
    if (label)
        window->wxWindow::SetFont(font);
    if (!label || !label->HasFlag(wxST_NO_AUTORESIZE))
        window->SetFont(font);
    if (window->GetHandle() && ui_settings_t::get() && ui_settings_t::get()->m_impl->settling)
        renew_styles(window->GetHandle(), nullptr);
}

void apply_font(wxWindow* window, const wxFont& font)
{
    if (!window || !window->GetHandle())
        return;
    wxNativeFontInfo shown; // frees its description
    GtkStyleContext* style = gtk_widget_get_style_context(window->GetHandle());
    gtk_style_context_get(style, gtk_style_context_get_state(style), "font", &shown.description, nullptr);
    if (!shown.description) {
        set_font(window, font);
        return;
    }
    const PangoFontDescription* wanted = font.GetNativeFontInfo()->description;
    if (g_strcmp0(pango_font_description_get_family(wanted),
                  pango_font_description_get_family(shown.description)) == 0 &&
        pango_font_description_get_size(wanted) == pango_font_description_get_size(shown.description) &&
        pango_font_description_get_size_is_absolute(wanted) ==
            pango_font_description_get_size_is_absolute(shown.description))
        return;
    wxFont own = font;
    own.SetStyle(shown.GetStyle());
    own.SetWeight(shown.GetWeight());
    set_font(window, own);
}

void apply_native_height(wxWindow* window)
{
    auto* field = wxDynamicCast(window, wxTextCtrl);
    if (!field || field->HasFlag(wxTE_MULTILINE) || field->HasFlag(wxBORDER_NONE) || !field->GetHandle())
        return;
    GtkWidget* widget = field->GetHandle();
    gint width = 0;
    gint height = 0;
    GtkRequisition natural{};
    gtk_widget_get_size_request(widget, &width, &height);
    gtk_widget_set_size_request(widget, -1, -1);
    gtk_widget_get_preferred_size(widget, nullptr, &natural);
    gtk_widget_set_size_request(widget, width, height);
    if (field->GetMinSize().y != natural.height)
        field->SetMinSize(wxSize(field->GetMinSize().x, natural.height));
}

} // namespace wx_helpers1
