#pragma once

#include "vdx/message_element.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace vdxcfrw7 {

class CEventLog;
class log_layout_t;

/// Which text of an entry: its header, its body, or a line, which count from `first_line`.
struct text_item_t
{
    static constexpr std::size_t header = 0;
    static constexpr std::size_t body = 1;
    static constexpr std::size_t first_line = 2;
};

/// The text of an item, as it is searched, selected and copied.
std::string_view text_of(const line_t& line, std::string& storage);
std::string_view text_of(const CMessageElement& element, std::size_t item, std::string& storage);
std::size_t number_of_items(const CMessageElement& element);

/// A place in the texts of a log. Bodies in HTML are one whole: their places are before and behind.
struct text_place_t
{
    const CMessageElement* element = nullptr;
    std::size_t item = 0;
    std::size_t byte = 0;

    bool is_set() const { return element != nullptr; }
    /// So many lines have gone from the front of an entry: it stays with its own, or is at the first left.
    void lines_dropped(const CMessageElement& from, std::size_t lines);
};

bool operator<(const text_place_t& a, const text_place_t& b);
inline bool operator==(const text_place_t& a, const text_place_t& b)
{
    return a.element == b.element && a.item == b.item && a.byte == b.byte;
}
inline bool operator!=(const text_place_t& a, const text_place_t& b)
{
    return !(a == b);
}

/// The caret in the texts of a log and what is selected of them. Whoever changes it draws the log again.
class log_selection_t
{
public:
    log_selection_t(const CEventLog& log, const log_layout_t& layout) : m_log(log), m_layout(layout) {}

    /// Where the reader is; not set before a click or key went into the texts.
    const text_place_t& get_caret() const { return m_caret; }
    bool is_empty() const { return !m_begin.is_set() || m_begin == m_caret; }
    /// In their order, whichever end the selection was begun at.
    std::pair<text_place_t, text_place_t> get_ends() const;
    /// The selected bytes of a text of that length; false when nothing of it is selected.
    bool get_part(const CMessageElement& element, std::size_t item, std::size_t length, std::size_t& from,
                  std::size_t& to) const;
    /// Of lines that are selected from their beginning the time stands before them where copy_times() is on.
    std::string get_text(bool html) const;
    void copy_times(bool copy) { m_copy_times = copy; }
    bool copies_times() const { return m_copy_times; }

    void select(const text_place_t& from, const text_place_t& to);
    void select_all();
    void clear() { select({}, {}); }
    /// Extended, the selection reaches from where it was begun to there.
    void move_caret(const text_place_t& place, bool extend);

    /// The texts of an entry are others: what lies in them stays inside.
    void texts_changed(const CMessageElement& element);
    void element_removing(const CMessageElement& element);
    /// Lines have other indexes.
    void lines_changed(const CMessageElement& element) { element_removing(element); }
    void lines_dropped(const CMessageElement& element, std::size_t lines);

    /// A body in HTML, which has no places within.
    bool is_whole(const CMessageElement& element, std::size_t item) const;
    text_place_t end_of(const CMessageElement& element, std::size_t item) const;
    text_place_t end_of_all() const; ///< not set in a log without entries
    /// The beginning of the next or previous text; at either end of the log that end.
    text_place_t next_item(const text_place_t& place) const;
    text_place_t previous_item(const text_place_t& place) const;

private:
    const CEventLog& m_log;
    const log_layout_t& m_layout;
    text_place_t m_begin; // where it was begun, which may be behind its end
    text_place_t m_caret;
    bool m_copy_times = false;
};

} // namespace vdxcfrw7
