#pragma once

#include "vdxpropgrid2/property_grid.h"

#include <wx/dataview.h>

#include <functional>
#include <map>
#include <unordered_map>

namespace vdxpropgrid2 {

enum column_t : unsigned
{
    text_column,
    check_column,
    mark_column,
    more_column
};

/// What the toolkit's list asks about the rows: it asks only for those that can be seen, whatever their
/// number.
class grid_model_t : public wxDataViewVirtualListModel
{
public:
    grid_rows_t rows;
    std::unordered_map<row_key_t, row_mark_t> marks;
    std::map<row_mark_t::kind_t, wx_helpers1::wxStaticPicture> pictures;
    grid_texts_t texts;
    std::function<void(std::size_t row, bool checked)> on_checked;

    /// Null when there is none.
    const row_mark_t* find_mark(std::size_t row) const;
    /// Takes colours and pictures from the theme anew.
    void update_look();
    /// All rows are others.
    void reset() { Reset(static_cast<unsigned>(rows.size() + 1)); }
    /// Tells the view what became of the rows.
    void show(const rows_change_t& change);

    // Of the toolkit's list:
    unsigned GetColumnCount() const override { return more_column + 1; }
    wxString GetColumnType(unsigned column) const override;
    void GetValueByRow(wxVariant& value, unsigned row, unsigned column) const override;
    bool SetValueByRow(const wxVariant& value, unsigned row, unsigned column) override;
    bool GetAttrByRow(unsigned row, unsigned column, wxDataViewItemAttr& attributes) const override;
    bool HasValue(const wxDataViewItem& item, unsigned column) const override;

private:
    ~grid_model_t() override = default;

    std::map<row_mark_t::kind_t, wxBitmapBundle> m_bundles;
    wxColour m_error, m_warning, m_secondary;
};

} // namespace vdxpropgrid2
