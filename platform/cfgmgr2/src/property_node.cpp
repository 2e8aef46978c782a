#include "property_node.h"
#include "gen_helpers2/variant_bag_file.h"

#include <algorithm>
#include <deque>
#include <map>
#include <unordered_map>

namespace cfgmgr2 {

using gen_helpers2::variant_bag_t;
using gen_helpers2::variant_t;

namespace {

template <class List>
auto find_named(List& list, const std::string& name)
{
    return std::find_if(list.begin(), list.end(), [&name](const auto& item) { return item.first == name; });
}

std::map<std::string, std::vector<const variant_bag_t*>> children_by_name(const variant_bag_t& bag,
                                                                          std::vector<std::string>& order)
{
    std::map<std::string, std::vector<const variant_bag_t*>> groups;
    for (const variant_bag_t::item_t& item : bag) {
        if (!item.is_child())
            continue;
        auto& group = groups[std::string(item.name())];
        if (group.empty())
            order.emplace_back(item.name());
        group.push_back(item.child());
    }
    return groups;
}

} // namespace

std::vector<property_node_t::node_ptr_t> property_node_t::children_of(const std::string& name) const
{
    std::vector<node_ptr_t> found;
    for (const child_t& child : m_children)
        if (child.name == name)
            found.push_back(child.node);
    return found;
}

property_node_t::node_ptr_t property_node_t::get_child(const std::string& name)
{
    for (const child_t& child : m_children)
        if (child.name == name)
            return child.node;
    m_children.push_back({name, std::make_shared<property_node_t>()});
    return m_children.back().node;
}

bool property_node_t::has_child(const std::string& name) const
{
    return std::any_of(m_children.begin(), m_children.end(),
                       [&name](const child_t& c) { return c.name == name; });
}

void property_node_t::drop_children(const std::string& name)
{
    m_children.erase(std::remove_if(m_children.begin(), m_children.end(),
                                    [&name](const child_t& c) { return c.name == name; }),
                     m_children.end());
}

void property_node_t::remove_child(const std::string& name)
{
    drop_children(name);
    m_removed_children.insert(name);
}

std::vector<std::string> property_node_t::child_names() const
{
    std::vector<std::string> names;
    std::set<std::string> seen;
    for (const child_t& child : m_children)
        if (seen.insert(child.name).second)
            names.push_back(child.name);
    return names;
}

void property_node_t::set_value(const std::string& name, const variant_t& value)
{
    const auto found = find_named(m_values, name);
    if (found == m_values.end())
        m_values.emplace_back(name, value);
    else if (found->second == value)
        return;
    else
        found->second = value;
    m_changed_values.insert(name);
}

const variant_t* property_node_t::find_value(const std::string& name) const
{
    const auto found = find_named(m_values, name);
    return found == m_values.end() ? nullptr : &found->second;
}

void property_node_t::remove_value(const std::string& name)
{
    const auto found = find_named(m_values, name);
    if (found == m_values.end())
        return;
    m_values.erase(found);
    m_changed_values.insert(name);
}

std::vector<std::string> property_node_t::value_names() const
{
    std::vector<std::string> names;
    for (const auto& value : m_values)
        names.push_back(value.first);
    return names;
}

void property_node_t::to_bag(variant_bag_t& bag) const
{
    for (const auto& [name, value] : m_values)
        bag.add_value(name, value);
    for (const child_t& child : m_children)
        child.node->to_bag(bag.add_child(child.name));
}

bool property_node_t::assign(const variant_bag_t& bag, std::size_t depth)
{
    // Nodes of a name are used again in their order, by children that may be thousands.
    std::unordered_map<std::string, std::deque<node_ptr_t>> before;
    for (child_t& child : m_children)
        before[child.name].push_back(std::move(child.node));
    m_children.clear();
    m_values.clear();
    bool complete = true;
    for (const variant_bag_t::item_t& item : bag) {
        const std::string name(item.name());
        if (item.is_value()) {
            if (!find_value(name))
                m_values.emplace_back(name, item.value());
        } else if (depth >= gen_helpers2::max_bag_nesting) {
            complete = false;
        } else {
            const auto old = before.find(name);
            node_ptr_t node;
            if (old != before.end() && !old->second.empty()) {
                node = std::move(old->second.front());
                old->second.pop_front();
            } else {
                node = std::make_shared<property_node_t>();
            }
            complete = node->assign(*item.child(), depth + 1) && complete;
            m_children.push_back({name, std::move(node)});
        }
    }
    return complete;
}

void property_node_t::merge_values(const variant_bag_t& theirs)
{
    m_values.erase(std::remove_if(m_values.begin(), m_values.end(),
                                  [&](const auto& value) {
                                      return m_changed_values.count(value.first) == 0 &&
                                             !theirs.has<variant_t>(value.first);
                                  }),
                   m_values.end());
    for (const variant_bag_t::item_t& item : theirs) {
        const std::string name(item.name());
        if (item.is_child() || m_changed_values.count(name) != 0)
            continue;
        const auto found = find_named(m_values, name);
        if (found == m_values.end())
            m_values.emplace_back(name, item.value());
        else
            found->second = item.value();
    }
}

void property_node_t::merge_children(const std::string& name, const std::vector<const variant_bag_t*>& theirs,
                                     std::size_t depth)
{
    const std::vector<node_ptr_t> ours = children_of(name);
    if (ours.size() == 1 && theirs.size() == 1) {
        ours.front()->merge(*theirs.front(), depth + 1);
        return;
    }
    // Which of several is which cannot be told: they are one thing.
    if (std::any_of(ours.begin(), ours.end(), [](const node_ptr_t& node) { return node->is_changed(); }))
        return;
    drop_children(name);
    for (std::size_t i = 0; i < theirs.size(); ++i) {
        node_ptr_t node = i < ours.size() ? ours[i] : std::make_shared<property_node_t>();
        node->assign(*theirs[i], depth + 1);
        m_children.push_back({name, std::move(node)});
    }
}

void property_node_t::merge(const variant_bag_t& theirs, std::size_t depth)
{
    if (m_replaced)
        return;
    merge_values(theirs);
    if (depth >= gen_helpers2::max_bag_nesting)
        return;
    if (!m_keys.empty()) {
        merge_records(theirs, depth);
        return;
    }
    std::vector<std::string> order;
    const auto groups = children_by_name(theirs, order);
    for (const std::string& name : order)
        if (m_removed_children.count(name) == 0)
            merge_children(name, groups.at(name), depth);
    drop_what_is_gone([&groups](const child_t& child) { return groups.count(child.name) != 0; });
}

// What the other process removed, unless it was changed here or somebody still holds on to it.
void property_node_t::drop_what_is_gone(const std::function<bool(const child_t&)>& is_theirs)
{
    m_children.erase(std::remove_if(m_children.begin(), m_children.end(),
                                    [&](const child_t& child) {
                                        return !is_theirs(child) && !child.node->is_changed() &&
                                               child.node->empty_out() && child.node.use_count() == 1;
                                    }),
                     m_children.end());
}

/// Removes what the other process removed. False if somebody still holds on to this node or one below: what
/// they put into it later must have its place in the tree.
bool property_node_t::empty_out()
{
    m_values.clear();
    m_children.erase(
        std::remove_if(m_children.begin(), m_children.end(),
                       [](const child_t& c) { return c.node->empty_out() && c.node.use_count() == 1; }),
        m_children.end());
    return m_children.empty();
}

bool property_node_t::is_changed() const
{
    return m_replaced || m_reordered || !m_changed_values.empty() || !m_removed_children.empty() ||
           !m_removed_records.empty() ||
           std::any_of(m_children.begin(), m_children.end(),
                       [](const child_t& child) { return child.node->is_changed(); });
}

void property_node_t::set_unchanged()
{
    m_replaced = false;
    m_reordered = false;
    m_changed_values.clear();
    m_removed_children.clear();
    m_removed_records.clear();
    for (const child_t& child : m_children)
        child.node->set_unchanged();
}

} // namespace cfgmgr2
