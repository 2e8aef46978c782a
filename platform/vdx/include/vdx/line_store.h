#pragma once

#include "vdx/export.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace vdxcfrw7 {

/// Keeps many short texts in a few large pieces of memory; each text ends with a zero byte that does not
/// count. Texts stay where they are until the arena goes. Not safe in several threads at once.
class VDX_EXPORT text_arena_t
{
public:
    const char* add(std::string_view text);
    /// Takes over all texts of another arena, which is empty afterwards.
    void adopt(text_arena_t&& other);
    /// In bytes, with what is not used yet.
    std::size_t get_size() const { return m_size; }

private:
    struct chunk_t
    {
        std::unique_ptr<char[]> bytes;
        std::size_t size;
    };
    std::vector<chunk_t> m_chunks;
    char* m_free = nullptr;
    std::size_t m_left = 0;
    std::size_t m_size = 0;
};

/// One line as it is kept: 24 bytes beside its text.
struct line_t
{
    enum flag_t : std::uint8_t
    {
        status = 1,  ///< its text is replaced, and it is no part of what is remembered
        hidden = 2,  ///< by the filter
        inexact = 4, ///< its height is an estimate
        auto_size = 8,
        adjusted = 16 ///< its height follows its text
    };

    const char* text;
    std::uint32_t length;   ///< in bytes
    std::uint32_t severity; ///< as it was said
    std::uint32_t height;   ///< in pixels, for the width of the layout that the block was measured in
    std::uint16_t width;    ///< of the text in one row, in pixels; `no_width` when it is not known
    std::uint8_t image;     ///< index into the log's images
    std::uint8_t flags;

    static constexpr std::uint16_t no_width = 0xffff;

    std::string_view get_text() const { return std::string_view(text, length); }
    bool has(flag_t flag) const { return (flags & flag) != 0; }
    void set(flag_t flag, bool on) { flags = static_cast<std::uint8_t>(on ? flags | flag : flags & ~flag); }
};

/// The lines of one entry, in blocks, so that adding one never moves the others and sums of heights are at
/// hand.
class VDX_EXPORT line_store_t
{
public:
    static constexpr std::size_t block_size = 1024;

    struct block_t
    {
        std::vector<line_t> lines;
        std::int64_t height = 0; ///< of all lines that are not hidden
        unsigned int layout = 0; ///< the layout in which all its lines were measured last
        std::size_t refined = 0; ///< how many lines from the front are known to be exact in that layout
    };

    std::size_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }
    line_t& at(std::size_t index) { return m_blocks[index / block_size].lines[index % block_size]; }
    const line_t& at(std::size_t index) const
    {
        return m_blocks[index / block_size].lines[index % block_size];
    }
    block_t& block_of(std::size_t index) { return m_blocks[index / block_size]; }

    std::vector<block_t>& get_blocks() { return m_blocks; }
    const std::vector<block_t>& get_blocks() const { return m_blocks; }

    /// Adds a line at the end; its text must live as long as the store: see keep().
    line_t& add(const line_t& line);
    const char* keep(std::string_view text) { return m_arena.add(text); }
    void adopt(text_arena_t&& arena) { m_arena.adopt(std::move(arena)); }

    /// Of all lines that are not hidden.
    std::int64_t get_height() const { return m_height; }
    void set_height(std::size_t index, std::uint32_t height);
    void set_hidden(std::size_t index, bool hidden);
    std::size_t get_hidden_count() const { return m_hidden; }
    /// Adds up the block's heights after its lines were changed directly.
    void sum_up(block_t& block);

    /// The top of a line, counted from the top of the first.
    std::int64_t top_of(std::size_t index) const;
    /// The line at that height, the last one below the end; the store must not be empty.
    std::size_t line_at(std::int64_t y) const;

private:
    std::vector<block_t> m_blocks;
    text_arena_t m_arena;
    std::size_t m_size = 0;
    std::size_t m_hidden = 0;
    std::int64_t m_height = 0;
};

} // namespace vdxcfrw7
