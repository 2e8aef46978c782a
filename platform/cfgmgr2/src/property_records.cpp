#include "gen_helpers2/variant_bag_file.h"
#include "property_node.h"

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

// Lists of records: children of one name that a value of theirs tells apart, so that what two processes do to
// different ones can stand side by side.
namespace cfgmgr2 {

using gen_helpers2::variant_bag_t;
using gen_helpers2::variant_t;

namespace {

std::string key_in(const variant_bag_t& bag, const std::vector<std::string>& keys)
{
    for (const std::string& key : keys) {
        const variant_t* value = bag.find_value(key);
        if (value && value->can_get<std::string>())
            return value->get<std::string>();
    }
    return std::string();
}

} // namespace

property_node_t::record_t property_node_t::record_of(const std::string& name, const variant_bag_t& bag,
                                                     const std::vector<std::string>& keys)
{
    return {name, key_in(bag, keys)};
}

// Of several that cannot be told apart the first counts, as everywhere.
property_node_t::records_t property_node_t::records() const
{
    records_t records;
    for (const child_t& child : m_children) {
        std::string key;
        for (auto name = m_keys.begin(); name != m_keys.end() && key.empty(); ++name) {
            const variant_t* value = child.node->find_value(*name);
            if (value && value->can_get<std::string>())
                key = value->get<std::string>();
        }
        records.emplace(record_t(child.name, key), child.node);
    }
    return records;
}

bool property_node_t::change(const variant_bag_t& before, const variant_bag_t& after,
                             const std::vector<std::string>& keys, std::size_t depth)
{
    m_keys = keys;
    bool complete = true;
    std::map<record_t, const variant_bag_t*> known;
    for (const variant_bag_t::item_t& item : before) {
        if (item.is_child())
            known.emplace(record_of(std::string(item.name()), *item.child(), keys), item.child());
        else if (!after.find_value(item.name()))
            remove_value(std::string(item.name()));
    }

    records_t ours = records();
    std::vector<child_t> in_order;
    const variant_bag_t nothing;
    for (const variant_bag_t::item_t& item : after) {
        const std::string name(item.name());
        if (item.is_value()) {
            const variant_t* known_value = before.find_value(name);
            if (!known_value || *known_value != item.value() || !find_value(name))
                set_value(name, item.value());
            continue;
        }
        if (depth >= gen_helpers2::max_bag_nesting) {
            complete = false;
            continue;
        }
        const record_t record = record_of(name, *item.child(), keys);
        const auto known_child = known.find(record);
        const auto found = ours.find(record);
        const auto node = found == ours.end() ? std::make_shared<property_node_t>() : found->second;
        complete = node->change(known_child == known.end() ? nothing : *known_child->second, *item.child(),
                                keys, depth + 1) &&
                   complete;
        in_order.push_back({name, node});
        m_removed_records.erase(record);
        if (found != ours.end())
            ours.erase(found);
        known.erase(record);
    }
    // What is left of the known ones is removed; what is left of ours and was not known stays behind the
    // rest.
    for (const auto& [record, bag] : known) {
        m_removed_records.insert(record);
        ours.erase(record);
    }
    std::set<const property_node_t*> left;
    for (const auto& [record, node] : ours)
        left.insert(node.get());
    for (const child_t& child : m_children)
        if (left.count(child.node.get()) != 0)
            in_order.push_back(child);
    set_order(std::move(in_order));
    return complete;
}

void property_node_t::set_order(std::vector<child_t> children)
{
    m_reordered =
        m_reordered || !std::equal(children.begin(), children.end(), m_children.begin(), m_children.end(),
                                   [](const child_t& a, const child_t& b) { return a.node == b.node; });
    m_children = std::move(children);
}

void property_node_t::merge_records(const variant_bag_t& theirs, std::size_t depth)
{
    records_t ours = records();
    std::set<const property_node_t*> merged;
    for (const variant_bag_t::item_t& item : theirs) {
        if (!item.is_child())
            continue;
        const std::string name(item.name());
        const record_t record = record_of(name, *item.child(), m_keys);
        const auto found = ours.find(record);
        if (found != ours.end()) {
            if (merged.insert(found->second.get()).second)
                found->second->merge(*item.child(), depth + 1);
        } else if (m_removed_records.count(record) == 0 && m_removed_children.count(name) == 0) {
            const auto node = std::make_shared<property_node_t>();
            node->assign(*item.child(), depth + 1);
            node->m_keys = m_keys;
            m_children.push_back({name, node});
            merged.insert(node.get());
        }
    }
    ours.clear(); // holds on to none of those that are to go
    drop_what_is_gone([&](const child_t& child) { return merged.count(child.node.get()) != 0; });
}

} // namespace cfgmgr2
