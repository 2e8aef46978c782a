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

// Whose label a text is by our own choice; a GWeakRef.
constexpr char field_key[] = "wx_helpers1-label-of";

bool reads_like_label(const wxString& text)
{
    return text.EndsWith(":") || text.EndsWith(wxString::FromUTF8("："));
}

// The toolkit ties a text to whatever control follows it, whenever the order of the windows changes, and
// readers prefer what is tied to a control to its own name.
void keep_label(GtkLabel* label, GParamSpec*, gpointer)
{
    auto* kept = static_cast<GWeakRef*>(g_object_get_data(G_OBJECT(label), field_key));
    gpointer field = kept ? g_weak_ref_get(kept) : nullptr;
    GtkWidget* tied = gtk_label_get_mnemonic_widget(label);
    const bool says_its_own = tied && GTK_IS_BUTTON(tied);
    const bool may_be_any = !kept && !says_its_own &&
                            (gtk_label_get_mnemonic_keyval(label) != GDK_KEY_VoidSymbol ||
                             reads_like_label(wxString::FromUTF8(gtk_label_get_text(label))));
    if (tied != field && !may_be_any)
        gtk_label_set_mnemonic_widget(label, static_cast<GtkWidget*>(field));
    g_clear_object(&field);
}

// A reader passes over a notification without states.
GType notification_type()
{
    static const GType type = [] {
        GTypeQuery query;
        g_type_query(ATK_TYPE_OBJECT, &query);
        const auto init = +[](gpointer table, gpointer) {
            static AtkObjectClass* const parent = ATK_OBJECT_CLASS(g_type_class_peek_parent(table));
            ATK_OBJECT_CLASS(table)->ref_state_set = [](AtkObject* object) {
                AtkStateSet* states = parent->ref_state_set(object);
                for (const AtkStateType state : {ATK_STATE_ENABLED, ATK_STATE_VISIBLE, ATK_STATE_SHOWING})
                    atk_state_set_add_state(states, state);
                return states;
            };
        };
        return g_type_register_static_simple(ATK_TYPE_OBJECT, "WxHelpersNotification", query.class_size, init,
                                             query.instance_size, nullptr, static_cast<GTypeFlags>(0));
    }();
    return type;
}

} // namespace

void keep_label_relations(wxStaticText* label)
{
    if (!label || !label->GetHandle() || !GTK_IS_LABEL(label->GetHandle()))
        return;
    GtkWidget* widget = GTK_WIDGET(label->GetHandle());
    if (g_signal_handler_find(widget, G_SIGNAL_MATCH_FUNC, 0, 0, nullptr,
                              reinterpret_cast<gpointer>(keep_label), nullptr) == 0)
        g_signal_connect(widget, "notify::mnemonic-widget", G_CALLBACK(keep_label), nullptr);
    keep_label(GTK_LABEL(widget), nullptr, nullptr);
}

void set_accessible_name(wxWindow* window, const std::string& name)
{
    if (AtkObject* object = accessible(window))
        atk_object_set_name(object, gen_helpers2::replace_invalid_utf8(name).c_str());
}

void set_accessible_description(wxWindow* window, const std::string& description)
{
    AtkObject* object = accessible(window);
    if (!object)
        return;
    // Readers say the description of what has the focus each time that it is set.
    const std::string shown = gen_helpers2::replace_invalid_utf8(description);
    const char* before = atk_object_get_description(object);
    if (!before || shown != before)
        atk_object_set_description(object, shown.c_str());
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

void tie_label(wxStaticText* label, wxWindow* field)
{
    GtkWidget* widget = active_widget(field);
    if (label && label->GetHandle() && GTK_IS_LABEL(label->GetHandle()) && widget)
        gtk_label_set_mnemonic_widget(GTK_LABEL(label->GetHandle()), widget);
}

void set_label_for(wxStaticText* label, wxWindow* field)
{
    GtkWidget* widget = active_widget(field);
    if (!label || !label->GetHandle() || !widget)
        return;
    auto* kept = g_new0(GWeakRef, 1);
    g_weak_ref_init(kept, widget);
    g_object_set_data_full(G_OBJECT(label->GetHandle()), field_key, kept, [](gpointer data) {
        g_weak_ref_clear(static_cast<GWeakRef*>(data));
        g_free(data);
    });
    keep_label_relations(label);
    // Scroll bars around a list take the keyboard from it where the toolkit ties them, and do nothing with it.
    if (GTK_WIDGET(field->GetHandle()) != widget)
        gtk_widget_set_can_focus(GTK_WIDGET(field->GetHandle()), FALSE);
    wxString name = label->GetLabelText();
    if (!name.EndsWith(":", &name))
        name.EndsWith(wxString::FromUTF8("："), &name);
    set_accessible_name(field, name.utf8_string());
}

void set_described_by(wxWindow* control, wxStaticText* text)
{
    AtkObject* described = accessible(control);
    AtkObject* description = accessible(text);
    if (described && description)
        atk_object_add_relationship(described, ATK_RELATION_DESCRIBED_BY, description);
}

bool is_described(wxWindow* control)
{
    AtkObject* described = accessible(control);
    if (!described)
        return false;
    AtkRelationSet* relations = atk_object_ref_relation_set(described);
    const bool found = atk_relation_set_contains(relations, ATK_RELATION_DESCRIBED_BY);
    g_object_unref(relations);
    return found;
}

void announce(wxWindow* window, const std::string& text)
{
    constexpr char key[] = "wx_helpers1-notification";
    GtkWidget* widget = active_widget(window);
    if (!widget || text.empty())
        return;
    auto* notification = static_cast<AtkObject*>(g_object_get_data(G_OBJECT(widget), key));
    if (!notification) {
        notification = ATK_OBJECT(g_object_new(notification_type(), nullptr));
        atk_object_set_role(notification, ATK_ROLE_NOTIFICATION);
        // Not the window: readers would say the dialog and the list that it is in as well.
        atk_object_set_parent(notification, atk_get_root());
        g_object_set_data_full(G_OBJECT(widget), key, notification, g_object_unref);
    }
    atk_object_set_name(notification, gen_helpers2::replace_invalid_utf8(text).c_str());
    // Readers say a notification that begins to show.
    atk_object_notify_state_change(notification, ATK_STATE_SHOWING, TRUE);
}

std::string get_accessible_name(wxWindow* window)
{
    AtkObject* object = accessible(window);
    const char* name = object ? atk_object_get_name(object) : nullptr;
    return name ? name : "";
}

std::string get_spoken_name(wxWindow* window)
{
    GtkWidget* widget = active_widget(window);
    GList* labels = widget ? gtk_widget_list_mnemonic_labels(widget) : nullptr;
    std::string spoken;
    for (const GList* at = labels; at && spoken.empty(); at = at->next)
        if (GTK_IS_LABEL(at->data) && !gtk_widget_is_ancestor(GTK_WIDGET(at->data), widget))
            spoken = gtk_label_get_text(GTK_LABEL(at->data));
    g_list_free(labels);
    return spoken.empty() ? get_accessible_name(window) : spoken;
}

} // namespace wx_helpers1
