#pragma once

#include "gen_helpers2/variant_bag.h"

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace cfgmgr2 {

/// The data of one node of a property storage, with what was changed in it since the file was read or
/// written. Objects stay the same as long as their place in the tree exists: the storage's users hold on to
/// them.
class property_node_t
{
public:
    using node_ptr_t = std::shared_ptr<property_node_t>;

    /// The first child of that name, made when missing.
    node_ptr_t get_child(const std::string& name);
    bool has_child(const std::string& name) const;
    void remove_child(const std::string& name);
    std::vector<std::string> child_names() const;

    void set_value(const std::string& name, const gen_helpers2::variant_t& value);
    const gen_helpers2::variant_t* find_value(const std::string& name) const;
    void remove_value(const std::string& name);
    std::vector<std::string> value_names() const;

    void to_bag(gen_helpers2::variant_bag_t& bag) const;

    /// Takes the content of a bag as its own; `depth` is that of this node. False if children were too deep.
    bool assign(const gen_helpers2::variant_bag_t& bag, std::size_t depth);
    /// Marks all of the content as changed here.
    void set_replaced() { m_replaced = true; }
    /// Makes those changes that lead from one bag to the other, as IPropertyStorage::change() does. False if
    /// children were too deep.
    bool change(const gen_helpers2::variant_bag_t& before, const gen_helpers2::variant_bag_t& after,
                const std::vector<std::string>& keys, std::size_t depth);

    /// Takes over from `theirs` everything that was not changed here.
    void merge(const gen_helpers2::variant_bag_t& theirs, std::size_t depth);

    bool is_changed() const;
    void set_unchanged();

private:
    struct child_t
    {
        std::string name;
        node_ptr_t node;
    };

    /// A child's name and the value that tells it from others of that name.
    using record_t = std::pair<std::string, std::string>;
    using records_t = std::map<record_t, node_ptr_t>;
    static record_t record_of(const std::string& name, const gen_helpers2::variant_bag_t& bag,
                              const std::vector<std::string>& keys);
    records_t records() const;

    std::vector<node_ptr_t> children_of(const std::string& name) const;
    void merge_values(const gen_helpers2::variant_bag_t& theirs);
    void merge_children(const std::string& name,
                        const std::vector<const gen_helpers2::variant_bag_t*>& theirs, std::size_t depth);
    void merge_records(const gen_helpers2::variant_bag_t& theirs, std::size_t depth);
    void set_order(std::vector<child_t> children);
    void drop_what_is_gone(const std::function<bool(const child_t&)>& is_theirs);
    bool empty_out();
    void drop_children(const std::string& name);

    std::vector<std::pair<std::string, gen_helpers2::variant_t>> m_values;
    std::vector<child_t> m_children;
    std::set<std::string> m_changed_values;
    std::set<std::string> m_removed_children;
    /// Names of values that tell children of one name apart; empty where they are one thing.
    std::vector<std::string> m_keys;
    std::set<record_t> m_removed_records;
    bool m_reordered = false;
    bool m_replaced = false;
};

} // namespace cfgmgr2
