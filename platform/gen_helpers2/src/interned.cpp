#include "gen_helpers2/variant_bag.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <unordered_map>

namespace gen_helpers2 {
namespace _internal {

struct interned_name_t
{
    explicit interned_name_t(std::string_view name) : text(name) {}

    std::atomic<std::size_t> references{1};
    const std::string text;
};

namespace {

struct name_table_t
{
    std::mutex mutex;
    std::unordered_map<std::string_view, interned_name_t*> names;
};

name_table_t& name_table()
{
    // Never destroyed: bags in static objects may live until the very end.
    static name_table_t* const table = new name_table_t;
    return *table;
}

} // namespace

interned_t::interned_t(std::string_view name)
{
    name_table_t& table = name_table();
    const std::lock_guard<std::mutex> lock(table.mutex);
    const auto found = table.names.find(name);
    if (found != table.names.end()) {
        m_name = found->second;
        m_name->references.fetch_add(1, std::memory_order_relaxed);
        return;
    }
    auto created = std::make_unique<interned_name_t>(name);
    table.names.emplace(created->text, created.get());
    m_name = created.release();
}

interned_t::interned_t(const interned_t& other) noexcept : m_name(other.m_name)
{
    if (m_name)
        m_name->references.fetch_add(1, std::memory_order_relaxed);
}

interned_t::~interned_t()
{
    if (!m_name)
        return;
    // All but the last reference go without the lock. The last one may only be dropped under it, as the table
    // might hand the name out again at the same moment.
    std::size_t count = m_name->references.load(std::memory_order_relaxed);
    while (count > 1)
        if (m_name->references.compare_exchange_weak(count, count - 1, std::memory_order_release,
                                                     std::memory_order_relaxed))
            return;
    name_table_t& table = name_table();
    const std::lock_guard<std::mutex> lock(table.mutex);
    if (m_name->references.fetch_sub(1, std::memory_order_acq_rel) == 1) {
        table.names.erase(m_name->text);
        delete m_name;
    }
}

std::string_view interned_t::view() const noexcept
{
    return m_name ? std::string_view(m_name->text) : std::string_view();
}

} // namespace _internal
} // namespace gen_helpers2
