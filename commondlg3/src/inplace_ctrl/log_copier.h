#pragma once

#include "contents.h"
#include "message_entry.h"

#include <cstddef>
#include <functional>
#include <utility>
#include <vector>

namespace commondlg3 {

/// Copies what entries hold while they go on, in pieces, and without their texts: those stay where they are,
/// as long as the copy does. Lines that come later are not among it. GUI thread.
class log_copier_t
{
public:
    /// @param done gets the copy
    explicit log_copier_t(std::function<void(std::vector<entry_contents_t>)> done) : m_done(std::move(done))
    {
    }

    void add(const message_entry_t::ptr_t& entry);
    /// Copies until `enough`; whether there is more.
    bool copy_some(const std::function<bool()>& enough);
    /// The entry is going: what is left of it is copied at once.
    void entry_going(const message_entry_t& entry);
    /// Copies all that is left, and hands the copy over.
    void finish();

private:
    struct source_t
    {
        message_entry_t::ptr_t entry; // null: copied
        std::size_t end;              // of its lines
    };
    bool copy_piece(std::size_t index);

    std::function<void(std::vector<entry_contents_t>)> m_done;
    std::vector<source_t> m_sources;
    std::vector<entry_contents_t> m_copies; // one each
    std::size_t m_next = 0;
};

} // namespace commondlg3
