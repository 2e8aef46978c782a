#include "page_stack.h"

#include "page_search.h"

#include <wx_helpers1/moving.h>

#include <wx/scrolwin.h>
#include <wx/sizer.h>

#include <algorithm>

namespace commondlg3 {
namespace {

// A row of buttons that wraps says that it could be narrower than it is: what hangs over the edge of the page
// could not be scrolled to.
void make_wide_enough(wxWindow& page)
{
    int right = 0;
    for (const wxWindow* child : page.GetChildren())
        if (child->IsShown())
            right = std::max(right, child->GetRect().GetRight() + 1);
    if (right > page.GetClientSize().x)
        page.SetMinSize(wxSize(right, wxDefaultCoord));
}

} // namespace

void page_stack_t::use(wxScrolledWindow* area)
{
    m_area = area;
    m_area->SetScrollRate(10, 10);
    m_out_of_sight = new wxPanel(m_area->GetParent());
    m_out_of_sight->Hide();
}

int page_stack_t::find(const std::string& name) const
{
    const auto found = std::find_if(m_pages.begin(), m_pages.end(),
                                    [&](const page_t& each) { return each.page->get_name() == name; });
    return found == m_pages.end() ? none : static_cast<int>(found - m_pages.begin());
}

page_stack_t::page_t& page_stack_t::need(int index)
{
    page_t& page = m_pages[index];
    if (page.window)
        return page;
    page.window = page.page->create(m_area);
    page.kept = page.page->get_settings();
    m_area->GetSizer()->Add(page.window, 1, wxEXPAND);
    page.texts.clear();
    page.window->Hide();
    return page;
}

const std::string& page_stack_t::get_texts(int index)
{
    page_t& page = m_pages[index];
    if (page.texts.empty())
        page.texts = to_searched(page.page->get_title() + "\n" + page.page->get_group() + "\n" +
                                 page.page->get_search_words() + "\n" +
                                 (page.window ? get_page_texts(*page.window) : std::string()));
    return page.texts;
}

bool page_stack_t::make_next()
{
    for (int i = 0; i < size(); ++i)
        if (!m_pages[i].window) {
            put(need(i), false);
            return true;
        }
    return false;
}

void page_stack_t::show(int page)
{
    need(page);
    if (m_shown != none)
        m_pages[m_shown].texts.clear(); // other ones may have come to stand on it
    m_shown = page;
    for (int i = 0; i < size(); ++i)
        put(m_pages[i], i == page);
    m_area->FitInside();
    m_area->Layout();
}

// The pages that are not seen stand elsewhere: the toolkit moves all that is in a window that scrolls, and
// complains of what is hidden.
void page_stack_t::put(const page_t& page, bool in_sight)
{
    if (!page.window)
        return;
    wxWindow* const place = in_sight ? static_cast<wxWindow*>(m_area) : m_out_of_sight;
    if (page.window->GetParent() == place) {
        page.window->Show(in_sight);
        return;
    }
    if (!in_sight)
        m_area->GetSizer()->Detach(page.window);
    page.window->Hide(); // it must not be seen in its new place before it has a size there
    wx_helpers1::move_window(page.window, place, in_sight);
    if (in_sight)
        m_area->GetSizer()->Add(page.window, 1, wxEXPAND);
}

void page_stack_t::look(int index)
{
    page_t& page = m_pages[index];
    page.changed = page.unwritten || (page.window && page.page->is_changed());
}

void page_stack_t::look_at_all()
{
    for (int i = 0; i < size(); ++i)
        look(i);
}

std::vector<int> page_stack_t::get_changed() const
{
    std::vector<int> changed;
    for (int i = 0; i < size(); ++i)
        if (m_pages[i].changed)
            changed.push_back(i);
    return changed;
}

void page_stack_t::forget_widths()
{
    for (const page_t& page : m_pages)
        if (page.window)
            page.window->SetMinSize(wxDefaultSize);
}

bool page_stack_t::fit()
{
    if (m_shown != none)
        make_wide_enough(*m_pages[m_shown].window);
    const wxSize needed = m_area ? m_area->GetSizer()->CalcMin() : wxSize();
    if (needed == m_fitted)
        return false;
    m_fitted = needed;
    m_area->FitInside();
    m_area->Layout();
    return true;
}

} // namespace commondlg3
