#include "gen_helpers2/signal.h"

#include <algorithm>
#include <iterator>

namespace gen_helpers2 {
namespace _internal {

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
    // Ending a connection destroys its slot, and with it whatever the slot holds: not under the mutex.
    std::vector<boost::signals2::scoped_connection> ended;
    const std::lock_guard<std::mutex> lock(m_mutex);
    ended.swap(m_connections);
    m_next_sweep = 8;
    // `ended` was declared before the lock and is therefore destroyed after it.
}

std::size_t subscriber_base_t::num_subscriptions() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return static_cast<std::size_t>(std::count_if(m_connections.begin(), m_connections.end(),
                                                  [](const auto& c) { return c.connected(); }));
}

void subscriber_base_t::keep_connection(const connection& c)
{
    std::vector<boost::signals2::scoped_connection> dead;
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
