#include "gen_helpers2/signal.h"

#include <boost/signals2/connection.hpp>
#include <boost/signals2/signal.hpp>

#include <algorithm>
#include <exception>
#include <iterator>
#include <utility>

namespace gen_helpers2 {
namespace _internal {

// All slots are called, also those behind one that throws.
struct every_slot_t
{
    using result_type = void;

    template <class Iterator>
    void operator()(Iterator slot, Iterator end) const
    {
        std::exception_ptr thrown;
        for (; slot != end; ++slot) {
            try {
                *slot;
            } catch (const boost::signals2::expired_slot&) {
            } catch (...) {
                if (!thrown)
                    thrown = std::current_exception();
            }
        }
        if (thrown)
            std::rethrow_exception(thrown);
    }
};

struct connection::impl_t
{
    boost::signals2::connection connection;
};

bool connection::connected() const
{
    return m_impl && m_impl->connection.connected();
}

void connection::disconnect() const
{
    if (m_impl)
        m_impl->connection.disconnect();
}

struct slot_list_t::impl_t
{
    boost::signals2::signal<void(void*), every_slot_t> signal;
};

slot_list_t::slot_list_t() : m_impl(std::make_shared<impl_t>()) {}

connection slot_list_t::connect(slot_t slot)
{
    connection made;
    made.m_impl = std::make_shared<connection::impl_t>();
    made.m_impl->connection = m_impl->signal.connect(std::move(slot));
    return made;
}

void slot_list_t::emit(void* arguments) const
{
    // A slot may destroy the list: what it runs over must stay.
    const std::shared_ptr<impl_t> keep(m_impl);
    keep->signal(arguments);
}

std::size_t slot_list_t::num_slots() const
{
    return m_impl->signal.num_slots();
}

void slot_list_t::disconnect_all()
{
    m_impl->signal.disconnect_all_slots();
}

subscriber_base_t::subscriber_base_t() = default;

subscriber_base_t::subscriber_base_t(const subscriber_base_t&) {}

subscriber_base_t& subscriber_base_t::operator=(const subscriber_base_t&)
{
    return *this;
}

subscriber_base_t::~subscriber_base_t()
{
    disconnect_all();
}

void subscriber_base_t::disconnect_all()
{
    std::vector<connection> ended;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        ended.swap(m_connections);
        m_next_sweep = 8;
    }
    // Ending a connection destroys its slot, and with it whatever the slot holds: not under the mutex.
    for (const connection& each : ended)
        each.disconnect();
}

std::size_t subscriber_base_t::num_subscriptions() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return static_cast<std::size_t>(std::count_if(m_connections.begin(), m_connections.end(),
                                                  [](const auto& c) { return c.connected(); }));
}

void subscriber_base_t::keep_connection(const connection& c)
{
    std::vector<connection> dead;
    const std::lock_guard<std::mutex> lock(m_mutex);
    // A subscriber may outlive many signals; their dead connections must not pile up.
    if (m_connections.size() >= m_next_sweep) {
        const auto first_dead = std::partition(m_connections.begin(), m_connections.end(),
                                               [](const auto& kept) { return kept.connected(); });
        dead.assign(std::make_move_iterator(first_dead), std::make_move_iterator(m_connections.end()));
        m_connections.erase(first_dead, m_connections.end());
        m_next_sweep = std::max<std::size_t>(8, m_connections.size() * 2);
    }
    m_connections.emplace_back(c);
}

} // namespace _internal
} // namespace gen_helpers2
