#include "page_frame.h"

#include "missing_resource.h"

#include <commondlg3/resources.h>

#include <wx/sizer.h>

#include <string>

namespace gallery {
namespace {

wxWindow* first_control(wxWindow* parent)
{
    for (wxWindow* child : parent->GetChildren()) {
        if (!child->IsShown() || !child->IsEnabled())
            continue;
        if (wxWindow* inside = first_control(child))
            return inside;
        if (child->GetChildren().empty() && child->AcceptsFocusFromKeyboard())
            return child;
    }
    return nullptr;
}

} // namespace

page_frame_t::page_frame_t(commondlg3::pref_base_t* page, const std::string& title)
    : m_page(page), m_title(title)
{
    set_resource_file(resource_file());
    m_catalog_name = "gallery";
    set_resource_object("dlg.page_frame");
}

void page_frame_t::on_init_dialog()
{
    set_title(m_title);
    m_page->create(this);
    need_sizer()->Insert(0, m_page, 1, wxEXPAND);
    wxWindow* first_child = GetChildren().GetFirst()->GetData();
    if (first_child != m_page)
        m_page->MoveBeforeInTabOrder(first_child);
    fit();
    centre_on_parent();
    Bind(wxEVT_IDLE, &page_frame_t::on_idle, this);
    // The toolkit's first focus would go by where controls are; the page's order counts.
    if (wxWindow* first = first_control(m_page))
        first->SetFocus();
}

void page_frame_t::fit()
{
    constexpr int comfortable_width = 560;
    fit_to_contents(comfortable_width);
    keep_on_screen(m_page);
}

// A page may come to say more than it did when it was opened.
void page_frame_t::on_idle(wxIdleEvent& event)
{
    event.Skip();
    if (m_page->GetParent() == this && GetSizer()->CalcMin().y > GetClientSize().y)
        fit();
}

void page_frame_t::handle_ok(wxCommandEvent&)
{
    m_page->on_ok();
    m_page->end_dialog(wxID_OK);
    end_dialog(wxID_OK);
}

void page_frame_t::on_cancel()
{
    m_page->on_cancel();
    m_page->end_dialog(wxID_CANCEL);
}

} // namespace gallery
