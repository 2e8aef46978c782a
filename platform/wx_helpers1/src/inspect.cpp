#include "wx_helpers1/inspect.h"

#include <wx/toplevel.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <set>

namespace wx_helpers1 {
namespace {

wxRect place_of(GtkWidget* widget)
{
    GtkWidget* top = gtk_widget_get_toplevel(widget);
    int x = 0, y = 0, left = 0, above = 0;
    gtk_widget_translate_coordinates(widget, top, 0, 0, &x, &y);
    if (GdkWindow* window = gtk_widget_get_window(top))
        gdk_window_get_origin(window, &left, &above);
    return {left + x, above + y, gtk_widget_get_allocated_width(widget),
            gtk_widget_get_allocated_height(widget)};
}

shown_text_t text_of(GtkLabel* label)
{
    PangoLayout* layout = gtk_label_get_layout(label);
    int width = 0, height = 0;
    pango_layout_get_pixel_size(layout, &width, &height);
    const wxRect place = place_of(GTK_WIDGET(label)); // a pixel more is no more than rounding
    return {gtk_label_get_text(label), place,
            pango_layout_is_ellipsized(layout) || width > place.width + 1 || height > place.height + 1};
}

// A list that shows one of its rows, and is as wide as that row needs.
shown_text_t text_of(GtkComboBox* list)
{
    GtkTreeIter row;
    shown_text_t shown{{}, place_of(GTK_WIDGET(list))};
    if (gtk_combo_box_get_active_iter(list, &row)) {
        gchar* text = nullptr;
        gtk_tree_model_get(gtk_combo_box_get_model(list), &row, 0, &text, -1);
        shown.text = text ? text : "";
        g_free(text);
    }
    int least = 0;
    gtk_widget_get_preferred_width(GTK_WIDGET(list), &least, nullptr);
    shown.is_cut = least > shown.rect.width;
    return shown;
}

struct collecting_t
{
    std::set<GtkWidget*> elsewhere; // what belongs to the children
    std::vector<shown_text_t> texts;
};

void collect(GtkWidget* widget, gpointer data)
{
    auto& self = *static_cast<collecting_t*>(data);
    if (!gtk_widget_get_mapped(widget) || self.elsewhere.count(widget))
        return;
    if (GTK_IS_LABEL(widget))
        self.texts.push_back(text_of(GTK_LABEL(widget)));
    else if (GTK_IS_COMBO_BOX(widget))
        self.texts.push_back(text_of(GTK_COMBO_BOX(widget)));
    else if (GTK_IS_CONTAINER(widget))
        gtk_container_forall(GTK_CONTAINER(widget), collect, data);
}

void collect_drawn(AtkObject* object, std::vector<shown_text_t>& texts)
{
    const char* name = atk_object_get_name(object);
    std::string text = name ? name : "";
    if (ATK_IS_TEXT(object)) {
        gchar* whole = atk_text_get_text(ATK_TEXT(object), 0, -1);
        text = whole ? whole : "";
        g_free(whole);
    }
    if (!text.empty() && ATK_IS_COMPONENT(object)) {
        wxRect place;
        atk_component_get_extents(ATK_COMPONENT(object), &place.x, &place.y, &place.width, &place.height,
                                  ATK_XY_SCREEN);
        shown_text_t shown{text, place};
        shown.is_drawn = true;
        texts.push_back(shown);
    }
}

wxWindow* window_of(GtkWidget* widget, const wxWindowList& windows)
{
    for (wxWindow* window : windows) {
        if (GTK_WIDGET(window->GetHandle()) == widget)
            return window;
        if (wxWindow* inside = window_of(widget, window->GetChildren()))
            return inside;
    }
    return nullptr;
}

} // namespace

std::vector<shown_text_t> get_shown_texts(const wxWindow& window)
{
    collecting_t found;
    for (const wxWindow* child : window.GetChildren())
        if (child->GetHandle())
            found.elsewhere.insert(GTK_WIDGET(child->GetHandle()));
    GtkWidget* widget = GTK_WIDGET(window.GetHandle());
    if (!widget || !gtk_widget_get_mapped(widget))
        return {};
    collect(widget, &found);
    // A window without widgets of its own that readers are told about draws what it shows.
    if (!found.texts.empty() || !window.GetChildren().empty() || !window.m_wxwindow)
        return found.texts;
    AtkObject* drawn = gtk_widget_get_accessible(window.m_wxwindow);
    const int children = atk_object_get_n_accessible_children(drawn);
    for (int i = 0; i < children; ++i)
        if (AtkObject* child = atk_object_ref_accessible_child(drawn, i)) {
            collect_drawn(child, found.texts);
            g_object_unref(child);
        }
    // An area that waits for its contents has a name that is not seen.
    const AtkRole role = atk_object_get_role(drawn);
    if (children == 0 && (role == ATK_ROLE_PUSH_BUTTON || role == ATK_ROLE_TOGGLE_BUTTON))
        collect_drawn(drawn, found.texts);
    return found.texts;
}

wxRect get_place(const wxWindow& window)
{
    return window.GetHandle() ? place_of(GTK_WIDGET(window.GetHandle())) : wxRect();
}

wxRect get_room_for_children(const wxWindow& window)
{
    return window.m_wxwindow ? place_of(window.m_wxwindow) : get_place(window);
}

bool is_scrolling(const wxWindow& window)
{
    if (!window.GetHandle() || !GTK_IS_SCROLLED_WINDOW(window.GetHandle()))
        return false;
    GtkPolicyType across = GTK_POLICY_NEVER, down = GTK_POLICY_NEVER;
    gtk_scrolled_window_get_policy(GTK_SCROLLED_WINDOW(window.GetHandle()), &across, &down);
    return across != GTK_POLICY_NEVER || down != GTK_POLICY_NEVER;
}

wxWindow* get_focus_in(const wxTopLevelWindow& window)
{
    GtkWidget* widget = window.GetHandle() ? gtk_window_get_focus(GTK_WINDOW(window.GetHandle())) : nullptr;
    for (; widget; widget = gtk_widget_get_parent(widget))
        if (wxWindow* found = window_of(widget, window.GetChildren()))
            return found;
    return nullptr;
}

void press_tab(const wxTopLevelWindow& window, bool backwards)
{
    GtkWidget* widget = GTK_WIDGET(window.GetHandle());
    GdkKeymap* keymap = gdk_keymap_get_for_display(gtk_widget_get_display(widget));
    GdkKeymapKey* keys = nullptr;
    gint count = 0;
    gdk_keymap_get_entries_for_keyval(keymap, GDK_KEY_Tab, &keys, &count);
    GdkEvent* event = gdk_event_new(GDK_KEY_PRESS);
    event->key.window = GDK_WINDOW(g_object_ref(gtk_widget_get_window(widget)));
    event->key.send_event = TRUE;
    // The display's clock is this one, and by its times window managers decide who may have the focus. The
    // toolkit takes two keys of one time for one key.
    static guint32 last = 0;
    last = std::max(last + 1, static_cast<guint32>(g_get_monotonic_time() / 1000));
    event->key.time = last;
    event->key.keyval = backwards ? GDK_KEY_ISO_Left_Tab : GDK_KEY_Tab;
    event->key.state = backwards ? GDK_SHIFT_MASK : GdkModifierType(0);
    event->key.hardware_keycode = count > 0 ? static_cast<guint16>(keys[0].keycode) : 0;
    event->key.string = g_strdup("");
    gdk_event_set_device(event,
                         gdk_seat_get_keyboard(gdk_display_get_default_seat(gtk_widget_get_display(widget))));
    gtk_main_do_event(event);
    gdk_event_free(event);
    g_free(keys);
}

} // namespace wx_helpers1
