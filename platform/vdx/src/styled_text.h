/// Texts that were made for a terminal: what of them is read, and how it looks there.
#pragma once

#include <wx/colour.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vdxcfrw7 {

/// How a piece of a text looks. A colour is 0xrrggbb, one of the sixteen of a terminal, or none of its own.
struct text_style_t
{
    static constexpr std::uint32_t named = 0x1000000; ///< and the number of one of the sixteen
    static constexpr std::uint32_t no_colour = 0x2000000;
    static constexpr std::uint32_t link_colour = 0x3000000;

    enum flag_t : std::uint8_t
    {
        bold = 1,
        italic = 2,
        underlined = 4,
        struck = 8,
        faint = 16,
        inverse = 32
    };

    std::uint32_t ink = no_colour;
    std::uint32_t ground = no_colour;
    std::uint8_t flags = 0;

    bool has(flag_t flag) const { return (flags & flag) != 0; }
    bool operator==(const text_style_t& other) const
    {
        return ink == other.ink && ground == other.ground && flags == other.flags;
    }
};

/// Up to where the next one begins.
struct style_run_t
{
    std::size_t begin; ///< in bytes of the text
    text_style_t style;
};
using style_runs_t = std::vector<style_run_t>;

/// A piece of a text that its maker made a link, as programs do for a terminal that can follow them.
struct marked_link_t
{
    std::size_t begin; ///< in bytes of the text
    std::size_t end;
    std::string target;
};

struct styled_text_t
{
    std::string text; ///< without sequences
    style_runs_t runs;
    std::vector<marked_link_t> links;
    bool has_faces = false; ///< some of it is bold or italic, and wider
};

inline bool has_sequences(std::string_view text)
{
    return text.find('\x1b') != std::string_view::npos;
}

/// Takes the sequences out of a text. Those that set colours and faces, or make links, are obeyed, all others
/// have no effect; what only looks like the beginning of one stays.
void read_styled_text(std::string_view said, styled_text_t& shown);

/// Gives the piece from `begin` to `end` another colour, underlined, whatever it had.
void mark_link(style_runs_t& runs, std::size_t begin, std::size_t end);

/// What the colours of a text are on the screen: those of the theme, and all others so that they can be read.
class style_colours_t
{
public:
    struct pair_t
    {
        wxColour ink;
        wxColour ground; ///< not set: that of the window
    };

    void set(const wxColour& ink, const wxColour& background, const wxColour& link);
    const pair_t& get(const text_style_t& style);

private:
    pair_t make(const text_style_t& style) const;
    wxColour plain(std::uint32_t colour, const wxColour& otherwise) const;

    wxColour m_ink;
    wxColour m_background;
    wxColour m_link;
    std::unordered_map<std::uint64_t, pair_t> m_known; // making one takes longer than drawing a word
};

} // namespace vdxcfrw7
