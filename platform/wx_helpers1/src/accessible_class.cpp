#include "wx_helpers1/accessible_class.h"

#include <gtk/gtk.h>

namespace wx_helpers1 {
namespace {

constexpr char owner_key[] = "wx_helpers1-accessible-owner";

} // namespace

void accessible_class_t::detach_t::operator()(AtkObject* object) const
{
    g_object_set_data(G_OBJECT(object), owner_key, nullptr);
    g_object_unref(object);
}

accessible_class_t::attached_t accessible_class_t::attach(GtkWidget* widget, void* owner)
{
    AtkObject* object = widget ? gtk_widget_get_accessible(widget) : nullptr;
    if (!object)
        return nullptr;
    if (!m_derived) {
        GTypeQuery query;
        g_type_query(G_OBJECT_TYPE(object), &query);
        GTypeInfo info{};
        info.class_size = static_cast<guint16>(query.class_size);
        info.instance_size = static_cast<guint16>(query.instance_size);
        info.class_init = m_init;
        m_base = G_OBJECT_TYPE(object);
        m_derived = g_type_register_static(m_base, m_name, &info, static_cast<GTypeFlags>(0));
        for (const interface_t& added : m_interfaces) {
            const GInterfaceInfo how{added.init, nullptr, nullptr};
            g_type_add_interface_static(m_derived, added.type, &how);
        }
    }
    if (G_OBJECT_TYPE(object) != m_base)
        return nullptr;
    g_object_ref(object);
    // With a reference to the class, as the object's end gives one back.
    reinterpret_cast<GTypeInstance*>(object)->g_class = static_cast<GTypeClass*>(g_type_class_ref(m_derived));
    g_object_set_data(G_OBJECT(object), owner_key, owner);
    return attached_t(object);
}

void* accessible_class_t::owner_of(void* object)
{
    return g_object_get_data(G_OBJECT(object), owner_key);
}

} // namespace wx_helpers1
