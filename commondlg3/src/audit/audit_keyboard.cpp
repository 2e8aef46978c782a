#include "audited_window.h"

#include <wx_helpers1/inspect.h>
#include <wx_helpers1/text.h>

#include <wx/control.h>
#include <wx/panel.h>
#include <wx/radiobut.h>

#include <map>
#include <set>
#include <string>
#include <typeinfo>
#include <vector>

namespace commondlg3 {
namespace {

// Of a control that has places for the keyboard inside, as a table has in its header.
constexpr std::size_t most_stops_inside = 12;

// What Tab should stop at: of a control made of others, the innermost. A plain panel takes the focus, and
// nothing else, while there is nothing in it.
bool takes_keys(const wxWindow& window)
{
    if (!window.IsEnabled() || !window.AcceptsFocusFromKeyboard() || typeid(window) == typeid(wxPanel))
        return false;
    for (const wxWindow* child : window.GetChildren())
        if (child->IsShown() && !child->IsTopLevel() && child->AcceptsFocusFromKeyboard())
            return false;
    return true;
}

std::set<const wxWindow*> walk(audited_window_t& audited, bool backwards)
{
    std::set<const wxWindow*> visited;
    const wxTopLevelWindow& top = audited.top();
    const wxWindow* const start = wx_helpers1::get_focus_in(top);
    const wxWindow* at = start;
    std::size_t stays = 0;
    for (std::size_t i = 0; i <= audited.get_shown().size() + most_stops_inside; ++i) {
        const wxWindow* const before = at;
        wx_helpers1::press_tab(top, backwards);
        at = wx_helpers1::get_focus_in(top);
        if (!at)
            break;
        visited.insert(at);
        stays = at == before ? stays + 1 : 0;
        if (stays > most_stops_inside) {
            audited.add("tab_trapped", *at, backwards ? "backwards" : "forwards");
            break;
        }
        if (at == start && stays == 0)
            break;
    }
    return visited;
}

bool is_visited(const wxWindow& window, const std::set<const wxWindow*>& visited)
{
    for (const wxWindow* inside : visited)
        for (const wxWindow* at = inside; at && !at->IsTopLevel(); at = at->GetParent())
            if (at == &window)
                return true;
    // One button of a group is reached by Tab, the others by the arrow keys.
    if (wxDynamicCast(&window, wxRadioButton))
        for (const wxWindow* sibling : window.GetParent()->GetChildren())
            if (wxDynamicCast(sibling, wxRadioButton) && visited.count(sibling))
                return true;
    return false;
}

void audit_tab_order(audited_window_t& audited)
{
    std::vector<const wxWindow*> stops;
    for (const wxWindow* window : audited.get_shown())
        if (takes_keys(*window))
            stops.push_back(window);
    wxWindow* const before = wx_helpers1::get_focus_in(audited.top());
    if (!stops.empty() && !(before && audited.top().IsActive())) {
        audited.add("no_focus", audited.top(), "Tab was not tried");
        return;
    }
    if (stops.size() < 2)
        return;
    for (const bool backwards : {false, true}) {
        const std::set<const wxWindow*> visited = walk(audited, backwards);
        for (const wxWindow* window : stops)
            if (!is_visited(*window, visited))
                audited.add("tab_misses", *window, backwards ? "backwards" : "forwards");
    }
    before->SetFocus();
}

void audit_mnemonics(audited_window_t& audited)
{
    std::map<wxUniChar, const wxWindow*> letters;
    for (const wxWindow* window : audited.get_shown()) {
        const auto* control = wxDynamicCast(window, wxControl);
        const wxString label = control ? control->GetLabel() : wxString();
        for (std::size_t at = 0; at + 1 < label.length(); ++at) {
            if (label[at] != '&')
                continue;
            ++at;
            if (label[at] == '&')
                continue;
            const wxUniChar letter = wxString(label[at]).Lower()[0];
            const auto [other, is_new] = letters.emplace(letter, window);
            if (!is_new)
                audited.add("same_mnemonic", *window,
                            wx_helpers1::from_wx(wxString(letter)) + " as in " +
                                audited_window_t::get_path(*other->second));
            break;
        }
    }
}

} // namespace

void audit_keyboard(audited_window_t& audited)
{
    audit_mnemonics(audited);
    audit_tab_order(audited);
}

} // namespace commondlg3
