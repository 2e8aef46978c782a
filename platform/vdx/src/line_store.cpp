#include "vdx/line_store.h"

#include <algorithm>
#include <cstring>

namespace vdxcfrw7 {
namespace {

constexpr std::size_t smallest_chunk = 256;
constexpr std::size_t largest_chunk = 512 * 1024;

} // namespace

const char* text_arena_t::add(std::string_view text)
{
    const std::size_t needed = text.size() + 1;
    if (needed > m_left) {
        // Small entries stay small; a long log gets few, large pieces.
        const std::size_t size = std::max(needed, std::clamp(m_size, smallest_chunk, largest_chunk));
        m_chunks.push_back({std::unique_ptr<char[]>(new char[size]), size});
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
    }
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
    m_chunks.insert(m_chunks.end(), std::make_move_iterator(other.m_chunks.begin()),
                    std::make_move_iterator(other.m_chunks.end()));
    m_size += other.m_size;
    if (other.m_left > m_left) {
        m_free = other.m_free;
        m_left = other.m_left;
    }
    other = text_arena_t();
}

line_t& line_store_t::add(const line_t& line)
{
    if (m_size % block_size == 0) {
        m_blocks.emplace_back();
        if (m_size)
            m_blocks.back().lines.reserve(block_size);
    }
    block_t& block = m_blocks.back();
    block.lines.push_back(line);
    if (line.has(line_t::hidden))
        ++m_hidden;
    else {
        block.height += line.height;
        m_height += line.height;
    }
    ++m_size;
    return block.lines.back();
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
