#include "wx_helpers1/accessibility.h"

#include <gen_helpers2/strings.h>

#include <wx/stattext.h>
#include <wx/window.h>

#include <gtk/gtk.h>

namespace wx_helpers1 {
namespace {

// What takes the keys: of a field with scroll bars that is what stands inside them.
GtkWidget* active_widget(wxWindow* window)
{
    GtkWidget* widget = window && window->GetHandle() ? GTK_WIDGET(window->GetHandle()) : nullptr;
    if (!widget || !GTK_IS_SCROLLED_WINDOW(widget))
        return widget;
    GtkWidget* inside = gtk_bin_get_child(GTK_BIN(widget));
    return inside && gtk_widget_get_can_focus(inside) ? inside : widget;
}

AtkObject* accessible(wxWindow* window)
{
    GtkWidget* widget = active_widget(window);
    return widget ? gtk_widget_get_accessible(widget) : nullptr;
}

} // namespace

void set_accessible_name(wxWindow* window, const std::string& name)
{
    if (AtkObject* object = accessible(window))
        atk_object_set_name(object, gen_helpers2::replace_invalid_utf8(name).c_str());
}

void set_accessible_description(wxWindow* window, const std::string& description)
{
    if (AtkObject* object = accessible(window))
        atk_object_set_description(object, gen_helpers2::replace_invalid_utf8(description).c_str());
}

void set_accessible_role(wxWindow* window, accessible_role_t role)
{
    AtkObject* object = accessible(window);
    if (!object)
        return;
    switch (role) {
    case accessible_role_t::image:
        atk_object_set_role(object, ATK_ROLE_IMAGE);
        break;
    case accessible_role_t::dialog:
        atk_object_set_role(object, ATK_ROLE_DIALOG);
        break;
    case accessible_role_t::alert:
        atk_object_set_role(object, ATK_ROLE_ALERT);
        break;
    case accessible_role_t::label:
        atk_object_set_role(object, ATK_ROLE_LABEL);
        break;
    case accessible_role_t::panel:
        atk_object_set_role(object, ATK_ROLE_PANEL);
        break;
    }
}

void set_label_for(wxStaticText* label, wxWindow* field)
{
    GtkWidget* widget = active_widget(field);
    if (!label || !label->GetHandle() || !widget)
        return;
    gtk_label_set_mnemonic_widget(GTK_LABEL(label->GetHandle()), widget);
    // The toolkit puts its own choice in place of ours whenever the order of the windows changes; scroll bars
    // around a list take the keyboard from it then, and do nothing with it.
    if (GTK_WIDGET(field->GetHandle()) != widget)
        gtk_widget_set_can_focus(GTK_WIDGET(field->GetHandle()), FALSE);
    wxString name = label->GetLabelText();
    name.EndsWith(":", &name);
    set_accessible_name(field, name.utf8_string());
}

std::string get_accessible_name(wxWindow* window)
{
    AtkObject* object = accessible(window);
    const char* name = object ? atk_object_get_name(object) : nullptr;
    return name ? name : "";
}

} // namespace wx_helpers1
