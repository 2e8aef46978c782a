#pragma once

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

    /// Where the rows of a text begin, in bytes, when none is wider than `width` pixels.
    std::vector<std::uint32_t> break_rows(std::string_view text, int width);

    int width_of(std::string_view row, PangoDirection direction);
    /// Where the bytes from `from` to `to` stand, in pixels from the row's left edge: several places in a
    /// text of mixed direction.
    std::vector<std::pair<int, int>> places_of(std::string_view row, PangoDirection direction,
                                               std::size_t from, std::size_t to);
    /// The byte before which a caret at `x` pixels from the row's left edge stands.
    std::size_t byte_at(std::string_view row, PangoDirection direction, int x);

private:
    void set_row(std::string_view row, PangoDirection direction);

    pango_layout_t m_layout;
    shown_bytes_t m_shown; // what the layout holds
};

} // namespace vdxcfrw7
