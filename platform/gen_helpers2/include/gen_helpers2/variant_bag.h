#pragma once

#include "gen_helpers2/export.h"
#include "gen_helpers2/variant.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace gen_helpers2 {

namespace _internal {

struct interned_name_t;

/// A name of which the process holds one copy, however many items bear it.
class GEN_HELPERS2_EXPORT interned_t
{
public:
    explicit interned_t(std::string_view name);
    interned_t(const interned_t& other) noexcept;
    interned_t(interned_t&& other) noexcept : m_name(std::exchange(other.m_name, nullptr)) {}
    interned_t& operator=(interned_t other) noexcept
    {
        std::swap(m_name, other.m_name);
        return *this;
    }
    ~interned_t();

    std::string_view view() const noexcept;
    bool same_as(const interned_t& other) const noexcept { return m_name == other.m_name; }

private:
    interned_name_t* m_name;
};

} // namespace _internal

/// An ordered list of named items; each is a value or again a bag ("child"). For settings, and for lists of
/// records that go to a file (see variant_bag_file.h).
///
/// A value's name is meant to be unique (put() replaces); children of the same name may be many. Looking a
/// name up goes through the items one by one: a bag is no dictionary for thousands of different names. Names
/// and texts are any bytes.
///
/// \code
/// variant_bag_t bag;
/// bag.put("title", "Open");
/// variant_bag_t& record = bag.add_child("record");
/// record.put("path", path.as_string());
/// bag.for_each_child("record", [](const variant_bag_t& r) {
/// use(r.get<variant_t>("path").get<std::string>()); }); \endcode
///
/// Ownership: a bag owns its items. References to a child stay valid while the child is in the bag, also when
/// others are added; pointers to values only until the bag is changed. Thread: like a standard container.
/// Nesting may be of any depth in memory; files have a limit.
class GEN_HELPERS2_EXPORT variant_bag_t
{
public:
    /// A value or a child, and its name.
    class item_t
    {
    public:
        /// A value.
        item_t(const _internal::interned_t& name, variant_t value) : m_name(name), m_value(std::move(value))
        {
        }
        /// A child, which the item owns.
        item_t(const _internal::interned_t& name, std::unique_ptr<variant_bag_t> child)
            : m_name(name), m_value(variant_t::child_t(), child.release())
        {
        }
        item_t(item_t&& other) noexcept = default;
        item_t& operator=(item_t&& other) noexcept
        {
            std::swap(m_name, other.m_name);
            std::swap(m_value, other.m_value);
            return *this;
        }
        ~item_t()
        {
            if (is_child())
                delete_child();
        }

        std::string_view name() const noexcept { return m_name.view(); }
        bool is_child() const noexcept { return m_value.m_type == variant_t::child_type; }
        bool is_value() const noexcept { return !is_child(); }
        /// The empty variant for a child.
        GEN_HELPERS2_EXPORT const variant_t& value() const noexcept;
        /// Null for a value.
        const variant_bag_t* child() const noexcept { return is_child() ? m_value.m_value.child : nullptr; }
        variant_bag_t* child() noexcept { return is_child() ? m_value.m_value.child : nullptr; }

    private:
        friend class variant_bag_t;
        GEN_HELPERS2_EXPORT void delete_child() noexcept;

        _internal::interned_t m_name;
        // Holds a child as well, as a type of its own: items are what a large bag consists of.
        variant_t m_value;
    };

    using items_t = std::vector<item_t>;
    using const_iterator = items_t::const_iterator;
    using iterator = items_t::iterator;

    variant_bag_t() noexcept = default;
    variant_bag_t(const variant_bag_t& other);
    variant_bag_t(variant_bag_t&& other) noexcept = default;
    variant_bag_t& operator=(const variant_bag_t& other);
    variant_bag_t& operator=(variant_bag_t&& other) noexcept;
    ~variant_bag_t();

    /// Replaces the first value of that name, or adds one at the end.
    void put(std::string_view name, variant_t value);
    /// Adds a value at the end without looking for one of the same name.
    void add_value(std::string_view name, variant_t value);
    /// Adds an empty child at the end.
    variant_bag_t& add_child(std::string_view name);
    variant_bag_t& add_child(std::string_view name, variant_bag_t child);

    /// T is variant_t or variant_bag_t.
    template <class T>
    bool has(std::string_view name) const noexcept;
    /// The first item of that name and kind, or an empty variant or bag.
    template <class T>
    const T& get(std::string_view name) const noexcept;

    /// Null if there is none.
    const variant_t* find_value(std::string_view name) const noexcept;
    /// The text of that name; none when there is no value, or one that is no text.
    /// @since 3.1
    std::optional<std::string> find_text(std::string_view name) const;
    /// The first child of that name; null when there is none. It is the bag's.
    const variant_bag_t* find_child(std::string_view name) const noexcept;
    /// The same, to be changed.
    variant_bag_t* find_child(std::string_view name) noexcept;

    /// Calls fn(const variant_bag_t&) for each child of that name, in their order.
    template <class F>
    void for_each_child(std::string_view name, F&& fn) const
    {
        for (const item_t& item : m_items)
            if (item.is_child() && item.name() == name)
                fn(*item.child());
    }

    /// Removes all values and children of that name; returns how many there were.
    std::size_t remove(std::string_view name);
    /// Removes everything.
    void clear() noexcept;
    /// Gives back the memory that is kept for more items.
    void shrink_to_fit() { m_items.shrink_to_fit(); }

    std::size_t size() const noexcept { return m_items.size(); }
    bool empty() const noexcept { return m_items.empty(); }
    const_iterator begin() const noexcept { return m_items.begin(); }
    const_iterator end() const noexcept { return m_items.end(); }
    iterator begin() noexcept { return m_items.begin(); }
    iterator end() noexcept { return m_items.end(); }

    /// Same items in the same order.
    friend bool operator==(const variant_bag_t& a, const variant_bag_t& b) { return equals(a, b); }
    friend bool operator!=(const variant_bag_t& a, const variant_bag_t& b) { return !equals(a, b); }

private:
    static bool equals(const variant_bag_t& a, const variant_bag_t& b);

    items_t m_items;
};

// clang-format off
template <> GEN_HELPERS2_EXPORT bool variant_bag_t::has<variant_t>(std::string_view name) const noexcept;
template <> GEN_HELPERS2_EXPORT bool variant_bag_t::has<variant_bag_t>(std::string_view name) const noexcept;
template <> GEN_HELPERS2_EXPORT const variant_t& variant_bag_t::get<variant_t>(std::string_view name) const noexcept;
template <> GEN_HELPERS2_EXPORT const variant_bag_t& variant_bag_t::get<variant_bag_t>(std::string_view name) const noexcept;
// clang-format on

} // namespace gen_helpers2

namespace gh2 = gen_helpers2;
