#include "vdxpropgrid2/grid_rows.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace vdxpropgrid2 {
namespace {

using change_kind_t = rows_change_t::kind_t;

constexpr std::size_t most_steps = 200;

std::ptrdiff_t signed_of(std::size_t index)
{
    return static_cast<std::ptrdiff_t>(index);
}

} // namespace

std::size_t grid_rows_t::find(row_key_t key) const
{
    const auto has_key = [key](const row_t& row) { return row.key == key; };
    const auto hint = m_rows.begin() + signed_of(std::min(m_last_found, m_rows.size()));
    auto found = std::find_if(hint, m_rows.end(), has_key);
    if (found == m_rows.end()) {
        found = std::find_if(m_rows.begin(), hint, has_key);
        if (found == hint)
            return m_rows.size();
    }
    m_last_found = static_cast<std::size_t>(found - m_rows.begin());
    return m_last_found;
}

void grid_rows_t::assign(std::vector<row_t> rows)
{
    m_done.clear();
    m_undone.clear();
    for (const row_t& row : rows)
        m_last_key = std::max(m_last_key, row.key);
    for (row_t& row : rows)
        if (row.key == no_key)
            row.key = next_key();
    m_rows = std::move(rows);
}

// An operation holds what it takes to do the opposite: done and undone, it is toggled.
rows_change_t grid_rows_t::toggle(operation_t& operation)
{
    const auto place = m_rows.begin() + signed_of(operation.at);
    rows_change_t change{operation.kind, operation.at, std::max<std::size_t>(operation.rows.size(), 1),
                         operation.to};
    switch (operation.kind) {
    case change_kind_t::inserted:
        m_rows.insert(place, std::make_move_iterator(operation.rows.begin()),
                      std::make_move_iterator(operation.rows.end()));
        operation.kind = change_kind_t::removed;
        break;
    case change_kind_t::removed: {
        const auto end = place + signed_of(operation.rows.size());
        std::move(place, end, operation.rows.begin());
        m_rows.erase(place, end);
        operation.kind = change_kind_t::inserted;
        break;
    }
    case change_kind_t::changed:
        std::swap(*place, operation.rows.front());
        break;
    case change_kind_t::moved: {
        const auto to = m_rows.begin() + signed_of(operation.to);
        if (operation.at < operation.to)
            std::rotate(place, place + 1, to + 1);
        else
            std::rotate(to, place, place + 1);
        std::swap(operation.at, operation.to);
        break;
    }
    }
    return change;
}

grid_rows_t::change_t grid_rows_t::perform(operation_t operation)
{
    m_undone.clear();
    const change_t change = toggle(operation);
    m_done.push_back(std::move(operation));
    if (m_done.size() > most_steps)
        m_done.erase(m_done.begin());
    return change;
}

grid_rows_t::change_t grid_rows_t::insert(std::size_t at, std::vector<row_t> rows)
{
    if (at > m_rows.size() || rows.empty())
        return {};
    for (row_t& row : rows)
        row.key = next_key();
    return perform({change_kind_t::inserted, at, at, std::move(rows)});
}

grid_rows_t::change_t grid_rows_t::remove(std::size_t at, std::size_t count)
{
    if (count == 0 || at >= m_rows.size() || count > m_rows.size() - at)
        return {};
    return perform({change_kind_t::removed, at, at, std::vector<row_t>(count)});
}

grid_rows_t::change_t grid_rows_t::set_text(std::size_t at, const std::string& text)
{
    if (at >= m_rows.size() || m_rows[at].text == text)
        return {};
    row_t changed = m_rows[at];
    changed.text = text;
    return perform({change_kind_t::changed, at, at, {std::move(changed)}});
}

grid_rows_t::change_t grid_rows_t::set_checked(std::size_t at, bool checked)
{
    if (at >= m_rows.size() || m_rows[at].checked == checked)
        return {};
    row_t changed = m_rows[at];
    changed.checked = checked;
    return perform({change_kind_t::changed, at, at, {std::move(changed)}});
}

grid_rows_t::change_t grid_rows_t::move(std::size_t from, std::size_t to)
{
    if (from >= m_rows.size() || to >= m_rows.size() || from == to)
        return {};
    return perform({change_kind_t::moved, from, to, {}});
}

grid_rows_t::change_t grid_rows_t::undo()
{
    if (m_done.empty())
        return {};
    m_undone.push_back(std::move(m_done.back()));
    m_done.pop_back();
    return toggle(m_undone.back());
}

grid_rows_t::change_t grid_rows_t::redo()
{
    if (m_undone.empty())
        return {};
    m_done.push_back(std::move(m_undone.back()));
    m_undone.pop_back();
    return toggle(m_done.back());
}

} // namespace vdxpropgrid2
