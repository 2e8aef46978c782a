#include "wx_helpers1/modal_flavor.h"

#include <vector>

namespace wx_helpers1 {
namespace {

std::vector<wxWindow*>& windows()
{
    static std::vector<wxWindow*> stack;
    return stack;
}

} // namespace

wxWindow* modal_stack_t::top()
{
    return windows().empty() ? nullptr : windows().back();
}

int modal_stack_t::depth()
{
    return static_cast<int>(windows().size());
}

modal_stack_t::entry_t::entry_t(wxWindow* window) : m_focused(wxWindow::FindFocus())
{
    windows().push_back(window);
}

modal_stack_t::entry_t::~entry_t()
{
    windows().pop_back();
    if (m_focused && m_focused->IsShownOnScreen())
        m_focused->SetFocus();
}

} // namespace wx_helpers1
