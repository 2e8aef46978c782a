#include "accessible_actions.h"

#include "user_requests.h"

#include <gtk/gtk-a11y.h>
#include <gtk/gtk.h>

#include <map>

namespace wx_helpers1 {
namespace {

using do_action_t = gboolean (*)(AtkAction*, gint);

// By interface, what it did itself.
std::map<const AtkActionIface*, do_action_t>& originals()
{
    static auto& all = *new std::map<const AtkActionIface*, do_action_t>;
    return all;
}

struct asked_t
{
    AtkAction* object;
    do_action_t do_action;
    gint index;
};

gboolean on_turn(gpointer data)
{
    const auto* asked = static_cast<asked_t*>(data);
    note_user_request();
    asked->do_action(asked->object, asked->index);
    return G_SOURCE_REMOVE;
}

void forget(gpointer data)
{
    auto* asked = static_cast<asked_t*>(data);
    g_object_unref(asked->object);
    delete asked;
}

bool is_sensitive(AtkAction* object)
{
    AtkStateSet* states = atk_object_ref_state_set(ATK_OBJECT(object));
    const bool sensitive = atk_state_set_contains_state(states, ATK_STATE_SENSITIVE);
    g_object_unref(states);
    return sensitive;
}

// A class that adds to the interface without replacing the action has a copy of its parent's.
do_action_t original_of(AtkActionIface* actions)
{
    for (gpointer at = actions; at; at = g_type_interface_peek_parent(at)) {
        const auto found = originals().find(static_cast<AtkActionIface*>(at));
        if (found != originals().end())
            return found->second;
    }
    return nullptr;
}

gboolean do_later(AtkAction* object, gint index)
{
    const do_action_t original = original_of(ATK_ACTION_GET_IFACE(object));
    if (!original)
        return FALSE;
    if (index < 0 || index >= atk_action_get_n_actions(object) || !is_sensitive(object))
        return original(object, index); // which refuses it
    auto* asked = new asked_t{ATK_ACTION(g_object_ref(object)), original, index};
    g_idle_add_full(G_PRIORITY_DEFAULT, on_turn, asked, forget);
    return TRUE;
}

} // namespace

void run_actions_from_loop(AtkActionIface* actions)
{
    if (!actions || !actions->do_action || actions->do_action == do_later)
        return;
    originals()[actions] = actions->do_action;
    actions->do_action = do_later;
}

void run_accessible_actions_from_loop()
{
    for (const GType type :
         {GTK_TYPE_BUTTON_ACCESSIBLE, GTK_TYPE_COMBO_BOX_ACCESSIBLE, GTK_TYPE_ENTRY_ACCESSIBLE,
          GTK_TYPE_EXPANDER_ACCESSIBLE, GTK_TYPE_MENU_ITEM_ACCESSIBLE, GTK_TYPE_SCALE_BUTTON_ACCESSIBLE,
          GTK_TYPE_SWITCH_ACCESSIBLE, GTK_TYPE_CELL_ACCESSIBLE, GTK_TYPE_BOOLEAN_CELL_ACCESSIBLE})
        // The class is kept: an interface belongs to one that is there.
        run_actions_from_loop(
            static_cast<AtkActionIface*>(g_type_interface_peek(g_type_class_ref(type), ATK_TYPE_ACTION)));
}

} // namespace wx_helpers1
