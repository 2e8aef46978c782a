#pragma once

#include "text_shaper.h"

#include <wx/dc.h>
#include <wx/font.h>

#include <array>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace vdxcfrw7 {

/// Measures and breaks lines of one font with a table of the widths of its characters: shaping a line
/// costs a thousand times as much. Characters that only shaping can measure are shaped, in lines up to
/// `longest_shaped` bytes; in longer ones they count as if they stood alone.
class font_metrics_t
{
public:
    static constexpr std::size_t longest_shaped = 32 * 1024;

    /// The device context measures the height of a row.
    void set(wxWindow& window, const wxFont& font, wxDC& dc);

    const wxFont& get_font() const { return m_font; }
    int get_line_height() const { return m_line_height; }

    struct extent_t
    {
        std::uint16_t width; ///< in pixels; line_t::no_width for several rows or what must be shaped
        bool complex;        ///< only shaping gives its rows
    };
    extent_t measure(std::string_view text);

    /// Breaks a text into rows of at most `width` pixels, at spaces where it can.
    /// @param starts receives where each row begins, in bytes; may be null
    /// @param shape false: an estimate that shapes nothing
    /// @return the number of rows, at least 1
    std::uint32_t break_rows(std::string_view text, int width, std::vector<std::uint32_t>* starts,
                             bool shape = true);

    text_shaper_t& get_shaper() { return m_shaper; }

private:
    static constexpr int unit = 64; // widths are kept in 64ths of a pixel
    static constexpr std::uint32_t width_mask = 0xffffff;
    static constexpr std::uint32_t joined = 1u << 29; // to the character before it
    static constexpr std::uint32_t breakable = 1u << 30;
    static constexpr std::uint32_t special = 1u << 31;

    std::uint32_t advance(char32_t character);
    std::uint32_t measured(char32_t character);
    std::uint32_t next_tab(std::uint32_t x) const
    {
        return ((x + (m_bytes[' '] & width_mask)) / m_tab + 1) * m_tab;
    }
    /// Whether letters that stand closer together than the table says might end before another place of a tab.
    bool is_near_tab(std::uint32_t x, std::size_t letters) const;
    template <class Next>
    std::uint32_t break_with(std::string_view text, std::uint32_t width, std::vector<std::uint32_t>* starts,
                             Next next);

    wxFont m_font;
    text_shaper_t m_shaper;
    int m_line_height = 1;
    std::uint32_t m_tab = unit;               // the distance of their places
    std::array<std::uint32_t, 256> m_bytes{}; // of ASCII; the others, tabs and controls are special
    using page_t = std::array<std::uint32_t, 256>;
    std::array<std::unique_ptr<page_t>, 256> m_pages;
};

} // namespace vdxcfrw7
