#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace gen_helpers2 {

/// A list that is handed out: it is walked from front to end, once for each copy.
///
///     for (auto it = data.get_editors(language); it.is_valid(); ++it)
///         show(it->display_name);
///     for (const auto& editor : data.get_editors(language)) ...
///
/// The items belong to the iterator and its copies, which share them: changing what they came from changes
/// nothing here. Thread: copies may be used in different threads.
template <class T>
class generic_iterator_t
{
public:
    /// At the end of nothing.
    generic_iterator_t() = default;
    explicit generic_iterator_t(std::vector<T> items)
        : m_items(std::make_shared<const std::vector<T>>(std::move(items)))
    {
    }

    /// Whether it stands on an item; only then may that be looked at.
    bool is_valid() const noexcept { return size() != 0; }
    const T& operator*() const { return *begin(); }
    const T* operator->() const { return begin(); }
    /// Does nothing at the end.
    generic_iterator_t& operator++()
    {
        if (is_valid())
            ++m_position;
        return *this;
    }

    /// How many items are left, the present one included.
    std::size_t size() const noexcept { return m_items ? m_items->size() - m_position : 0; }
    /// The items that are left.
    const T* begin() const noexcept { return m_items ? m_items->data() + m_position : nullptr; }
    const T* end() const noexcept { return m_items ? m_items->data() + m_items->size() : nullptr; }

private:
    std::shared_ptr<const std::vector<T>> m_items;
    std::size_t m_position = 0;
};

} // namespace gen_helpers2

namespace gh2 = gen_helpers2;
