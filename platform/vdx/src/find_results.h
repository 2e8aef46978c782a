#pragma once

#include "log_selection.h"
#include "text_matcher.h"

#include <bitset>
#include <cstdint>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace vdxcfrw7 {

/// All places in a log at which something was found: counted in slices, a block of lines at a time, from
/// the reader's place on and round.
///
/// Status lines are passed over, as they say something else soon, and what the filter hides.
class find_results_t
{
public:
    find_results_t(const CEventLog& log, const log_selection_t& texts) : m_log(log), m_texts(texts) {}

    text_matcher_t& get_matcher() { return m_matcher; }
    const text_matcher_t& get_matcher() const { return m_matcher; }
    /// Looks for something else, beginning at that place.
    void set(const std::string& text, const CEventLog::find_options_t& options, const text_place_t& from);
    /// Lines were hidden or shown, or are others.
    void begin_again();
    void element_removing(const CMessageElement& element);
    void head_changed(const CMessageElement& element);
    void line_added(const CMessageElement& element);

    /// Counts until the log's slice is over; whether more is left.
    bool count_some();
    void count_all();
    bool is_complete() const { return m_complete; }
    std::uint64_t get_count() const { return m_count; }
    /// Which one the match that begins at that place is, from 1; 0 when none does, or not all are counted.
    std::uint64_t get_number(const text_place_t& place);

    struct found_t
    {
        text_place_t begin; ///< not set when there is none
        text_place_t end;
        bool too_early; ///< what lies on the way is not counted yet
    };
    /// The next match at or behind a place, or the last one that ends there or before, going round.
    found_t find(const text_place_t& from, bool forward);

    struct block_t
    {
        bool known = false;
        std::uint64_t count = 0;
        std::bitset<line_store_t::block_size> lines; ///< that have a match
    };
    struct of_element_t
    {
        bool head_known = false;
        std::uint64_t head = 0;
        std::vector<block_t> blocks;
    };
    /// Null where nothing was counted.
    const of_element_t* get(const CMessageElement& element) const;
    /// Changes whenever a result does.
    unsigned int get_version() const { return m_version; }

private:
    of_element_t& of(const CMessageElement& element);
    void count_head(const CMessageElement& element);
    void count_block(const CMessageElement& element, std::size_t block);
    std::uint64_t count_in(const CMessageElement& element, std::size_t item);
    template <class F>
    void for_each_match(const CMessageElement& element, std::size_t item, F&& fn);
    bool find_in(const CMessageElement& element, std::size_t item, std::size_t from, std::size_t to,
                 bool last, found_t& found);
    /// Whether to stop looking.
    bool find_among(const CMessageElement& element, std::size_t begin, std::size_t end, bool last,
                    found_t& found);

    const CEventLog& m_log;
    const log_selection_t& m_texts;
    text_matcher_t m_matcher;
    std::unordered_map<const CMessageElement*, of_element_t> m_elements;
    std::string m_storage;
    std::uint64_t m_count = 0;
    bool m_complete = true;
    unsigned int m_version = 0;
    // Where count_some() goes on, and how many entries it has gone through.
    std::size_t m_element = 0;
    std::size_t m_block = 0;
    std::size_t m_visited = 0;
};

/// Whether an item of an entry is one that is found: no status line, and not hidden.
bool is_found(const CMessageElement& element, std::size_t item);

} // namespace vdxcfrw7
