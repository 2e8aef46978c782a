#include "find_results.h"

#include <algorithm>

namespace vdxcfrw7 {

bool is_found(const CMessageElement& element, std::size_t item)
{
    if (element.IsFilteredOut())
        return false;
    if (item < text_item_t::first_line)
        return true;
    const line_t& line = element.GetLines().at(item - text_item_t::first_line);
    return !line.has(line_t::hidden) && !line.has(line_t::status);
}

void find_results_t::set(const std::string& text, const CEventLog::find_options_t& options,
                         const text_place_t& from)
{
    m_matcher.set(text, options);
    begin_again();
    if (from.is_set()) {
        m_element = from.element->GetIndex();
        m_block = from.item < text_item_t::first_line
                      ? 0
                      : (from.item - text_item_t::first_line) / line_store_t::block_size;
    }
}

void find_results_t::begin_again()
{
    m_elements.clear();
    m_count = 0;
    m_element = m_block = m_visited = 0;
    m_complete = m_matcher.is_empty() || m_matcher.is_wrong() || m_matcher.has_given_up();
    ++m_version;
}

find_results_t::of_element_t& find_results_t::of(const CMessageElement& element)
{
    of_element_t& found = m_elements[&element];
    const std::size_t blocks = element.GetLines().get_blocks().size();
    if (found.blocks.size() < blocks)
        found.blocks.resize(blocks);
    return found;
}

const find_results_t::of_element_t* find_results_t::get(const CMessageElement& element) const
{
    const auto found = m_elements.find(&element);
    return found != m_elements.end() ? &found->second : nullptr;
}

void find_results_t::element_removing(const CMessageElement& element)
{
    const auto found = m_elements.find(&element);
    if (found != m_elements.end()) {
        m_count -= found->second.head;
        for (const block_t& block : found->second.blocks)
            m_count -= block.count;
        m_elements.erase(found);
    }
    const std::size_t index = element.GetIndex();
    if (m_element == index)
        m_block = 0;
    else if (m_element > index)
        --m_element;
    m_visited = 0; // once more round: of what is known nothing is counted again
    ++m_version;
}

void find_results_t::head_changed(const CMessageElement& element)
{
    if (!m_matcher.is_empty())
        count_head(element);
}

void find_results_t::line_added(const CMessageElement& element)
{
    if (m_matcher.is_empty())
        return;
    of_element_t& found = of(element);
    const std::size_t index = element.GetLines().size() - 1, within = index % line_store_t::block_size;
    block_t& block = found.blocks[index / line_store_t::block_size];
    if (within == 0)
        block.known = true; // nothing of it was there before
    if (!found.head_known)
        count_head(element);
    if (!block.known)
        return;
    const std::uint64_t count = count_in(element, text_item_t::first_line + index);
    block.count += count;
    block.lines[within] = count != 0;
    m_count += count;
    m_version += count ? 1 : 0;
}

template <class F>
void find_results_t::for_each_match(const CMessageElement& element, std::size_t item, F&& fn)
{
    const std::string_view text = text_of(element, item, m_storage);
    if (m_texts.is_whole(element, item)) {
        if (m_matcher.is_in(text))
            fn(text_matcher_t::match_t{0, 1});
        return;
    }
    m_matcher.start(text);
    for (text_matcher_t::match_t match{}; m_matcher.next(match);)
        if (!fn(match))
            return;
}

std::uint64_t find_results_t::count_in(const CMessageElement& element, std::size_t item)
{
    std::uint64_t count = 0;
    if (is_found(element, item))
        for_each_match(element, item, [&count](const text_matcher_t::match_t&) {
            ++count;
            return true;
        });
    return count;
}

void find_results_t::count_head(const CMessageElement& element)
{
    of_element_t& found = of(element);
    m_count -= found.head;
    found.head = count_in(element, text_item_t::header) + count_in(element, text_item_t::body);
    found.head_known = true;
    m_count += found.head;
    ++m_version;
}

void find_results_t::count_block(const CMessageElement& element, std::size_t number)
{
    block_t& block = of(element).blocks[number];
    const std::size_t first = number * line_store_t::block_size;
    const std::size_t lines = element.GetLines().get_blocks()[number].lines.size();
    for (std::size_t i = 0; i < lines; ++i) {
        const std::uint64_t count = count_in(element, text_item_t::first_line + first + i);
        block.count += count;
        block.lines[i] = count != 0;
    }
    block.known = true;
    m_count += block.count;
    ++m_version;
}

bool find_results_t::count_some()
{
    const auto& elements = m_log.GetElements();
    while (!m_complete && m_visited <= elements.size() && !elements.empty()) {
        m_element %= elements.size();
        const CMessageElement& element = *elements[m_element];
        if (!of(element).head_known)
            count_head(element);
        for (const std::size_t blocks = element.GetLines().get_blocks().size(); m_block < blocks;) {
            if (!of(element).blocks[m_block].known)
                count_block(element, m_block);
            ++m_block;
            if (m_log.enough())
                return true;
        }
        m_block = 0;
        ++m_element;
        ++m_visited;
        if (m_log.enough())
            return true;
        if (m_matcher.has_given_up())
            break;
    }
    m_complete = true;
    ++m_version;
    return false;
}

void find_results_t::count_all()
{
    while (!m_complete)
        count_some();
}

bool find_results_t::find_in(const CMessageElement& element, std::size_t item, std::size_t from,
                             std::size_t to, bool last, found_t& found)
{
    if (!is_found(element, item))
        return false;
    for_each_match(element, item, [&](const text_matcher_t::match_t& match) {
        if (match.end > to)
            return false;
        if (match.begin < from)
            return true;
        found.begin = {&element, item, match.begin};
        found.end = {&element, item, match.end};
        return last;
    });
    return found.begin.is_set();
}

bool find_results_t::find_among(const CMessageElement& element, std::size_t begin, std::size_t end, bool last,
                                found_t& found)
{
    constexpr std::size_t all = static_cast<std::size_t>(-1);
    const of_element_t& counted = of(element);
    for (std::size_t left = end - begin; left > 0;) {
        const std::size_t item = last ? begin + left - 1 : end - left;
        const bool is_line = item >= text_item_t::first_line;
        const std::size_t line = is_line ? item - text_item_t::first_line : 0;
        const std::size_t within = line % line_store_t::block_size;
        const block_t* block = is_line ? &counted.blocks[line / line_store_t::block_size] : nullptr;
        if (block ? !block->known : !counted.head_known) {
            found.too_early = true;
            return true;
        }
        if (block && block->count == 0) { // on to the next block
            left -= std::min(left, last ? within + 1 : line_store_t::block_size - within);
            continue;
        }
        if ((block ? block->lines[within] : counted.head != 0) && find_in(element, item, 0, all, last, found))
            return true;
        --left;
    }
    return false;
}

find_results_t::found_t find_results_t::find(const text_place_t& from, bool forward)
{
    constexpr std::size_t all = static_cast<std::size_t>(-1);
    found_t found{{}, {}, false};
    const auto& elements = m_log.GetElements();
    if (m_matcher.is_empty() || !from.is_set() || elements.empty())
        return found;
    const CMessageElement& first = *from.element;
    if (find_in(first, from.item, forward ? from.byte : 0, forward ? all : from.byte, !forward, found))
        return found;
    const std::size_t items = number_of_items(first);
    if (find_among(first, forward ? from.item + 1 : 0, forward ? items : from.item, !forward, found))
        return found;
    for (std::size_t step = 1; step < elements.size(); ++step) {
        const std::size_t index =
            (first.GetIndex() + (forward ? step : elements.size() - step)) % elements.size();
        if (find_among(*elements[index], 0, number_of_items(*elements[index]), !forward, found))
            return found;
    }
    // Once round: what it began with is looked at whole.
    find_among(first, forward ? 0 : from.item, forward ? from.item + 1 : items, !forward, found);
    return found;
}

std::uint64_t find_results_t::get_number(const text_place_t& place)
{
    if (!m_complete || !place.is_set() || m_matcher.is_empty() || !is_found(*place.element, place.item))
        return 0;
    std::uint64_t number = 0;
    const auto& elements = m_log.GetElements();
    for (std::size_t index = 0; index < place.element->GetIndex(); ++index)
        if (const of_element_t* before = get(*elements[index])) {
            number += before->head;
            for (const block_t& block : before->blocks)
                number += block.count;
        }
    const CMessageElement& element = *place.element;
    const of_element_t& own = of(element);
    const std::size_t line = place.item < text_item_t::first_line ? 0 : place.item - text_item_t::first_line;
    const std::size_t blocks = line / line_store_t::block_size;
    if (place.item >= text_item_t::first_line) {
        number += own.head;
        for (std::size_t block = 0; block < blocks; ++block)
            number += own.blocks[block].count;
        for (std::size_t i = blocks * line_store_t::block_size; i < line; ++i)
            if (own.blocks[blocks].lines[i % line_store_t::block_size])
                number += count_in(element, text_item_t::first_line + i);
    } else if (place.item == text_item_t::body)
        number += count_in(element, text_item_t::header);
    bool is_there = false;
    for_each_match(element, place.item, [&](const text_matcher_t::match_t& match) {
        if (match.begin > place.byte)
            return false;
        ++number;
        is_there = match.begin == place.byte;
        return true;
    });
    return is_there ? number : 0;
}

} // namespace vdxcfrw7
