#include "text_shaper.h"

#include "shown_text.h"

#include <cpil/strings.h>

#include <wx/fontutil.h>
#include <wx/window.h>

#include <gtk/gtk.h>

#include <algorithm>

namespace vdxcfrw7 {
namespace {

// Farther back, and farther on, nobody looks for the letter that decides about a direction.
constexpr std::size_t farthest = 4096;

shown_bytes_t to_shown_bytes(std::string_view text)
{
    shown_bytes_t shown;
    shown.text.reserve(text.size());
    shown.source.reserve(text.size() + 1);
    const char* const end = text.data() + text.size();
    for (const char* at = text.data(); at < end;) {
        const auto source = static_cast<std::uint32_t>(at - text.data());
        const char32_t character = decode(at, end);
        if (character == '\n')
            continue;
        char bytes[6] = {' ', ' ', ' ', ' '};
        const int length = character == '\t' ? 4 : g_unichar_to_utf8(character, bytes);
        shown.text.append(bytes, static_cast<std::size_t>(length));
        shown.source.insert(shown.source.end(), static_cast<std::size_t>(length), source);
    }
    shown.source.push_back(static_cast<std::uint32_t>(text.size()));
    return shown;
}

std::size_t shown_byte(const shown_bytes_t& shown, std::size_t source)
{
    return static_cast<std::size_t>(std::lower_bound(shown.source.begin(), shown.source.end(), source) -
                                    shown.source.begin());
}

} // namespace

PangoDirection direction_of(std::string_view text, std::size_t at, PangoDirection otherwise)
{
    const std::size_t earliest = at > farthest ? at - farthest : 0;
    std::size_t begin = at;
    while (begin > earliest && !ends_line(text, begin))
        --begin;
    const std::string_view paragraph = text.substr(begin, farthest);
    // Nearly always the first letter is Latin; the whole algorithm takes longer than drawing the row.
    const char* const end = paragraph.data() + paragraph.size();
    const char* letter = paragraph.data();
    for (const char* next = letter; letter < end; letter = next) {
        const char32_t character = decode(next, end);
        if (character == '\n')
            return otherwise;
        if (character < 0x80 && g_ascii_isalpha(static_cast<gchar>(character)))
            return PANGO_DIRECTION_LTR;
        if (character >= 0x80)
            break;
    }
    const auto undecided = static_cast<std::size_t>(letter - paragraph.data());
    switch (cpil2::strings::base_direction(first_line(paragraph.substr(undecided)))) {
    case cpil2::strings::direction_t::left_to_right:
        return PANGO_DIRECTION_LTR;
    case cpil2::strings::direction_t::right_to_left:
        return PANGO_DIRECTION_RTL;
    default:
        return otherwise;
    }
}

void text_shaper_t::set(wxWindow& window, const wxFont& font)
{
    PangoContext* context = gtk_widget_create_pango_context(window.GetHandle());
    m_layout.reset(pango_layout_new(context));
    g_object_unref(context);
    pango_layout_set_font_description(m_layout.get(), font.GetNativeFontInfo()->description);
    pango_layout_set_auto_dir(m_layout.get(), FALSE);
    pango_layout_set_wrap(m_layout.get(), PANGO_WRAP_WORD_CHAR);
    PangoAttrList* attributes = pango_attr_list_new();
    pango_attr_list_insert(attributes, pango_attr_insert_hyphens_new(FALSE));
    pango_layout_set_attributes(m_layout.get(), attributes);
    pango_attr_list_unref(attributes);
}

void text_shaper_t::set_row(std::string_view row, PangoDirection direction)
{
    m_shown = to_shown_bytes(row);
    PangoContext* context = pango_layout_get_context(m_layout.get());
    if (pango_context_get_base_dir(context) != direction) {
        pango_context_set_base_dir(context, direction);
        pango_layout_context_changed(m_layout.get());
    }
    pango_layout_set_width(m_layout.get(), -1);
    pango_layout_set_text(m_layout.get(), m_shown.text.data(), static_cast<int>(m_shown.text.size()));
}

std::vector<std::uint32_t> text_shaper_t::break_rows(std::string_view text, int width)
{
    std::vector<std::uint32_t> rows;
    for (std::size_t begin = 0; begin < text.size() || rows.empty();) {
        // A paragraph, with the end of its line.
        const char* const stop = text.data() + text.size();
        const char* end = text.data() + begin;
        while (end < stop && decode(end, stop) != '\n') {
        }
        const std::string_view paragraph =
            text.substr(begin, static_cast<std::size_t>(end - text.data()) - begin);
        set_row(paragraph, direction_of(text, begin, PANGO_DIRECTION_LTR));
        pango_layout_set_width(m_layout.get(), std::max(1, width) * PANGO_SCALE);
        for (int line = 0, count = pango_layout_get_line_count(m_layout.get()); line < count; ++line) {
            // An empty paragraph shows nothing of its end, and still begins where it begins.
            const int shown = pango_layout_get_line_readonly(m_layout.get(), line)->start_index;
            const std::uint32_t source = line == 0 ? 0 : m_shown.source[static_cast<std::size_t>(shown)];
            if (line == 0 || begin + source > rows.back())
                rows.push_back(static_cast<std::uint32_t>(begin + source));
        }
        begin += paragraph.size();
    }
    return rows;
}

int text_shaper_t::width_of(std::string_view row, PangoDirection direction)
{
    set_row(row, direction);
    int width = 0;
    pango_layout_get_pixel_size(m_layout.get(), &width, nullptr);
    return width;
}

std::vector<std::pair<int, int>> text_shaper_t::places_of(std::string_view row, PangoDirection direction,
                                                          std::size_t from, std::size_t to)
{
    // Letters that no font has make gaps between the places of their clusters' parts.
    if (from == 0 && to >= row.size() && !row.empty())
        return {{0, width_of(row, direction)}};
    set_row(row, direction);
    std::vector<std::pair<int, int>> places;
    int* ranges = nullptr;
    int count = 0;
    pango_layout_line_get_x_ranges(pango_layout_get_line_readonly(m_layout.get(), 0),
                                   static_cast<int>(shown_byte(m_shown, from)),
                                   static_cast<int>(shown_byte(m_shown, to)), &ranges, &count);
    for (int i = 0; i < count; ++i) {
        const int left = PANGO_PIXELS_FLOOR(ranges[2 * i]), right = PANGO_PIXELS_CEIL(ranges[2 * i + 1]);
        if (right > left)
            places.emplace_back(left, right);
    }
    g_free(ranges);
    return places;
}

std::size_t text_shaper_t::byte_at(std::string_view row, PangoDirection direction, int x)
{
    set_row(row, direction);
    int index = 0, trailing = 0;
    PangoLayoutLine* line = pango_layout_get_line_readonly(m_layout.get(), 0);
    pango_layout_line_x_to_index(line, x * PANGO_SCALE, &index, &trailing);
    // How many characters of the cluster lie before the pointer.
    const char* at = m_shown.text.c_str() + index;
    const char* const end = m_shown.text.c_str() + m_shown.text.size();
    for (; trailing > 0 && at < end; --trailing)
        at = g_utf8_next_char(at);
    return m_shown.source[static_cast<std::size_t>(std::min(at, end) - m_shown.text.c_str())];
}

} // namespace vdxcfrw7
