#pragma once

#include "gen_helpers2/variant_bag.h"

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

    std::vector<node_ptr_t> children_of(const std::string& name) const;
    void merge_values(const gen_helpers2::variant_bag_t& theirs);
    void merge_children(const std::string& name,
                        const std::vector<const gen_helpers2::variant_bag_t*>& theirs, std::size_t depth);
    bool empty_out();
    void drop_children(const std::string& name);

    std::vector<std::pair<std::string, gen_helpers2::variant_t>> m_values;
    std::vector<child_t> m_children;
    std::set<std::string> m_changed_values;
    std::set<std::string> m_removed_children;
    bool m_replaced = false;
};

} // namespace cfgmgr2
