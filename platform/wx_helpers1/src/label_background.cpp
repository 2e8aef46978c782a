#include "wx_helpers1/label.h"

#include <wx/colour.h>
#include <wx/window.h>

#include <gtk/gtk.h>

namespace wx_helpers1 {
namespace {

constexpr char background_key[] = "wx_helpers1-label-background";

GtkWidget* find_label(GtkWidget* widget)
{
    if (!widget || GTK_IS_LABEL(widget))
        return widget;
    GtkWidget* found = nullptr;
    if (GTK_IS_CONTAINER(widget))
        gtk_container_forall(
            GTK_CONTAINER(widget),
            [](GtkWidget* child, gpointer data) {
                auto** label = static_cast<GtkWidget**>(data);
                if (!*label)
                    *label = find_label(child);
            },
            &found);
    return found;
}

} // namespace

void set_label_background(wxWindow* control, const wxColour& colour)
{
    GtkWidget* label = control ? find_label(static_cast<GtkWidget*>(control->GetHandle())) : nullptr;
    if (!label)
        return;
    GtkStyleContext* style = gtk_widget_get_style_context(label);
    if (auto* before = static_cast<GtkStyleProvider*>(g_object_get_data(G_OBJECT(label), background_key))) {
        gtk_style_context_remove_provider(style, before);
        g_object_set_data(G_OBJECT(label), background_key, nullptr);
    }
    if (!colour.IsOk())
        return;
    GtkCssProvider* provider = gtk_css_provider_new();
    const wxString css = "label { background-color: " + colour.GetAsString(wxC2S_CSS_SYNTAX) + "; }";
    gtk_css_provider_load_from_data(provider, css.utf8_str(), -1, nullptr);
    gtk_style_context_add_provider(style, GTK_STYLE_PROVIDER(provider), GTK_STYLE_PROVIDER_PRIORITY_USER);
    g_object_set_data_full(G_OBJECT(label), background_key, provider, g_object_unref);
}

} // namespace wx_helpers1
