#include "element_accessible.h"

#include "accessible_actions.h"

#include "wx_helpers1/elements/element_adapter.h"

#include <gen_helpers2/strings.h>

#include <wx/window.h>

#include <gtk/gtk.h>

namespace wx_helpers1 {
namespace {

constexpr char data_key[] = "wx_helpers1-element-accessible";

} // namespace

// The toolkit makes the accessible object of a window itself, as that of an area that does nothing. It is
// given a class derived from its own, which adds a button's states and its action.
struct element_accessible_t::impl_t
{
    explicit impl_t(element_adapter_t& the_adapter) : adapter(the_adapter) {}
    ~impl_t()
    {
        if (object) {
            g_object_set_data(G_OBJECT(object), data_key, nullptr);
            g_object_unref(object);
        }
    }

    void attach(wxWindow* window)
    {
        GtkWidget* widget = window->GetHandle() ? GTK_WIDGET(window->GetHandle()) : nullptr;
        AtkObject* found = widget ? gtk_widget_get_accessible(widget) : nullptr;
        gpointer derived = found ? derived_class(G_OBJECT_TYPE(found)) : nullptr;
        if (!derived)
            return;
        object = ATK_OBJECT(g_object_ref(found));
        reinterpret_cast<GTypeInstance*>(object)->g_class = static_cast<GTypeClass*>(derived);
        g_object_set_data(G_OBJECT(object), data_key, this);
    }

    static impl_t* of(gpointer object)
    {
        return static_cast<impl_t*>(g_object_get_data(G_OBJECT(object), data_key));
    }

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
        action->do_action = [](AtkAction* object, gint index) -> gboolean {
            impl_t* self = of(object);
            return index == 0 && self && self->adapter.activate_first();
        };
        run_actions_from_loop(action);
    }

    // With a reference, as the object's end gives one back.
    static gpointer derived_class(GType of_type)
    {
        static GType base = 0, derived = 0;
        if (!derived) {
            GTypeQuery query;
            g_type_query(of_type, &query);
            GTypeInfo info{};
            info.class_size = static_cast<guint16>(query.class_size);
            info.instance_size = static_cast<guint16>(query.instance_size);
            info.class_init = init_class;
            const GInterfaceInfo action{init_action, nullptr, nullptr};
            base = of_type;
            derived = g_type_register_static(of_type, "WxHelpersElementAccessible", &info,
                                             static_cast<GTypeFlags>(0));
            g_type_add_interface_static(derived, ATK_TYPE_ACTION, &action);
        }
        return base == of_type ? g_type_class_ref(derived) : nullptr;
    }

    static AtkObjectClass* parent_class;

    element_adapter_t& adapter;
    AtkObject* object = nullptr;
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
    if (!self.object)
        self.attach(window);
    if (!self.object)
        return;
    const bool turned = self.shown.expandable && self.shown.expanded != description.expanded;
    self.shown = description;
    atk_object_set_role(self.object, description.expandable ? ATK_ROLE_TOGGLE_BUTTON : ATK_ROLE_PUSH_BUTTON);
    atk_object_set_name(self.object, gen_helpers2::replace_invalid_utf8(description.name).c_str());
    if (turned) {
        atk_object_notify_state_change(self.object, ATK_STATE_EXPANDED, description.expanded);
        atk_object_notify_state_change(self.object, ATK_STATE_CHECKED, description.expanded);
    }
}

} // namespace wx_helpers1
