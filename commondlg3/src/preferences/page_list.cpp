#include "page_list.h"

#include <wx_helpers1/list_cursor.h>
#include <wx_helpers1/text.h>

#include <wx/dataview.h>
#include <wx/settings.h>

#include <algorithm>

namespace commondlg3 {
namespace {

constexpr char dot[] = " \xE2\x80\xA2";

wxString text_of_row(const page_list_t::row_t& row, bool changed)
{
    return wx_helpers1::to_label(changed ? row.title + dot : row.title);
}

} // namespace

page_list_t::page_list_t(wxDataViewTreeCtrl* control)
    : m_control(control), m_least_width(control->GetMinSize().x)
{
    // The column that the control comes with lets users edit the titles.
    m_control->ClearColumns();
    m_control->AppendIconTextColumn(wxString(), 0, wxDATAVIEW_CELL_INERT, wxCOL_WIDTH_DEFAULT, wxALIGN_NOT,
                                    0);
    m_control->Bind(wxEVT_DATAVIEW_SELECTION_CHANGED, &page_list_t::on_selection, this);
    // A heading that is closed would hide pages that a search has found.
    m_control->Bind(wxEVT_DATAVIEW_ITEM_COLLAPSING, [](wxDataViewEvent& event) { event.Veto(); });
}

void page_list_t::show(const std::vector<row_t>& rows)
{
    const auto same = [](const row_t& a, const row_t& b) { return a.page == b.page; };
    if (!rows.empty() && std::equal(rows.begin(), rows.end(), m_rows.begin(), m_rows.end(), same))
        return; // most keys of a search change nothing
    const int before = m_selected;
    m_control->DeleteAllItems();
    m_rows = rows;
    m_items.clear();
    m_headings.clear();
    m_changed.assign(rows.size(), false);
    wxDataViewItem heading;
    std::string group;
    for (const row_t& row : rows) {
        if (row.group != group) {
            group = row.group;
            heading = group.empty()
                          ? wxDataViewItem()
                          : m_control->AppendContainer(wxDataViewItem(), wx_helpers1::to_label(group));
        }
        m_headings.push_back(heading.GetID());
        // The toolkit puts what can have something below it before what cannot, whatever the order.
        const wxString title = text_of_row(row, false);
        const auto item = heading.IsOk() ? m_control->AppendItem(heading, title)
                                         : m_control->AppendContainer(wxDataViewItem(), title);
        m_items.push_back(item.GetID());
    }
    refresh_icons();
    for (void* each : m_headings)
        if (each)
            m_control->Expand(wxDataViewItem(each));
    m_selected = none;
    select(before);
}

void page_list_t::refresh_icons()
{
    for (std::size_t i = 0; i < m_rows.size(); ++i)
        if (!m_rows[i].icon.is_empty())
            m_control->SetItemIcon(wxDataViewItem(m_items[i]), m_rows[i].icon.get_bundle());
}

void page_list_t::mark_changed(int page, bool changed)
{
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        if (m_rows[i].page != page || m_changed[i] == changed)
            continue;
        m_changed[i] = changed;
        m_control->SetItemText(wxDataViewItem(m_items[i]), text_of_row(m_rows[i], changed));
    }
}

void page_list_t::select(int page)
{
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        if (m_rows[i].page != page)
            continue;
        const wxDataViewItem item(m_items[i]);
        m_selected = page;
        m_control->Select(item);
        wx_helpers1::move_cursor_to_selection(m_control);
        return;
    }
    m_selected = none;
    m_control->UnselectAll();
}

void page_list_t::set_focus()
{
    m_control->SetFocus();
}

void page_list_t::fit_width()
{
    const int character = m_control->GetCharWidth();
    int widest = 0;
    for (std::size_t i = 0; i < m_rows.size(); ++i) {
        const int indent = m_headings[i] ? 2 * character : 0;
        const int icon = m_rows[i].icon.is_empty() ? 0 : m_rows[i].icon.get_size().x + character;
        widest = std::max(widest, m_control->GetTextExtent(text_of_row(m_rows[i], true)).x + indent + icon);
        widest = std::max(widest, m_control->GetTextExtent(wx_helpers1::to_label(m_rows[i].group)).x);
    }
    // The expander before each row, the bar beside them, and some air.
    const int around = wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, m_control) + 5 * character;
    m_control->SetMinSize(wxSize(std::max(m_least_width, widest + around), m_control->GetMinSize().y));
}

int page_list_t::find(const wxDataViewItem& item) const
{
    const auto at = std::find(m_items.begin(), m_items.end(), item.GetID());
    return at == m_items.end() ? none : static_cast<int>(at - m_items.begin());
}

// A heading is no page: the arrow keys pass over it, and a click on it leads to its first page.
void page_list_t::on_selection(wxDataViewEvent& event)
{
    if (!event.GetItem().IsOk()) {
        // Typed letters that no title begins with, or Ctrl and a click, leave no row selected; the page is still seen.
        m_control->CallAfter([this] {
            if (!m_control->HasSelection())
                select(m_selected);
        });
        return;
    }
    int row = find(event.GetItem());
    if (row == none) {
        const auto heading = std::find(m_headings.begin(), m_headings.end(), event.GetItem().GetID());
        if (heading == m_headings.end())
            return;
        row = static_cast<int>(heading - m_headings.begin());
        if (row > 0 && m_rows[row].page == m_selected)
            --row; // from the first page below it upwards
        // Now the toolkit would put its cursor back onto the heading.
        m_control->CallAfter([this, page = m_rows[row].page] { select(page); });
    }
    m_selected = m_rows[row].page;
    m_selected_signal.emit(m_selected);
}

} // namespace commondlg3
