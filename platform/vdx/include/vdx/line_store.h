#pragma once

#include "vdx/export.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace vdxcfrw7 {

/// Keeps many short texts in a few large pieces of memory; each text ends with a zero byte that does not
/// count. Texts stay where they are until the arena goes. Not safe in several threads at once.
class VDX_EXPORT text_arena_t
{
public:
    text_arena_t() = default;
    text_arena_t(text_arena_t&&) = default;
    text_arena_t& operator=(text_arena_t&&) = default;

    /// A number that users of the texts count by, one for each line: release_before() goes by it.
    using user_t = std::uint64_t;

    /// @param user the last one who needs the text
    const char* add(std::string_view text, user_t user = 0);
    /// Takes over all texts of another arena, which is empty afterwards.
    void adopt(text_arena_t&& other);
    /// Has the texts of another arena stay also when that one goes. What it gets later is not among them.
    /// They may be read in another thread while texts are added there.
    /// @since 3.1
    void share(const text_arena_t& other);
    /// A text of what was taken over has this user. To be called in the order in which the texts were added there;
    /// a piece that may get more stays until close().
    /// @since 3.1
    void use(const char* text, user_t user);
    /// All texts of what was taken over have got their users.
    /// @since 3.1
    void close();
    /// All users have got lower numbers, below `end`.
    /// @since 3.1
    void renumber(user_t end);
    /// Frees the pieces whose last user stands before this one.
    /// @since 3.1
    void release_before(user_t user);
    /// In bytes, with what is not used yet.
    std::size_t get_size() const { return m_size; }

private:
    struct chunk_t
    {
        std::shared_ptr<char[]> bytes;
        std::size_t size;
        user_t user; ///< the last one
        bool open;   ///< its texts are still to get users
        bool has(const char* text) const { return text >= bytes.get() && text < bytes.get() + size; }
    };

    std::vector<chunk_t> m_chunks;
    std::size_t m_current = 0; // the one in which room is left
    std::size_t m_used = 0;    // and the one that use() has found last
    char* m_free = nullptr;
    std::size_t m_left = 0;
    std::size_t m_size = 0;
};

/// One line as it is kept: 24 bytes beside its text, and 4 for its time.
struct line_t
{
    /// What is true of a line; as bits.
    enum flag_t : std::uint8_t
    {
        status = 1,    ///< its text is replaced, and it is no part of what is remembered
        hidden = 2,    ///< by the filter
        inexact = 4,   ///< its height is an estimate
        auto_size = 8, ///< see CCaption::SetAutoSize()
        adjusted = 16, ///< its height follows its text
        styled = 32,   ///< its text holds sequences for a terminal, which are not shown
        repeated = 64, ///< it was said several times in a row
        expanded = 128 ///< and is shown as often
    };

    const char* text;
    std::uint32_t length;   ///< in bytes
    std::uint32_t severity; ///< as it was said
    std::uint32_t height;   ///< in pixels, for the width of the layout that the block was measured in
    std::uint16_t width;    ///< of the text in one row, in pixels; `no_width` when it is not known
    std::uint8_t image;     ///< index into the log's images
    std::uint8_t flags;

    static constexpr std::uint16_t no_width = 0xffff;
    // Of a severity; other bits are the owner's.
    static constexpr std::uint32_t warning_bits = 2;
    static constexpr std::uint32_t error_bits = 4 | 8;

    // A line that is longer shows its first part until somebody wants to see all of it.
    static constexpr std::uint32_t longest_shown = std::uint32_t(1) << 20; // bytes
    static constexpr std::uint32_t first_part = std::uint32_t(64) << 10;

    std::string_view get_text() const { return std::string_view(text, length); }
    /// @since 3.1
    bool is_long() const { return length > longest_shown; }
    /// As much of the text as is shown.
    /// @since 3.1
    std::string_view get_seen() const
    {
        std::uint32_t seen = is_long() && !has(expanded) ? first_part : length;
        while (seen < length && seen > 0 && (static_cast<unsigned char>(text[seen]) & 0xc0) == 0x80)
            --seen; // not within a character
        return std::string_view(text, seen);
    }
    /// Whether there is more of it than is shown at first: its repeats, or the rest of a long text.
    /// @since 3.1
    bool can_expand() const { return has(repeated) || is_long(); }
    bool has(flag_t flag) const { return (flags & flag) != 0; }
    void set(flag_t flag, bool on) { flags = static_cast<std::uint8_t>(on ? flags | flag : flags & ~flag); }
};

/// The text of a line as it is read, searched and copied: without sequences for a terminal. `storage` is used
/// for those that hold some.
/// @since 3.1
VDX_EXPORT std::string_view get_shown_text(const line_t& line, std::string& storage);

/// The lines of one entry, in blocks, so that adding one never moves the others and sums of heights are at
/// hand.
class VDX_EXPORT line_store_t
{
public:
    static constexpr std::size_t block_size = 1024;

    /// The time of a line that nobody knows.
    static constexpr std::int64_t no_time = -1;

    /// Lines that are kept together.
    struct block_t
    {
        std::vector<line_t> lines;
        std::vector<std::uint32_t> times; ///< of the lines, counted from about `time_base`
        std::int64_t time_base = no_time;
        std::int64_t height = 0; ///< of all lines that are not hidden
        unsigned int layout = 0; ///< the layout in which all its lines were measured last
        std::size_t refined = 0; ///< how many lines from the front are known to be exact in that layout
    };

    std::size_t size() const { return m_size; }
    bool empty() const { return m_size == 0; }
    /// The line at a place, which must be one.
    line_t& at(std::size_t index) { return m_blocks[index / block_size].lines[index % block_size]; }
    const line_t& at(std::size_t index) const
    {
        return m_blocks[index / block_size].lines[index % block_size];
    }
    /// The block that holds the line.
    block_t& block_of(std::size_t index) { return m_blocks[index / block_size]; }

    std::vector<block_t>& get_blocks() { return m_blocks; }
    const std::vector<block_t>& get_blocks() const { return m_blocks; }

    /// Adds a line at the end; its text must live as long as the store: see keep().
    /// @param time when it was said, in milliseconds since 1970
    line_t& add(const line_t& line, std::int64_t time = no_time);
    /// To the millisecond; a block's lines reach over 24 days to either side of its first.
    /// @since 3.1
    std::int64_t get_time(std::size_t index) const;

    /// The last line that is no status line; size() when there is none.
    /// @since 3.1
    std::size_t last_remembered() const;
    /// Whether the last remembered line is this very one.
    /// @since 3.1
    bool ends_with(std::uint32_t severity, std::string_view text) const;
    /// It was said `count` times more.
    /// @since 3.1
    void repeat_last(std::uint64_t count);
    /// How often it was said in a row; 1 for most.
    /// @since 3.1
    std::uint64_t get_count(std::size_t index) const;
    /// @since 3.1
    bool has_repeats() const { return !m_repeats.empty(); }
    /// Whether repeated lines are shown as often as they were said; returns whether any is another now.
    /// @since 3.1
    bool expand_repeats(bool expand);
    /// Makes one line of those that are the same and follow each other. Nothing is measured then.
    /// @param line an index, which is told its new one
    /// @return whether any were
    /// @since 3.1
    bool collapse(std::size_t& line);

    /// Calls fn(line, how often it was said, when first) for each line.
    /// @since 3.1
    template <class F>
    void for_each(F&& fn) const
    {
        auto repeat = m_repeats.begin();
        for (std::size_t index = 0; index < m_size; ++index) {
            const line_t& line = at(index);
            const bool repeated = repeat != m_repeats.end() && repeat->line == index;
            fn(line, repeated ? (repeat++)->count : std::uint64_t(1), get_time(index));
        }
    }
    /// Copies the next block of lines of another store, up to its line `end`, so that a copy of many can be
    /// made in pieces; texts are not copied, and stay as long as one of the stores does. Begins again when
    /// the lines there have got other indexes meanwhile. Status lines have no text in the copy that could be
    /// read.
    /// @return whether there is more to copy
    /// @since 3.1
    bool copy_some(const line_store_t& from, std::size_t end);

    /// Takes the first blocks away, and the texts that only they had; the others get lower indexes. The last
    /// block stays.
    /// @since 3.1
    void drop_blocks(std::size_t count);
    /// Puts another line in the place of one.
    /// @since 3.1
    void replace(std::size_t index, const line_t& line);
    /// What it takes, in bytes.
    /// @since 3.1
    std::size_t get_bytes() const
    {
        return m_arena.get_size() + m_size * (sizeof(line_t) + sizeof(std::uint32_t));
    }

    /// Copies the text of the line that is added next; it lives as long as the store.
    const char* keep(std::string_view text) { return m_arena.add(text, m_dropped + m_size); }
    /// Takes an arena over in which texts of lines stand that are added then.
    void adopt(text_arena_t&& arena) { m_arena.adopt(std::move(arena)); }
    /// The text of the next line was adopted.
    /// @since 3.1
    void use_adopted(const char* text) { m_arena.use(text, m_dropped + m_size); }
    /// All lines whose texts were adopted have been added.
    /// @since 3.1
    void adopted_all() { m_arena.close(); }

    /// Of all lines that are not hidden.
    std::int64_t get_height() const { return m_height; }
    /// In pixels.
    void set_height(std::size_t index, std::uint32_t height);
    /// Hides a line, or shows it again.
    void set_hidden(std::size_t index, bool hidden);
    std::size_t get_hidden_count() const { return m_hidden; }
    /// Adds up the block's heights after its lines were changed directly.
    void sum_up(block_t& block);

    /// The top of a line, counted from the top of the first.
    std::int64_t top_of(std::size_t index) const;
    /// The line at that height, the last one below the end; the store must not be empty.
    std::size_t line_at(std::int64_t y) const;

private:
    struct repeat_t
    {
        std::size_t line;
        std::uint64_t count;
    };

    std::vector<block_t> m_blocks;
    std::vector<repeat_t> m_repeats; // in the order of the lines
    text_arena_t m_arena;
    std::size_t m_size = 0;
    std::size_t m_hidden = 0;
    std::int64_t m_height = 0;
    std::uint64_t m_dropped = 0;  // how many lines were before the first
    unsigned int m_numbering = 0; // another one when lines have got other indexes
};

} // namespace vdxcfrw7
