#pragma once

#include "wx_helpers1/export.h"

#include <memory>
#include <utility>
#include <vector>

// The toolkit's own names of its types.
struct _AtkObject;
struct _GtkWidget;

namespace wx_helpers1 {

/// A class for accessible objects of windows that draw themselves. The toolkit makes such an object
/// itself, as that of an area that shows and does nothing; it is given a class derived from its own,
/// which knows more.
///
///     accessible_class_t& my_class()
///     {
///         static accessible_class_t kind("MyAccessible", init_class, {{ATK_TYPE_ACTION, init_action}});
///         return kind;
///     }
///     const auto object = my_class().attach(widget, this);
///
/// For windows of one kind each: a class derives from what the first widget has. A control of the
/// toolkit's needs names and relations only (accessibility.h). GUI thread.
/// @since 3.1
class WX_HELPERS1_EXPORT accessible_class_t
{
public:
    using init_t = void (*)(void* table, void* data); // GClassInitFunc, GInterfaceInitFunc
    /// An interface of the accessibility kit that the class fills in.
    struct interface_t
    {
        unsigned long type; // GType
        init_t init;
    };
    /// Ends what attach() began: the object, which readers may hold on to, has no owner any more.
    struct detach_t
    {
        void operator()(_AtkObject* object) const;
    };
    using attached_t = std::unique_ptr<_AtkObject, detach_t>;

    accessible_class_t(const char* name, init_t init, std::vector<interface_t> interfaces = {})
        : m_name(name), m_init(init), m_interfaces(std::move(interfaces))
    {
    }

    /// Null for no widget, and for one of another kind than the first.
    attached_t attach(_GtkWidget* widget, void* owner);
    /// Who attached the object; null after its end.
    static void* owner_of(void* object);

private:
    const char* m_name;
    init_t m_init;
    std::vector<interface_t> m_interfaces;
    unsigned long m_base = 0;
    unsigned long m_derived = 0;
};

} // namespace wx_helpers1
