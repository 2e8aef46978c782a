#include "height_index.h"

namespace vdxcfrw7 {
namespace {

std::size_t lowest_bit(std::size_t n)
{
    return n & (~n + 1);
}

} // namespace

void height_index_t::append(std::int64_t height)
{
    m_heights.push_back(height);
    m_total += height;
    if (m_stale)
        return;
    const std::size_t n = m_heights.size();
    std::int64_t sum = height;
    for (std::size_t below = n - 1, stop = n - lowest_bit(n); below > stop; below -= lowest_bit(below))
        sum += m_tree[below - 1];
    m_tree.push_back(sum);
}

void height_index_t::set(std::size_t index, std::int64_t height)
{
    const std::int64_t change = height - m_heights[index];
    if (change == 0)
        return;
    m_heights[index] = height;
    m_total += change;
    if (m_stale)
        return;
    for (std::size_t n = index + 1; n <= m_tree.size(); n += lowest_bit(n))
        m_tree[n - 1] += change;
}

void height_index_t::erase(std::size_t index)
{
    m_total -= m_heights[index];
    m_heights.erase(m_heights.begin() + static_cast<std::ptrdiff_t>(index));
    m_stale = true; // erasing many costs one new tree
}

void height_index_t::clear()
{
    m_heights.clear();
    m_tree.clear();
    m_stale = false;
    m_total = 0;
}

void height_index_t::rebuild() const
{
    m_tree = m_heights;
    for (std::size_t n = 1; n <= m_tree.size(); ++n)
        if (const std::size_t next = n + lowest_bit(n); next <= m_tree.size())
            m_tree[next - 1] += m_tree[n - 1];
    m_stale = false;
}

std::int64_t height_index_t::top_of(std::size_t index) const
{
    if (m_stale)
        rebuild();
    std::int64_t top = 0;
    for (std::size_t n = index; n > 0; n -= lowest_bit(n))
        top += m_tree[n - 1];
    return top;
}

std::size_t height_index_t::index_at(std::int64_t y) const
{
    if (m_stale)
        rebuild();
    std::size_t position = 0, step = 1;
    while (step * 2 <= m_tree.size())
        step *= 2;
    for (; step > 0; step /= 2)
        if (position + step <= m_tree.size() && m_tree[position + step - 1] <= y) {
            position += step;
            y -= m_tree[position - 1];
        }
    return position < m_heights.size() ? position : m_heights.size() - 1;
}

} // namespace vdxcfrw7
