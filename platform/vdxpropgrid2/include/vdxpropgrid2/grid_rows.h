#pragma once

#include "vdxpropgrid2/export.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vdxpropgrid2 {

/// Tells a row from all others for as long as its grid lives, wherever it is moved and even when it is
/// removed and brought back. Never 0.
using row_key_t = std::int64_t;
/// The key of a row that has none yet.
constexpr row_key_t no_key = 0;

/// A row of an editable list.
struct row_t
{
    std::string text;       ///< bytes
    bool checked = false;   ///< for grids with a column of check boxes
    row_key_t key = no_key; ///< no_key: the grid gives it one

    friend bool operator==(const row_t& a, const row_t& b)
    {
        return a.key == b.key && a.text == b.text && a.checked == b.checked;
    }
};

/// What an operation did to the rows, for whoever shows them.
struct rows_change_t
{
    /// What was done.
    enum class kind_t
    {
        inserted, ///< `count` rows from `at` on are new
        removed,  ///< `count` rows that began at `at` are gone
        changed,  ///< `count` rows from `at` on have another text or check mark
        moved     ///< the row at `at` now stands at `to`
    };
    kind_t kind = kind_t::changed;
    std::size_t at = 0;
    std::size_t count = 0;
    std::size_t to = 0;
};

/// The rows of an editable list, and the way back: every operation can be undone and done again.
///
///     grid_rows_t rows;
///     rows.insert(0, {{"/usr/lib"}, {"/lib"}});
///     rows.move(1, 0);
///     rows.undo();                                  // "/usr/lib" first again
///
/// Plain data without a window. Each operation answers what it did, and nothing where there is no such place
/// or nothing to change. A step back costs what the operation cost; the last 200 are remembered. Any thread,
/// one at a time.
class VDXPROPGRID2_EXPORT grid_rows_t
{
public:
    using change_t = std::optional<rows_change_t>;

    std::size_t size() const { return m_rows.size(); }
    /// The row at a place, which must be one.
    const row_t& at(std::size_t index) const { return m_rows.at(index); }
    /// All rows.
    const std::vector<row_t>& get() const { return m_rows; }
    /// size() when there is none of that key. Takes time with the number of rows, but none when keys are
    /// asked for in the order of the rows.
    std::size_t find(row_key_t key) const;

    /// Other rows altogether; there is no way back. Rows keep the keys that they bring.
    void assign(std::vector<row_t> rows);

    /// One step, whatever their number.
    change_t insert(std::size_t at, std::vector<row_t> rows);
    /// Takes rows away, as one step.
    change_t remove(std::size_t at, std::size_t count = 1);
    /// Another text of a row.
    change_t set_text(std::size_t at, const std::string& text);
    /// Ticks a row's box, or clears it.
    change_t set_checked(std::size_t at, bool checked);
    /// Takes a row out and puts it where it then stands at `to`.
    change_t move(std::size_t from, std::size_t to);

    bool can_undo() const { return !m_done.empty(); }
    bool can_redo() const { return !m_undone.empty(); }
    /// Goes one step back.
    change_t undo();
    /// Does what was undone last once more.
    change_t redo();

private:
    struct operation_t
    {
        rows_change_t::kind_t kind;
        std::size_t at;
        std::size_t to;
        std::vector<row_t> rows; ///< of a change: the other state of the row
    };

    rows_change_t toggle(operation_t& operation);
    change_t perform(operation_t operation);
    row_key_t next_key() { return ++m_last_key; }

    std::vector<row_t> m_rows;
    std::vector<operation_t> m_done;
    std::vector<operation_t> m_undone;
    row_key_t m_last_key = no_key;
    mutable std::size_t m_last_found = 0;
};

} // namespace vdxpropgrid2
