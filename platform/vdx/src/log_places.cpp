// Where things stand now, what the reader sees, and measuring in the right order.
#include "log_layout.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace vdxcfrw7 {
namespace {

// Measuring what is seen may bring other things into view; this many times is more than any window needs.
constexpr int most_rounds = 64;

} // namespace

std::int64_t log_layout_t::top_of_line(const CMessageElement& element, std::size_t line) const
{
    return top_of(element) + element.m_head_height + element.m_lines.top_of(line);
}

std::int64_t log_layout_t::top_of_tail(const CMessageElement& element) const
{
    return top_of(element) + element.m_head_height + element.m_lines.get_height();
}

std::int64_t log_layout_t::max_top() const
{
    return std::max<std::int64_t>(0, total() - m_size.y);
}

std::int64_t log_layout_t::anchor_top() const
{
    if (!m_anchor.element)
        return 0;
    CMessageElement& element = *m_anchor.element;
    switch (m_anchor.part) {
    case part_t::head:
        return top_of(element) - m_anchor.y;
    case part_t::tail:
        return top_of_tail(element) - m_anchor.y;
    case part_t::line:
        break;
    }
    std::int64_t top = top_of_line(element, m_anchor.line);
    if (m_anchor.byte) {
        const auto& rows = const_cast<log_layout_t*>(this)->rows_of(element.m_lines.at(m_anchor.line));
        const auto row = std::upper_bound(rows.begin(), rows.end(), m_anchor.byte) - rows.begin() - 1;
        top += row * m_text.get_line_height();
    }
    return top - m_anchor.y;
}

std::int64_t log_layout_t::top() const
{
    return m_follow ? max_top() : std::clamp<std::int64_t>(anchor_top(), 0, max_top());
}

void log_layout_t::pick_anchor(std::int64_t top)
{
    // The first thing that is seen whole, or the row at the top of one that is larger than the window.
    const std::vector<item_t> items = visible_items();
    m_anchor = {};
    m_follow = false;
    if (m_heights.size() == 0)
        return;
    for (const item_t& item : items)
        if (item.y >= 0) {
            m_anchor = {item.element, item.part, item.line, 0, item.y};
            return;
        }
    if (items.empty()) {
        m_anchor.element = m_log.GetElements()[m_heights.index_at(top)].get();
        m_anchor.y = top_of(*m_anchor.element) - top;
        return;
    }
    const item_t& item = items.front();
    m_anchor = {item.element, item.part, item.line, 0, item.y};
    if (item.part == part_t::line) {
        const auto& rows = rows_of(item.element->m_lines.at(item.line));
        const auto row = std::min<std::int64_t>(-item.y / m_text.get_line_height(),
                                                static_cast<std::int64_t>(rows.size()) - 1);
        m_anchor.byte = rows[static_cast<std::size_t>(row)];
        m_anchor.y += row * m_text.get_line_height();
    }
}

void log_layout_t::scroll_to(std::int64_t wanted)
{
    const std::int64_t end = max_top();
    wanted = std::clamp<std::int64_t>(wanted, 0, end);
    if (wanted == end) {
        m_follow = true;
        return;
    }
    // visible_items() asks for the top: a plain anchor first, then the one that lasts.
    m_follow = false;
    m_anchor = {};
    m_anchor.element = m_log.GetElements()[m_heights.index_at(wanted)].get();
    m_anchor.y = top_of(*m_anchor.element) - wanted;
    pick_anchor(wanted);
}

void log_layout_t::scroll_to_end()
{
    m_follow = true;
}

std::vector<log_layout_t::item_t> log_layout_t::visible_items() const
{
    std::vector<item_t> items;
    if (m_heights.size() == 0)
        return items;
    const std::int64_t top = this->top();
    const auto& elements = m_log.GetElements();
    std::size_t index = m_heights.index_at(top);
    std::int64_t y = m_heights.top_of(index) - top;
    for (; index < elements.size() && y < m_size.y; ++index) {
        CMessageElement& element = *elements[index];
        if (element.IsFilteredOut())
            continue;
        if (y + element.m_head_height > 0)
            items.push_back({&element, part_t::head, 0, y, element.m_head_height});
        y += element.m_head_height;
        const line_store_t& lines = element.m_lines;
        if (!lines.empty() && y + lines.get_height() > 0 && y < m_size.y) {
            std::size_t line = y < 0 ? lines.line_at(-y) : 0;
            std::int64_t line_y = y + (y < 0 ? lines.top_of(line) : 0);
            while (line < lines.size() && line_y < m_size.y) {
                const auto& block = lines.get_blocks()[line / line_store_t::block_size];
                if (block.height == 0) { // all of it is hidden
                    line = (line / line_store_t::block_size + 1) * line_store_t::block_size;
                    continue;
                }
                const line_t& kept = lines.at(line);
                if (!kept.has(line_t::hidden)) {
                    items.push_back({&element, part_t::line, line, line_y, static_cast<int>(kept.height)});
                    line_y += kept.height;
                }
                ++line;
            }
        }
        y += lines.get_height();
        if (y < m_size.y && y + element.m_tail_height > 0)
            items.push_back({&element, part_t::tail, 0, y, element.m_tail_height});
        y += element.m_tail_height;
    }
    return items;
}

bool log_layout_t::settle_once()
{
    bool changed = false;
    for (const item_t& item : visible_items()) {
        CMessageElement& element = *item.element;
        bool moved = false;
        if (item.part == part_t::head)
            moved = measure_head(element);
        else if (item.part == part_t::line) {
            line_store_t& lines = element.m_lines;
            line_t& line = lines.at(item.line);
            moved = measure_block(lines, item.line / line_store_t::block_size);
            see_width(line);
            if (line.has(line_t::inexact)) {
                const std::uint32_t height = height_of_line(lines, item.line, true);
                moved = moved || height != line.height;
                lines.set_height(item.line, height);
            }
        }
        if (moved) {
            update_height(element);
            changed = true;
        }
    }
    return changed;
}

void log_layout_t::settle()
{
    for (int round = 0; round < most_rounds && settle_once(); ++round) {
    }
    // Where the anchor would lie beyond the end, what is seen now is what must stay.
    if (!m_follow && m_anchor.element && anchor_top() != top())
        pick_anchor(top());
}

bool log_layout_t::refine_lines(CMessageElement& element)
{
    line_store_t& lines = element.m_lines;
    std::size_t first = 0;
    for (std::size_t number = 0; number < lines.get_blocks().size(); ++number) {
        line_store_t::block_t& block = lines.get_blocks()[number];
        const bool stale = block.layout != m_layout;
        if (stale)
            measure_block(lines, number);
        while (block.refined < block.lines.size()) {
            line_t& line = block.lines[block.refined];
            if (line.has(line_t::inexact)) {
                lines.set_height(first + block.refined, height_of_line(lines, first + block.refined, true));
                ++block.refined;
                if (m_log.enough())
                    return false;
            } else
                ++block.refined;
        }
        first += block.lines.size();
        if (stale && m_log.enough())
            return false;
    }
    return true;
}

log_layout_t::left_t log_layout_t::refine(bool bodies_too)
{
    const auto& elements = m_log.GetElements();
    for (; m_refining < elements.size(); ++m_refining) {
        CMessageElement& element = *elements[m_refining];
        const bool done = refine_lines(element);
        update_height(element);
        if (!done || m_log.enough())
            return left_t::lines;
    }
    // Bodies take long, and few of them are ever seen: they come last.
    for (; bodies_too && m_refining_head < elements.size(); ++m_refining_head) {
        CMessageElement& element = *elements[m_refining_head];
        if (element.m_head_layout == m_layout)
            continue;
        const bool kept = m_body_of.count(&element) != 0;
        measure_head(element);
        update_height(element);
        const auto made = m_body_of.find(&element);
        if (!kept && made != m_body_of.end()) { // those that are seen are worth more
            m_bodies.erase(made->second);
            m_body_of.erase(made);
        }
        if (m_log.enough())
            return left_t::bodies;
    }
    return m_refining_head < elements.size() ? left_t::bodies : left_t::nothing;
}

} // namespace vdxcfrw7
