#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vdxcfrw7 {

/// Heights one below the other: where is the n-th, which one is at y. A tree of sums, so that both, and
/// changing a height, take a few steps whatever the number.
class height_index_t
{
public:
    std::size_t size() const { return m_heights.size(); }
    std::int64_t total() const { return m_total; }
    std::int64_t get(std::size_t index) const { return m_heights[index]; }

    void append(std::int64_t height);
    void set(std::size_t index, std::int64_t height);
    /// Moves those after it up.
    void erase(std::size_t index);
    void clear();

    std::int64_t top_of(std::size_t index) const;
    /// The one at y; the first above the top, the last below the end. There must be one.
    std::size_t index_at(std::int64_t y) const;

private:
    void rebuild() const;

    std::vector<std::int64_t> m_heights;
    mutable std::vector<std::int64_t> m_tree; // sums over ranges that end at each index
    mutable bool m_stale = false;
    std::int64_t m_total = 0;
};

} // namespace vdxcfrw7
