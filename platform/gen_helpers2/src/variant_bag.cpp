#include "gen_helpers2/variant_bag.h"

#include <algorithm>

namespace gen_helpers2 {

namespace {

const variant_t& empty_value() noexcept
{
    static const variant_t value;
    return value;
}

const variant_bag_t& empty_bag() noexcept
{
    static const variant_bag_t bag;
    return bag;
}

} // namespace

const variant_t& variant_bag_t::item_t::value() const noexcept
{
    return is_child() ? empty_value() : m_value;
}

void variant_bag_t::item_t::delete_child() noexcept
{
    delete m_value.m_value.child;
}

// Bags may be nested deeper than the stack is: nothing here calls itself for a child.

variant_bag_t::~variant_bag_t()
{
    clear();
}

void variant_bag_t::clear() noexcept
{
    items_t pending;
    pending.swap(m_items);
    // Children that have children themselves are taken apart before their turn comes; the others go with the
    // list.
    for (std::size_t i = 0; i < pending.size(); ++i) {
        items_t level;
        if (pending[i].is_child())
            level.swap(pending[i].child()->m_items);
        for (item_t& item : level)
            if (item.is_child() && !item.child()->empty())
                pending.push_back(std::move(item));
    }
}

variant_bag_t& variant_bag_t::operator=(variant_bag_t&& other) noexcept
{
    if (this != &other) {
        // `other` may be inside of this.
        items_t items;
        items.swap(other.m_items);
        clear();
        m_items.swap(items);
    }
    return *this;
}

variant_bag_t::variant_bag_t(const variant_bag_t& other)
{
    std::vector<std::pair<const variant_bag_t*, variant_bag_t*>> pending{{&other, this}};
    while (!pending.empty()) {
        const auto [from, to] = pending.back();
        pending.pop_back();
        to->m_items.reserve(from->m_items.size());
        for (const item_t& item : from->m_items) {
            if (item.is_value()) {
                to->m_items.emplace_back(item.m_name, item.m_value);
                continue;
            }
            to->m_items.emplace_back(item.m_name, std::make_unique<variant_bag_t>());
            if (!item.child()->empty())
                pending.emplace_back(item.child(), to->m_items.back().child());
        }
    }
}

variant_bag_t& variant_bag_t::operator=(const variant_bag_t& other)
{
    if (this != &other)
        *this = variant_bag_t(other);
    return *this;
}

bool variant_bag_t::equals(const variant_bag_t& first, const variant_bag_t& second)
{
    std::vector<std::pair<const variant_bag_t*, const variant_bag_t*>> pending{{&first, &second}};
    while (!pending.empty()) {
        const auto [a, b] = pending.back();
        pending.pop_back();
        if (a->size() != b->size())
            return false;
        for (std::size_t i = 0; i < a->size(); ++i) {
            const item_t& x = a->m_items[i];
            const item_t& y = b->m_items[i];
            if (!x.m_name.same_as(y.m_name) || x.is_child() != y.is_child())
                return false;
            if (x.is_value() && x.m_value != y.m_value)
                return false;
            if (x.is_child() && !(x.child()->empty() && y.child()->empty()))
                pending.emplace_back(x.child(), y.child());
        }
    }
    return true;
}

void variant_bag_t::put(std::string_view name, variant_t value)
{
    for (item_t& item : m_items) {
        if (item.is_value() && item.name() == name) {
            item.m_value = std::move(value);
            return;
        }
    }
    add_value(name, std::move(value));
}

void variant_bag_t::add_value(std::string_view name, variant_t value)
{
    m_items.emplace_back(_internal::interned_t(name), std::move(value));
}

variant_bag_t& variant_bag_t::add_child(std::string_view name)
{
    return add_child(name, variant_bag_t());
}

variant_bag_t& variant_bag_t::add_child(std::string_view name, variant_bag_t child)
{
    m_items.emplace_back(_internal::interned_t(name), std::make_unique<variant_bag_t>(std::move(child)));
    return *m_items.back().child();
}

const variant_t* variant_bag_t::find_value(std::string_view name) const noexcept
{
    for (const item_t& item : m_items)
        if (item.is_value() && item.name() == name)
            return &item.m_value;
    return nullptr;
}

std::optional<std::string> variant_bag_t::find_text(std::string_view name) const
{
    const variant_t* value = find_value(name);
    if (!value || !value->can_get<std::string>())
        return std::nullopt;
    return value->get<std::string>();
}

const variant_bag_t* variant_bag_t::find_child(std::string_view name) const noexcept
{
    for (const item_t& item : m_items)
        if (item.is_child() && item.name() == name)
            return item.child();
    return nullptr;
}

variant_bag_t* variant_bag_t::find_child(std::string_view name) noexcept
{
    return const_cast<variant_bag_t*>(static_cast<const variant_bag_t*>(this)->find_child(name));
}

template <>
bool variant_bag_t::has<variant_t>(std::string_view name) const noexcept
{
    return find_value(name) != nullptr;
}

template <>
bool variant_bag_t::has<variant_bag_t>(std::string_view name) const noexcept
{
    return find_child(name) != nullptr;
}

template <>
const variant_t& variant_bag_t::get<variant_t>(std::string_view name) const noexcept
{
    const variant_t* value = find_value(name);
    return value ? *value : empty_value();
}

template <>
const variant_bag_t& variant_bag_t::get<variant_bag_t>(std::string_view name) const noexcept
{
    const variant_bag_t* child = find_child(name);
    return child ? *child : empty_bag();
}

std::size_t variant_bag_t::remove(std::string_view name)
{
    const auto first = std::stable_partition(m_items.begin(), m_items.end(),
                                             [name](const item_t& i) { return i.name() != name; });
    const auto removed = static_cast<std::size_t>(m_items.end() - first);
    m_items.erase(first, m_items.end());
    return removed;
}

} // namespace gen_helpers2
