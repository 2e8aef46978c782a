#include "view_accessible.h"

#include "log_view.h"

#include <wx_helpers1/accessibility.h>

namespace vdxcfrw7 {

struct view_accessible_t::impl_t
{
    explicit impl_t(log_view_t& the_view) : view(the_view) {}
    log_view_t& view;
};

view_accessible_t::view_accessible_t(log_view_t& view) : m_impl(std::make_unique<impl_t>(view)) {}
view_accessible_t::~view_accessible_t() = default;

void view_accessible_t::attach() {}
void view_accessible_t::changed() {}

void view_accessible_t::set_name(const std::string& name)
{
    wx_helpers1::set_accessible_name(&m_impl->view, name);
}

} // namespace vdxcfrw7
