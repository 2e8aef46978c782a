#include "log_copier.h"

#include <functional>
#include <utility>

namespace commondlg3 {

void log_copier_t::add(const message_entry_t::ptr_t& entry)
{
    m_sources.push_back({entry, entry->get_lines().size()});
}

bool log_copier_t::copy_piece(std::size_t index)
{
    source_t& source = m_sources[index];
    if (!source.entry)
        return false;
    entry_contents_t& copy = m_copies[index];
    if (copy.lines.copy_some(source.entry->get_lines(), source.end))
        return true;
    source.entry->copy_head(copy);
    source.entry = message_entry_t::ptr_t();
    return false;
}

bool log_copier_t::copy_some(const std::function<bool()>& enough)
{
    m_copies.resize(m_sources.size());
    while (m_next < m_sources.size()) {
        if (!copy_piece(m_next))
            ++m_next;
        if (enough())
            break;
    }
    return m_next < m_sources.size();
}

void log_copier_t::entry_going(const message_entry_t& entry)
{
    m_copies.resize(m_sources.size());
    for (std::size_t index = m_next; index < m_sources.size(); ++index)
        if (m_sources[index].entry.get() == &entry)
            while (copy_piece(index))
                continue;
}

void log_copier_t::finish()
{
    while (copy_some([] { return false; }))
        continue;
    m_done(std::move(m_copies));
}

} // namespace commondlg3
