#include "parent_watch.h"

#include <wx/window.h>

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

namespace wx_helpers1 {
namespace {

using watches_t = std::vector<std::pair<const parent_watch_t*, std::function<void()>>>;

// By window, from its first watch to its end.
std::map<wxWindow*, watches_t>& watched()
{
    static std::map<wxWindow*, watches_t> windows;
    return windows;
}

void on_destroy(wxWindowDestroyEvent& event)
{
    event.Skip();
    const auto found = watched().find(event.GetWindow()); // it may be a child that goes
    if (found == watched().end())
        return;
    const watches_t watches = std::move(found->second);
    watched().erase(found);
    for (const auto& watch : watches)
        watch.second();
}

} // namespace

parent_watch_t::parent_watch_t(wxWindow* window, std::function<void()> on_going) : m_window(window)
{
    if (!window)
        return;
    const auto [found, is_new] = watched().try_emplace(window);
    if (is_new)
        window->Bind(wxEVT_DESTROY, on_destroy);
    found->second.emplace_back(this, std::move(on_going));
}

parent_watch_t::~parent_watch_t()
{
    const auto found = watched().find(m_window);
    if (found == watched().end())
        return;
    watches_t& watches = found->second;
    watches.erase(std::remove_if(watches.begin(), watches.end(),
                                 [this](const auto& watch) { return watch.first == this; }),
                  watches.end());
}

} // namespace wx_helpers1
