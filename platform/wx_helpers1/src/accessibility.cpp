#include "wx_helpers1/accessibility.h"

#include <gen_helpers2/strings.h>

#include <wx/window.h>

#include <gtk/gtk.h>

namespace wx_helpers1 {
namespace {

AtkObject* accessible(wxWindow* window)
{
    return window && window->GetHandle() ? gtk_widget_get_accessible(GTK_WIDGET(window->GetHandle()))
                                         : nullptr;
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

std::string get_accessible_name(wxWindow* window)
{
    AtkObject* object = accessible(window);
    const char* name = object ? atk_object_get_name(object) : nullptr;
    return name ? name : "";
}

} // namespace wx_helpers1
