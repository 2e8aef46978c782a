#include "wx_helpers1/picture_button.h"

#include <gtk/gtk.h>

namespace wx_helpers1 {

void set_pictures(wxBitmapButton* button, const button_pictures_t& pictures)
{
    if (!button)
        return;
    button->SetBitmap(pictures.normal.get_bundle());
    button->SetBitmapCurrent(pictures.hovered.get_bundle());
    button->SetBitmapPressed(pictures.pressed.get_bundle());
    button->SetBitmapDisabled(pictures.disabled.get_bundle());
}

void remove_button_frame(wxBitmapButton* button)
{
    if (!button || !button->GetHandle())
        return;
    GtkCssProvider* provider = gtk_css_provider_new();
    gtk_css_provider_load_from_data(provider,
                                    "button, button:hover, button:active, button:disabled {"
                                    " padding: 0; margin: 0; border: none; min-width: 0; min-height: 0;"
                                    " background: none; box-shadow: none; outline-offset: -1px; }",
                                    -1, nullptr);
    gtk_style_context_add_provider(gtk_widget_get_style_context(GTK_WIDGET(button->GetHandle())),
                                   GTK_STYLE_PROVIDER(provider), GTK_STYLE_PROVIDER_PRIORITY_APPLICATION);
    g_object_unref(provider);
}

} // namespace wx_helpers1
