// How much a log keeps.
#include "inplace_ctrl_impl.h"

#include <cstddef>
#include <limits>
#include <vector>

namespace commondlg3 {
namespace {

constexpr std::size_t spare_part = 16;

std::size_t limit_of(std::size_t given)
{
    return given ? given : std::numeric_limits<std::size_t>::max();
}

std::size_t with_spare(std::size_t given)
{
    return limit_of(given ? given - given / spare_part : 0);
}

} // namespace

void inplace_ctrl_impl_t::set_limits(const inplace_ctrl_t::limits_t& limits)
{
    m_limits = limits;
    if (!limits.lines && !limits.bytes) {
        m_log->set_grown({});
        return;
    }
    const auto look = [this] {
        m_log->AddWork(&m_limits, [this] {
            keep_limits();
            return false;
        });
    };
    m_log->set_grown(look);
    look();
}

void inplace_ctrl_impl_t::set_queue_limit(const inplace_ctrl_t::queue_limit_t& limit)
{
    m_log->set_queue_limit(limit);
    for (const auto& [tag, entry] : m_entries)
        entry->wake();
}

void inplace_ctrl_impl_t::keep_limits()
{
    std::size_t lines = 0, bytes = 0;
    for (const auto& element : m_log->GetElements()) {
        lines += element->GetLines().size() + 1;
        bytes += element->GetLines().get_bytes();
    }
    if (lines <= limit_of(m_limits.lines) && bytes <= limit_of(m_limits.bytes))
        return;
    const std::size_t most_lines = with_spare(m_limits.lines), most_bytes = with_spare(m_limits.bytes);
    std::vector<tag_t> tags;
    for (const auto& [tag, entry] : m_entries)
        tags.push_back(tag);
    for (const tag_t tag : tags) {
        if (lines <= most_lines && bytes <= most_bytes)
            break;
        auto& entry = static_cast<message_entry_t&>(*m_entries[tag]);
        const std::size_t own_lines = entry.get_lines().size() + 1, own_bytes = entry.get_lines().get_bytes();
        lines -= own_lines;
        bytes -= own_bytes;
        const bool needed = tag == tags.back() || entry.is_at_work() || entry.is_loading() ||
                            (m_proxies && m_proxies->messenger.points_at(&entry));
        const bool too_much = lines < most_lines && bytes < most_bytes; // without all of it
        if (!needed && (!too_much || !entry.has_old_lines())) {
            erase(tag);
            continue;
        }
        while (lines + entry.get_lines().size() + 1 > most_lines ||
               bytes + entry.get_lines().get_bytes() > most_bytes) {
            const std::size_t all = lines + entry.get_lines().size() + 1;
            if (!entry.drop_old_lines(all > most_lines ? all - most_lines : 1))
                break;
        }
        lines += entry.get_lines().size() + 1;
        bytes += entry.get_lines().get_bytes();
    }
    m_log->set_changed(true);
}

} // namespace commondlg3
