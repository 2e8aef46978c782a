#include "element_accessible.h"

#include "accessible_actions.h"

#include "wx_helpers1/accessible_class.h"
#include "wx_helpers1/elements/element_adapter.h"

#include <gen_helpers2/strings.h>

#include <wx/window.h>

#include <gtk/gtk.h>

namespace wx_helpers1 {

// Adds a button's states and its action.
struct element_accessible_t::impl_t
{
    explicit impl_t(element_adapter_t& the_adapter) : adapter(the_adapter) {}

    static impl_t* of(gpointer object) { return static_cast<impl_t*>(accessible_class_t::owner_of(object)); }

    static AtkStateSet* states(AtkObject* object)
    {
        AtkStateSet* set = parent_class->ref_state_set(object);
        if (const impl_t* self = of(object)) {
            atk_state_set_add_state(set, ATK_STATE_FOCUSABLE);
            if (self->shown.expandable) {
                atk_state_set_add_state(set, ATK_STATE_EXPANDABLE);
                if (self->shown.expanded) {
                    atk_state_set_add_state(set, ATK_STATE_EXPANDED);
                    atk_state_set_add_state(set, ATK_STATE_CHECKED);
                }
            }
        }
        return set;
    }

    static void init_class(gpointer klass, gpointer)
    {
        parent_class = ATK_OBJECT_CLASS(g_type_class_peek_parent(klass));
        ATK_OBJECT_CLASS(klass)->ref_state_set = states;
    }

    static void init_action(gpointer interface, gpointer)
    {
        auto* action = static_cast<AtkActionIface*>(interface);
        action->get_n_actions = [](AtkAction*) -> gint { return 1; };
        action->get_name = [](AtkAction*, gint) -> const gchar* { return "press"; };
        action->do_action = [](AtkAction* pressed, gint index) -> gboolean {
            impl_t* self = of(pressed);
            return index == 0 && self && self->adapter.activate_first();
        };
        run_actions_from_loop(action);
    }

    static accessible_class_t& kind()
    {
        static accessible_class_t the_kind("WxHelpersElementAccessible", init_class,
                                           {{ATK_TYPE_ACTION, init_action}});
        return the_kind;
    }

    static AtkObjectClass* parent_class;

    element_adapter_t& adapter;
    accessible_class_t::attached_t object;
    element_description_t shown;
};

AtkObjectClass* element_accessible_t::impl_t::parent_class = nullptr;

element_accessible_t::element_accessible_t(element_adapter_t& adapter)
    : m_impl(std::make_unique<impl_t>(adapter))
{
}

element_accessible_t::~element_accessible_t() = default;

void element_accessible_t::update(wxWindow* window, const element_description_t& description)
{
    impl_t& self = *m_impl;
    if (!self.object && window->GetHandle())
        self.object = impl_t::kind().attach(GTK_WIDGET(window->GetHandle()), &self);
    if (!self.object)
        return;
    AtkObject* object = self.object.get();
    const bool turned = self.shown.expandable && self.shown.expanded != description.expanded;
    self.shown = description;
    atk_object_set_role(object, description.expandable ? ATK_ROLE_TOGGLE_BUTTON : ATK_ROLE_PUSH_BUTTON);
    atk_object_set_name(object, gen_helpers2::replace_invalid_utf8(description.name).c_str());
    if (turned) {
        atk_object_notify_state_change(object, ATK_STATE_EXPANDED, description.expanded);
        atk_object_notify_state_change(object, ATK_STATE_CHECKED, description.expanded);
    }
}

} // namespace wx_helpers1
