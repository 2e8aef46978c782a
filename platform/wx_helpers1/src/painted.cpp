#include "wx_helpers1/painted.h"

#include "wx_helpers1/guarded.h"

#include <wx/toplevel.h>

#include <gtk/gtk.h>

#include <cstddef>
#include <memory>
#include <utility>

namespace wx_helpers1 {
namespace {

struct waiting_t
{
    std::function<void(wxTopLevelWindow*)> callback;
    GtkWidget* widget = nullptr;
    gulong draw_handler = 0;
    gulong gone_handler = 0;
};

wxTopLevelWindow* window_of(GtkWidget* widget)
{
    for (wxWindow* window : wxTopLevelWindows)
        if (window->GetHandle() == widget)
            return wxDynamicCast(window, wxTopLevelWindow);
    return nullptr;
}

void forget(waiting_t* waiting)
{
    if (waiting->widget) {
        g_signal_handler_disconnect(waiting->widget, waiting->gone_handler);
        if (waiting->draw_handler)
            g_signal_handler_disconnect(waiting->widget, waiting->draw_handler);
    }
    delete waiting;
}

gboolean on_idle(gpointer data)
{
    auto* waiting = static_cast<waiting_t*>(data);
    if (!waiting->widget) {
        delete waiting; // the window went before anything could be said of it
        return G_SOURCE_REMOVE;
    }
    gdk_display_sync(gtk_widget_get_display(waiting->widget));
    const auto callback = std::move(waiting->callback);
    wxTopLevelWindow* window = window_of(waiting->widget);
    forget(waiting);
    if (window)
        guarded([&] { callback(window); });
    return G_SOURCE_REMOVE;
}

gboolean on_draw(GtkWidget* widget, cairo_t*, gpointer data)
{
    auto* waiting = static_cast<waiting_t*>(data);
    g_signal_handler_disconnect(widget, waiting->draw_handler);
    waiting->draw_handler = 0;
    g_idle_add_full(G_PRIORITY_LOW, on_idle, waiting, nullptr);
    return FALSE;
}

void on_gone(GtkWidget*, gpointer data)
{
    auto* waiting = static_cast<waiting_t*>(data);
    const bool painted = waiting->draw_handler == 0;
    waiting->widget = nullptr;
    if (!painted)
        delete waiting;
}

gboolean on_map(GSignalInvocationHint*, guint, const GValue* values, gpointer data)
{
    auto* widget = static_cast<GtkWidget*>(g_value_get_object(values));
    if (!GTK_IS_WINDOW(widget) || !window_of(widget))
        return TRUE;
    auto* waiting = static_cast<waiting_t*>(data);
    waiting->widget = widget;
    waiting->draw_handler = g_signal_connect_after(widget, "draw", G_CALLBACK(on_draw), waiting);
    waiting->gone_handler = g_signal_connect(widget, "destroy", G_CALLBACK(on_gone), waiting);
    return FALSE; // the hook has done its work
}

// Under Wayland no program sees the screen.
bool can_see_screen()
{
    return g_strcmp0(G_OBJECT_TYPE_NAME(gdk_display_get_default()), "GdkX11Display") == 0;
}

GdkPixbuf* pixels_of_screen(const wxRect& rect)
{
    if (!can_see_screen())
        return nullptr;
    GdkWindow* root = gdk_screen_get_root_window(gdk_screen_get_default());
    // The drawing library keeps a copy of what it once read of the screen, unless it is told that it has
    // changed.
    cairo_surface_t* screen = gdk_window_create_similar_surface(root, CAIRO_CONTENT_COLOR, 1, 1);
    cairo_surface_destroy(screen);
    return gdk_pixbuf_get_from_window(root, rect.x, rect.y, rect.width, rect.height);
}

// As the window draws itself, with the frame that it draws around itself.
GdkPixbuf* pixels_of_window(const wxTopLevelWindow& window)
{
    GtkWidget* widget = window.GetHandle();
    const int width = gtk_widget_get_allocated_width(widget),
              height = gtk_widget_get_allocated_height(widget);
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    cairo_t* cairo = cairo_create(surface);
    gtk_widget_draw(widget, cairo);
    cairo_destroy(cairo);
    GdkPixbuf* pixels = gdk_pixbuf_get_from_surface(surface, 0, 0, width, height);
    cairo_surface_destroy(surface);
    return pixels;
}

} // namespace

void when_next_window_is_painted(std::function<void(wxTopLevelWindow*)> callback)
{
    // The class must exist before its signal can be looked up.
    g_type_class_unref(g_type_class_ref(GTK_TYPE_WIDGET));
    auto waiting = std::make_unique<waiting_t>();
    waiting->callback = std::move(callback);
    g_signal_add_emission_hook(g_signal_lookup("map", GTK_TYPE_WIDGET), 0, on_map, waiting.release(),
                               nullptr);
}

wxImage get_screen_pixels(const wxRect& rect)
{
    GdkPixbuf* pixels = pixels_of_screen(rect);
    if (!pixels)
        return wxImage();
    wxImage image(gdk_pixbuf_get_width(pixels), gdk_pixbuf_get_height(pixels), false);
    const int channels = gdk_pixbuf_get_n_channels(pixels);
    for (int y = 0; y < image.GetHeight(); ++y) {
        const guchar* pixel =
            gdk_pixbuf_read_pixels(pixels) + std::ptrdiff_t(y) * gdk_pixbuf_get_rowstride(pixels);
        for (int x = 0; x < image.GetWidth(); ++x, pixel += channels)
            image.SetRGB(x, y, pixel[0], pixel[1], pixel[2]);
    }
    g_object_unref(pixels);
    return image;
}

bool save_picture(const wxTopLevelWindow& window, const std::string& file)
{
    GdkPixbuf* pixels =
        can_see_screen() ? pixels_of_screen(window.GetScreenRect()) : pixels_of_window(window);
    if (!pixels)
        return false;
    const bool saved = gdk_pixbuf_save(pixels, file.c_str(), "png", nullptr, nullptr);
    g_object_unref(pixels);
    return saved;
}

} // namespace wx_helpers1
