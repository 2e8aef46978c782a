#pragma once

#include "styled_text.h"

#include <gen_helpers2/deleter.h>

#include <wx/font.h>

#include <pango/pango.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class wxWindow;

namespace vdxcfrw7 {

template <class T>
using object_ptr_t = std::unique_ptr<T, gen_helpers2::deleter_t<g_object_unref>>;
using pango_layout_t = object_ptr_t<PangoLayout>;

/// A text as it is drawn, and where its bytes come from.
struct shown_bytes_t
{
    std::string text;
    std::vector<std::uint32_t> source; ///< of each byte of `text`, and one behind
};

/// How a row looks beyond its font: as the runs of its text say, from byte `begin` of that text on.
struct row_style_t
{
    const style_runs_t* runs = nullptr;
    std::size_t begin = 0;
    style_colours_t* colours = nullptr; ///< null: faces alone

    bool is_plain() const { return !runs || runs->empty(); }
};

/// The direction of the paragraph that the byte at `at` belongs to, by its first letter; `otherwise` when it
/// has none.
PangoDirection direction_of(std::string_view text, std::size_t at, PangoDirection otherwise);

/// Shapes text of one font as a window draws it: rows are broken between clusters of letters, and their
/// places follow the direction in which each part is read. GUI thread.
class text_shaper_t
{
public:
    /// The window's own text settings: resolution, hinting, direction.
    void set(wxWindow& window, const wxFont& font);

    /// The distance of the places at which tabs end, from the leading edge of a row, in pixels.
    int get_tab_width() const { return m_tab_width; }
    /// How far a character that stands alone reaches, in the units of Pango.
    int advance_of(char32_t character);

    /// Where the rows of a text begin, in bytes, when none is wider than `width` pixels.
    std::vector<std::uint32_t> break_rows(std::string_view text, int width,
                                          const style_runs_t* runs = nullptr);

    int width_of(std::string_view row, PangoDirection direction, const row_style_t& style = {});
    /// Where the bytes from `from` to `to` stand, in pixels from the row's left edge: several places in a
    /// text of mixed direction.
    std::vector<std::pair<int, int>> places_of(std::string_view row, PangoDirection direction,
                                               std::size_t from, std::size_t to,
                                               const row_style_t& style = {});
    /// The byte before which a caret at `x` pixels from the row's left edge stands.
    std::size_t byte_at(std::string_view row, PangoDirection direction, int x, const row_style_t& style = {});
    /// The row, to be drawn before the next call.
    PangoLayout* layout_of(std::string_view row, PangoDirection direction, const row_style_t& style)
    {
        set_row(row, direction, style);
        return m_layout.get();
    }

private:
    void set_row(std::string_view row, PangoDirection direction, const row_style_t& style);

    pango_layout_t m_layout;
    bool m_is_plain = false;    // it has no attributes of a row
    bool m_has_pictures = true; // the font has them, of control characters
    int m_tab_width = 1;
    shown_bytes_t m_shown; // what the layout holds
};

} // namespace vdxcfrw7
