#include "grid_model.h"

#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <string>

namespace vdxpropgrid2 {

using mark_kind_t = row_mark_t::kind_t;

const row_mark_t* grid_model_t::find_mark(std::size_t row) const
{
    if (row >= rows.size())
        return nullptr;
    const auto mark = marks.find(rows.at(row).key);
    return mark == marks.end() ? nullptr : &mark->second;
}

void grid_model_t::update_look()
{
    if (const auto* settings = wx_helpers1::ui_settings_t::get()) {
        m_error = settings->get_colour(wx_helpers1::ui_colour::error);
        m_warning = settings->get_colour(wx_helpers1::ui_colour::warning);
        m_secondary = settings->get_colour(wx_helpers1::ui_colour::secondary_text);
    }
    for (const auto& [kind, picture] : pictures) {
        const wxColour ink = kind == mark_kind_t::error     ? m_error
                             : kind == mark_kind_t::warning ? m_warning
                                                            : m_secondary;
        m_bundles[kind] = picture.is_empty() ? wxBitmapBundle() : picture.get_bundle(ink);
    }
}

// The list asks by number. A row that moves to the next place is two rows that changed; one that goes farther
// would be as many as it passes.
void grid_model_t::show(const rows_change_t& change)
{
    const auto at = static_cast<unsigned>(change.at);
    const auto to = static_cast<unsigned>(change.to);
    switch (change.kind) {
    case rows_change_t::kind_t::inserted:
        for (unsigned i = 0; i < change.count; ++i)
            RowInserted(at + i);
        break;
    case rows_change_t::kind_t::removed:
        for (std::size_t i = change.count; i > 0; --i)
            RowDeleted(at + static_cast<unsigned>(i - 1));
        break;
    case rows_change_t::kind_t::changed:
        for (unsigned i = 0; i < change.count; ++i)
            RowChanged(at + i);
        break;
    case rows_change_t::kind_t::moved:
        if (at + 1 == to || to + 1 == at) {
            RowChanged(at);
            RowChanged(to);
        } else {
            RowDeleted(at);
            RowInserted(to);
        }
        break;
    }
}

wxString grid_model_t::GetColumnType(unsigned column) const
{
    switch (column) {
    case text_column:
        return "wxDataViewIconText";
    case check_column:
        return "bool";
    default:
        return "string";
    }
}

void grid_model_t::GetValueByRow(wxVariant& value, unsigned row, unsigned column) const
{
    const row_mark_t* mark = find_mark(row);
    const bool is_row = row < rows.size();
    switch (column) {
    case text_column: {
        const auto bundle = m_bundles.find(mark ? mark->kind : mark_kind_t::none);
        wxString shown = wx_helpers1::to_label(is_row ? rows.at(row).text : texts.input_row);
        shown.Replace("\n", wxString::FromUTF8("\u21B5")); // every row would become as tall as this one
        value << wxDataViewIconText(shown, bundle == m_bundles.end() ? wxBitmapBundle() : bundle->second);
        break;
    }
    case check_column:
        value = is_row && rows.at(row).checked;
        break;
    case mark_column:
        value = wx_helpers1::to_label(mark ? mark->word : std::string());
        break;
    default:
        value = wx_helpers1::to_label(texts.more_header); // drawn as three dots
    }
}

// Texts come by the editor of cells, which knows their bytes.
bool grid_model_t::SetValueByRow(const wxVariant& value, unsigned row, unsigned column)
{
    if (column != check_column || row >= rows.size())
        return false;
    if (on_checked)
        on_checked(row, value.GetBool());
    return true;
}

bool grid_model_t::GetAttrByRow(unsigned row, unsigned column, wxDataViewItemAttr& attributes) const
{
    if (row >= rows.size()) {
        if (column != text_column)
            return false;
        attributes.SetColour(m_secondary);
        attributes.SetItalic(true);
        return true;
    }
    const row_mark_t* mark = find_mark(row);
    if (column != mark_column || !mark ||
        (mark->kind != mark_kind_t::error && mark->kind != mark_kind_t::warning))
        return false;
    attributes.SetColour(mark->kind == mark_kind_t::error ? m_error : m_warning);
    return true;
}

bool grid_model_t::HasValue(const wxDataViewItem& item, unsigned column) const
{
    return column != check_column || GetRow(item) < rows.size();
}

} // namespace vdxpropgrid2
