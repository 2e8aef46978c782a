#include "vdx/line_store.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace vdxcfrw7 {
namespace {

constexpr std::size_t smallest_chunk = 256;
constexpr std::size_t largest_chunk = 512 * 1024;

// Times are kept as distances from the first of their block, which lies in the middle of what 32 bits hold.
constexpr std::int64_t middle = std::int64_t(1) << 31;
constexpr std::uint32_t unknown = 0xffffffff;

} // namespace

const char* text_arena_t::add(std::string_view text, user_t user)
{
    const std::size_t needed = text.size() + 1;
    if (needed > m_left) {
        // Small entries stay small; a long log gets few, large pieces.
        const std::size_t size = std::max(needed, std::clamp(m_size, smallest_chunk, largest_chunk));
        m_chunks.push_back({std::shared_ptr<char[]>(new char[size]), size, user, false});
        m_size += size;
        if (needed == size && size > largest_chunk) {
            // A giant of its own: what was left before it is still free.
            char* giant = m_chunks.back().bytes.get();
            std::memcpy(giant, text.data(), text.size());
            giant[text.size()] = '\0';
            return giant;
        }
        m_free = m_chunks.back().bytes.get();
        m_left = size;
        m_current = m_chunks.size() - 1;
    }
    m_chunks[m_current].user = std::max(m_chunks[m_current].user, user);
    char* kept = m_free;
    if (!text.empty())
        std::memcpy(kept, text.data(), text.size());
    kept[text.size()] = '\0';
    m_free += needed;
    m_left -= needed;
    return kept;
}

void text_arena_t::adopt(text_arena_t&& other)
{
    for (chunk_t& chunk : other.m_chunks)
        chunk.open = true;
    if (other.m_left > m_left) {
        m_free = other.m_free;
        m_left = other.m_left;
        m_current = m_chunks.size() + other.m_current;
    }
    m_chunks.insert(m_chunks.end(), std::make_move_iterator(other.m_chunks.begin()),
                    std::make_move_iterator(other.m_chunks.end()));
    m_size += other.m_size;
    other = text_arena_t();
}

void text_arena_t::use(const char* text, user_t user)
{
    if (m_used >= m_chunks.size() || !m_chunks[m_used].has(text)) {
        const auto found = std::find_if(m_chunks.begin(), m_chunks.end(),
                                        [text](const chunk_t& chunk) { return chunk.has(text); });
        if (found == m_chunks.end())
            return;
        m_used = static_cast<std::size_t>(found - m_chunks.begin());
        // Those before it are full, as it was begun. A giant is one of its own, whatever room was left.
        if (found->size <= largest_chunk)
            for (auto chunk = m_chunks.begin(); chunk != found; ++chunk)
                chunk->open = false;
    }
    m_chunks[m_used].user = std::max(m_chunks[m_used].user, user);
}

void text_arena_t::close()
{
    for (chunk_t& chunk : m_chunks)
        chunk.open = false;
}

void text_arena_t::renumber(user_t end)
{
    for (chunk_t& chunk : m_chunks)
        chunk.user = std::min(chunk.user, end);
}

void text_arena_t::release_before(user_t user)
{
    const char* const current = m_left ? m_chunks[m_current].bytes.get() : nullptr;
    bool current_goes = false;
    const auto goes = [&](const chunk_t& chunk) {
        if (chunk.open || chunk.user >= user)
            return false;
        m_size -= chunk.size;
        current_goes = current_goes || chunk.bytes.get() == current;
        return true;
    };
    m_chunks.erase(std::remove_if(m_chunks.begin(), m_chunks.end(), goes), m_chunks.end());
    if (!current || current_goes) {
        m_free = nullptr;
        m_left = 0;
        return;
    }
    m_current = 0;
    while (m_chunks[m_current].bytes.get() != current)
        ++m_current;
}

void text_arena_t::share(const text_arena_t& other)
{
    m_chunks.insert(m_chunks.end(), other.m_chunks.begin(), other.m_chunks.end());
    m_size += other.m_size;
}

line_t& line_store_t::add(const line_t& line, std::int64_t time)
{
    if (m_size % block_size == 0) {
        m_blocks.emplace_back();
        if (m_size) {
            m_blocks.back().lines.reserve(block_size);
            m_blocks.back().times.reserve(block_size);
        }
    }
    block_t& block = m_blocks.back();
    block.lines.push_back(line);
    if (block.time_base == no_time)
        block.time_base = time;
    const std::int64_t distance = std::clamp<std::int64_t>(time - block.time_base, -middle, middle - 2);
    block.times.push_back(time == no_time ? unknown : static_cast<std::uint32_t>(distance + middle));
    if (line.has(line_t::hidden))
        ++m_hidden;
    else {
        block.height += line.height;
        m_height += line.height;
    }
    ++m_size;
    return block.lines.back();
}

std::int64_t line_store_t::get_time(std::size_t index) const
{
    const block_t& block = m_blocks[index / block_size];
    const std::uint32_t kept = block.times[index % block_size];
    return kept == unknown ? no_time : block.time_base + kept - middle;
}

std::size_t line_store_t::last_remembered() const
{
    for (std::size_t index = m_size; index-- > 0;)
        if (!at(index).has(line_t::status))
            return index;
    return m_size;
}

bool line_store_t::ends_with(std::uint32_t severity, std::string_view text) const
{
    const std::size_t last = last_remembered();
    return last < m_size && at(last).severity == severity && at(last).get_text() == text;
}

void line_store_t::repeat_last(std::uint64_t count)
{
    const std::size_t last = last_remembered();
    if (last >= m_size)
        return;
    if (!at(last).has(line_t::repeated)) {
        at(last).set(line_t::repeated, true);
        m_repeats.push_back({last, 1});
    }
    m_repeats.back().count += count;
}

std::uint64_t line_store_t::get_count(std::size_t index) const
{
    if (!at(index).has(line_t::repeated))
        return 1;
    const auto found =
        std::lower_bound(m_repeats.begin(), m_repeats.end(), index,
                         [](const repeat_t& repeat, std::size_t line) { return repeat.line < line; });
    return found != m_repeats.end() && found->line == index ? found->count : 1;
}

bool line_store_t::expand_repeats(bool expand)
{
    bool changed = false;
    for (const repeat_t& repeat : m_repeats) {
        changed = changed || at(repeat.line).has(line_t::expanded) != expand;
        at(repeat.line).set(line_t::expanded, expand);
    }
    return changed;
}

bool line_store_t::collapse(std::size_t& line)
{
    line_store_t collapsed;
    std::size_t index = 0, line_before = line;
    for_each([&](const line_t& said, std::uint64_t count, std::int64_t time) {
        if (!said.has(line_t::status) && collapsed.ends_with(said.severity, said.get_text()))
            collapsed.repeat_last(count);
        else {
            line_t kept = said;
            kept.set(line_t::repeated, false);
            collapsed.add(kept, time);
            if (count > 1)
                collapsed.repeat_last(count - 1);
        }
        if (index++ == line_before)
            line = collapsed.m_size - 1;
    });
    if (collapsed.m_size == m_size)
        return false;
    collapsed.m_arena = std::move(m_arena);
    collapsed.m_numbering = m_numbering + 1;
    collapsed.m_dropped = m_dropped;
    collapsed.m_arena.renumber(m_dropped + collapsed.m_size); // each has moved to the front, if at all
    *this = std::move(collapsed);
    return true;
}

bool line_store_t::copy_some(const line_store_t& from, std::size_t end)
{
    if (m_numbering != from.m_numbering) {
        *this = line_store_t();
        m_numbering = from.m_numbering;
    }
    end = std::min(end, from.size());
    if (m_size < end) {
        block_t block = from.m_blocks[m_size / block_size];
        const std::size_t count = std::min(block.lines.size(), end - m_size);
        block.lines.resize(count);
        block.times.resize(count);
        m_blocks.push_back(std::move(block));
        m_size += count;
    }
    if (m_size < end)
        return true;
    for (const repeat_t& repeat : from.m_repeats)
        if (repeat.line < end)
            m_repeats.push_back(repeat);
    m_arena.share(from.m_arena);
    return false;
}

void line_store_t::drop_blocks(std::size_t count)
{
    count = m_blocks.empty() ? 0 : std::min(count, m_blocks.size() - 1);
    const std::size_t lines = count * block_size;
    for (std::size_t block = 0; block < count; ++block) {
        m_height -= m_blocks[block].height;
        for (const line_t& line : m_blocks[block].lines)
            m_hidden -= line.has(line_t::hidden) ? 1 : 0;
    }
    m_blocks.erase(m_blocks.begin(), m_blocks.begin() + static_cast<std::ptrdiff_t>(count));
    m_size -= lines;
    m_dropped += lines;
    ++m_numbering;
    m_repeats.erase(std::remove_if(m_repeats.begin(), m_repeats.end(),
                                   [lines](const repeat_t& repeat) { return repeat.line < lines; }),
                    m_repeats.end());
    for (repeat_t& repeat : m_repeats)
        repeat.line -= lines;
    m_arena.release_before(m_dropped);
}

void line_store_t::replace(std::size_t index, const line_t& line)
{
    if (at(index).has(line_t::hidden))
        set_hidden(index, false);
    m_repeats.erase(std::remove_if(m_repeats.begin(), m_repeats.end(),
                                   [index](const repeat_t& repeat) { return repeat.line == index; }),
                    m_repeats.end());
    const std::uint32_t height = at(index).height;
    at(index) = line;
    at(index).height = height; // until it is measured
    block_of(index).times[index % block_size] = unknown;
}

void line_store_t::set_height(std::size_t index, std::uint32_t height)
{
    line_t& line = at(index);
    if (!line.has(line_t::hidden)) {
        const std::int64_t change = static_cast<std::int64_t>(height) - line.height;
        block_of(index).height += change;
        m_height += change;
    }
    line.height = height;
}

void line_store_t::set_hidden(std::size_t index, bool hidden)
{
    line_t& line = at(index);
    if (line.has(line_t::hidden) == hidden)
        return;
    line.set(line_t::hidden, hidden);
    const std::int64_t change = hidden ? -static_cast<std::int64_t>(line.height) : line.height;
    block_of(index).height += change;
    m_height += change;
    m_hidden += hidden ? 1 : -1;
}

void line_store_t::sum_up(block_t& block)
{
    std::int64_t height = 0;
    for (const line_t& line : block.lines)
        height += line.has(line_t::hidden) ? 0 : line.height;
    m_height += height - block.height;
    block.height = height;
}

std::int64_t line_store_t::top_of(std::size_t index) const
{
    std::int64_t top = 0;
    const std::size_t block = index / block_size;
    for (std::size_t i = 0; i < block && i < m_blocks.size(); ++i)
        top += m_blocks[i].height;
    if (block < m_blocks.size()) {
        const auto& lines = m_blocks[block].lines;
        const std::size_t end = std::min(index % block_size, lines.size());
        for (std::size_t i = 0; i < end; ++i)
            top += lines[i].has(line_t::hidden) ? 0 : lines[i].height;
    }
    return top;
}

std::size_t line_store_t::line_at(std::int64_t y) const
{
    std::size_t index = 0;
    for (const block_t& block : m_blocks) {
        if (y >= block.height && &block != &m_blocks.back()) {
            y -= block.height;
            index += block.lines.size();
            continue;
        }
        for (const line_t& line : block.lines) {
            const std::int64_t height = line.has(line_t::hidden) ? 0 : line.height;
            if (y < height)
                return index;
            y -= height;
            ++index;
        }
    }
    return m_size ? std::min(index, m_size - 1) : 0;
}

} // namespace vdxcfrw7
