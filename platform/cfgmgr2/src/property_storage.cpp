#include "cfgmgr2/property_storage.h"
#include "gen_helpers2/assertion.h"
#include "gen_helpers2/file.h"
#include "gen_helpers2/file_stamp.h"
#include "gen_helpers2/file_transaction.h"
#include "gen_helpers2/variant_bag_file.h"
#include "property_node.h"

#include <memory>
#include <mutex>
#include <optional>

namespace cfgmgr2 {

namespace {

using gen_helpers2::error_code_t;
using gen_helpers2::file_stamp_t;
using gen_helpers2::path_t;
using gen_helpers2::variant_bag_t;
using gen_helpers2::variant_t;

/// The file behind all nodes of one storage.
struct document_t : std::enable_shared_from_this<document_t>
{
    error_code_t open();
    error_code_t save();
    error_code_t take_over_changes();
    error_code_t write(const variant_bag_t& bag);
    void settle();

    std::mutex mutex;
    path_t file;
    std::shared_ptr<property_node_t> root = std::make_shared<property_node_t>();
    file_stamp_t stamp;
    /// What is on the disk could not be understood.
    bool is_damaged = false;
    /// What the last save() wrote and a transaction holds back.
    std::optional<variant_bag_t> held_back;
};

error_code_t document_t::open()
{
    if (file.is_empty())
        return error_code_t::invalid_parameter("no file name");
    gen_helpers2::finish_transaction(file.parent());
    stamp = file_stamp_t(file);
    if (!stamp.exists())
        return error_code_t();
    variant_bag_t bag;
    error_code_t result = gen_helpers2::load_variant_bag(file, bag);
    is_damaged = result == error_code_t::damaged("");
    if (result.succeeded())
        root->assign(bag, 0);
    else if (!is_damaged)
        stamp = file_stamp_t(); // saving will try to read it again
    return result;
}

error_code_t document_t::take_over_changes()
{
    const file_stamp_t now(file);
    if (!now.exists() || now == stamp)
        return error_code_t();
    variant_bag_t theirs;
    error_code_t result = gen_helpers2::load_variant_bag(file, theirs);
    // A file that cannot be read at the moment may be all right: nothing must be written over it.
    if (result.failed() && !(result == error_code_t::damaged("")))
        return result;
    is_damaged = result.failed();
    if (result.succeeded())
        root->merge(theirs, 0);
    stamp = now;
    return error_code_t();
}

error_code_t document_t::write(const variant_bag_t& bag)
{
    return is_damaged ? gen_helpers2::save_over_damaged_file(bag, file)
                      : gen_helpers2::save_variant_bag(bag, file);
}

error_code_t document_t::save()
{
    if (file.is_empty())
        return error_code_t();
    const path_t folder = file.parent();
    gen_helpers2::make_private_folder(folder);
    const gen_helpers2::folder_lock_t lock(folder);
    error_code_t result = take_over_changes();
    if (result.failed())
        return result;
    if (stamp.exists() && stamp == file_stamp_t(file) && !is_damaged && !root->is_changed())
        return result;
    variant_bag_t bag;
    root->to_bag(bag);
    if (held_back == bag)
        return result; // another page of the same file has been saved
    // Asked first: once the file is there nothing may fail any more.
    const bool is_later =
        gen_helpers2::file_transaction_t::when_ended([self = shared_from_this()](bool done) {
            const std::lock_guard<std::mutex> guard(self->mutex);
            if (done && self->held_back)
                self->settle();
            self->held_back.reset();
        });
    result = write(bag);
    held_back.reset();
    if (result.succeeded() && is_later)
        held_back = std::move(bag);
    else if (result.succeeded())
        settle();
    return result;
}

// What is here stands on the disk.
void document_t::settle()
{
    stamp = file_stamp_t(file);
    is_damaged = false;
    root->set_unchanged();
}

class property_storage_t : public gen_helpers2::ref_counted_of_t<IPropertyStorage>
{
public:
    property_storage_t(std::shared_ptr<document_t> document, std::shared_ptr<property_node_t> node,
                       std::size_t depth)
        : m_document(std::move(document)), m_node(std::move(node)), m_depth(depth)
    {
    }

    gen_helpers2::sptr_t<IPropertyStorage> get_child(const std::string& name) override
    {
        const bool fits = GH2_ASSERT(m_depth < gen_helpers2::max_bag_nesting, "property_storage");
        const auto guard = lock();
        return new property_storage_t(
            m_document, fits ? m_node->get_child(name) : std::make_shared<property_node_t>(), m_depth + 1);
    }
    bool has_child(const std::string& name) const override
    {
        const auto guard = lock();
        return m_node->has_child(name);
    }
    void remove_child(const std::string& name) override
    {
        const auto guard = lock();
        m_node->remove_child(name);
    }
    std::vector<std::string> child_names() const override
    {
        const auto guard = lock();
        return m_node->child_names();
    }

    void set_value(const std::string& name, const variant_t& value) override
    {
        const auto guard = lock();
        m_node->set_value(name, value);
    }
    variant_t get_value(const std::string& name) const override
    {
        const auto guard = lock();
        const variant_t* value = m_node->find_value(name);
        return value ? *value : variant_t();
    }
    bool has_value(const std::string& name) const override
    {
        const auto guard = lock();
        return m_node->find_value(name) != nullptr;
    }
    void remove_value(const std::string& name) override
    {
        const auto guard = lock();
        m_node->remove_value(name);
    }
    std::vector<std::string> value_names() const override
    {
        const auto guard = lock();
        return m_node->value_names();
    }

    variant_bag_t to_bag() const override
    {
        variant_bag_t bag;
        const auto guard = lock();
        m_node->to_bag(bag);
        return bag;
    }
    void from_bag(const variant_bag_t& bag) override
    {
        bool complete = false;
        {
            const auto guard = lock();
            complete = m_node->assign(bag, m_depth);
            m_node->set_replaced();
        }
        GH2_ASSERT_TEXT(complete, "the bag is nested too deeply for a storage", "property_storage");
    }

    void change(const variant_bag_t& before, const variant_bag_t& after,
                const std::vector<std::string>& keys) override
    {
        bool complete = false;
        {
            const auto guard = lock();
            complete = m_node->change(before, after, keys, m_depth);
        }
        GH2_ASSERT_TEXT(complete, "the bag is nested too deeply for a storage", "property_storage");
    }

    error_code_t save() override
    {
        const auto guard = lock();
        return m_document->save();
    }

private:
    std::unique_lock<std::mutex> lock() const { return std::unique_lock<std::mutex>(m_document->mutex); }

    std::shared_ptr<document_t> m_document;
    std::shared_ptr<property_node_t> m_node;
    std::size_t m_depth;
};

gen_helpers2::sptr_t<IPropertyStorage> make_root(const std::shared_ptr<document_t>& document)
{
    return new property_storage_t(document, document->root, 0);
}

} // namespace

gen_helpers2::sptr_t<IPropertyStorage> open_property_storage(const path_t& file, error_code_t& result)
{
    const auto document = std::make_shared<document_t>();
    document->file = file;
    result = document->open();
    return make_root(document);
}

gen_helpers2::sptr_t<IPropertyStorage> make_memory_property_storage()
{
    return make_root(std::make_shared<document_t>());
}

} // namespace cfgmgr2
