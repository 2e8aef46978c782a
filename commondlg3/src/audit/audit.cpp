#include "audited_window.h"

#include <cpil/strings.h>
#include <wx_helpers1/inspect.h>
#include <wx_helpers1/text.h>

#include <string>
#include <vector>

namespace commondlg3 {

audited_window_t::audited_window_t(wxTopLevelWindow& top) : m_top(top)
{
    collect(top);
}

void audited_window_t::collect(wxWindow& parent)
{
    for (wxWindow* child : parent.GetChildren()) {
        if (!child->IsShown() || child->IsTopLevel())
            continue;
        m_shown.push_back(child);
        collect(*child);
    }
}

wxRect audited_window_t::get_seen_part(const wxWindow& window, wxRect place)
{
    for (const wxWindow* parent = window.GetParent(); parent; parent = parent->GetParent()) {
        place.Intersect(wx_helpers1::get_room_for_children(*parent));
        if (parent->IsTopLevel())
            break;
    }
    return place;
}

std::string audited_window_t::get_path(const wxWindow& window)
{
    const std::string name = wx_helpers1::from_wx(window.GetName());
    const wxWindow* parent = window.IsTopLevel() ? nullptr : window.GetParent();
    return parent ? get_path(*parent) + "/" + name : name;
}

void audited_window_t::add(const char* kind, const wxWindow& window, const std::string& detail)
{
    m_findings.push_back({kind, get_path(window), detail});
}

bool has_letters(const std::string& text)
{
    using CPIL_2_18::strings::direction_t;
    return CPIL_2_18::strings::has_letters(text, direction_t::left_to_right) ||
           CPIL_2_18::strings::has_letters(text, direction_t::right_to_left);
}

std::vector<audit_finding_t> audit_window(wxWindow* window)
{
    auto* top = wxDynamicCast(wxGetTopLevelParent(window), wxTopLevelWindow);
    if (!top || !top->IsShown())
        return {};
    audited_window_t audited(*top);
    audit_places(audited);
    audit_texts(audited);
    audit_names(audited);
    audit_keyboard(audited);
    return audited.take_findings();
}

} // namespace commondlg3
