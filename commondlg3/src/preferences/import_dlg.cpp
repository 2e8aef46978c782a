#include "import_dlg.h"

#include "commondlg3/resources.h"
#include "commondlg3/text_utils.h"

#include <cpil/catalog.h>
#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/enabling.h>
#include <wx_helpers1/label.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/dataview.h>
#include <wx/stattext.h>

#include <utility>

namespace commondlg3 {
namespace {

// In characters of the present font.
constexpr int import_columns = 90;
constexpr int import_lines = 22;

} // namespace

import_dlg_t::import_dlg_t(std::vector<row_t> rows) : m_rows(std::move(rows))
{
    set_resource_object("dlg.import_settings");
}

void import_dlg_t::on_init_dialog()
{
    m_list = from_xrc<wxDataViewListCtrl>(this, "m_changes");
    auto* heading = from_xrc<wxStaticText>(this, "m_heading");
    if (!m_list || !heading || !m_btn_ok)
        return;
    wx_helpers1::set_label_text(
        heading, translate_message("import.heading", {{"count", static_cast<int>(m_rows.size())}}));
    wx_helpers1::set_accessible_name(m_list, translate_message("import.list"));
    const int width = GetCharWidth();
    const auto title = [](const char* key) { return wx_helpers1::to_label(translate_message(key)); };
    m_list->AppendToggleColumn(title(CPIL_2_18::i18n::catalog_key("import.column.take")));
    m_list->AppendTextColumn(title(CPIL_2_18::i18n::catalog_key("import.column.page")), wxDATAVIEW_CELL_INERT,
                             18 * width);
    m_list->AppendTextColumn(title(CPIL_2_18::i18n::catalog_key("import.column.setting")),
                             wxDATAVIEW_CELL_INERT, 22 * width);
    m_list->AppendTextColumn(title(CPIL_2_18::i18n::catalog_key("import.column.before")),
                             wxDATAVIEW_CELL_INERT, 20 * width);
    m_list->AppendTextColumn(title(CPIL_2_18::i18n::catalog_key("import.column.after")),
                             wxDATAVIEW_CELL_INERT, 20 * width);
    for (const row_t& row : m_rows) {
        wxVector<wxVariant> cells;
        cells.push_back(true);
        for (const std::string* text : {&row.title, &row.change.title, &row.change.before, &row.change.after})
            cells.push_back(wx_helpers1::to_label(*text));
        m_list->AppendItem(cells);
    }
    m_list->Bind(wxEVT_DATAVIEW_ITEM_VALUE_CHANGED, [this](wxDataViewEvent& event) {
        event.Skip();
        update();
    });
    m_list->SetMinSize(wxSize(import_columns * width, import_lines * GetCharHeight()));
    fit_to_contents();
    keep_on_screen(m_list);
    centre_on_parent();
    update();
    m_list->SetFocus();
    if (!m_rows.empty())
        m_list->SelectRow(0);
}

void import_dlg_t::update()
{
    bool any = false;
    for (unsigned i = 0; i < m_rows.size(); ++i)
        any = any || m_list->GetToggleValue(i, 0);
    wx_helpers1::set_enabled(m_btn_ok, any, m_btn_cancel);
}

void import_dlg_t::on_ok()
{
    for (unsigned i = 0; i < m_rows.size(); ++i)
        if (m_list->GetToggleValue(i, 0))
            m_chosen[m_rows[i].page].push_back(m_rows[i].change.name);
}

} // namespace commondlg3
