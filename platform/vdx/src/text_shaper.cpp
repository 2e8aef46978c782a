#include "text_shaper.h"

#include "shown_text.h"

#include <cpil/strings.h>

#include <wx/fontutil.h>
#include <wx/window.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <iterator>

namespace vdxcfrw7 {
namespace {

// Farther back, and farther on, nobody looks for the letter that decides about a direction.
constexpr std::size_t farthest = 4096;
// So many spaces are about as wide as eight letters.
constexpr int tab_spaces = 16;

void to_shown_bytes(std::string_view text, bool has_pictures, shown_bytes_t& shown)
{
    shown.text.clear();
    shown.source.clear();
    const char* const end = text.data() + text.size();
    for (const char* at = text.data(); at < end;) {
        const auto source = static_cast<std::uint32_t>(at - text.data());
        const bool is_ascii = static_cast<unsigned char>(*at) < 0x80;
        char32_t character = decode(at, end);
        if (character == '\n')
            continue;
        // In the place of those that a font lacks others have very small ones.
        if (is_ascii && character >= 0x80 && !has_pictures)
            character = replacement_character;
        char bytes[6] = {' ', '\t'}; // a column is never closer than that
        const int length = character == '\t' ? 2 : g_unichar_to_utf8(character, bytes);
        shown.text.append(bytes, static_cast<std::size_t>(length));
        shown.source.insert(shown.source.end(), static_cast<std::size_t>(length), source);
    }
    shown.source.push_back(static_cast<std::uint32_t>(text.size()));
}

std::size_t shown_byte(const shown_bytes_t& shown, std::size_t source)
{
    return static_cast<std::size_t>(std::lower_bound(shown.source.begin(), shown.source.end(), source) -
                                    shown.source.begin());
}

using attributes_t = std::unique_ptr<PangoAttrList, gen_helpers2::deleter_t<pango_attr_list_unref>>;

attributes_t plain_attributes()
{
    attributes_t list(pango_attr_list_new());
    pango_attr_list_insert(list.get(), pango_attr_insert_hyphens_new(FALSE));
    return list;
}

// Those of a row whose text is `length` bytes long.
attributes_t attributes_of(const shown_bytes_t& shown, std::size_t length, const row_style_t& style)
{
    attributes_t list = plain_attributes();
    const style_runs_t& runs = *style.runs;
    auto run = std::upper_bound(runs.begin(), runs.end(), style.begin,
                                [](std::size_t at, const style_run_t& r) { return at < r.begin; });
    if (run != runs.begin())
        --run;
    for (; run != runs.end() && run->begin < style.begin + length; ++run) {
        const auto next = std::next(run);
        const std::size_t from = std::max(run->begin, style.begin) - style.begin;
        const std::size_t to = next == runs.end() ? length : std::min(length, next->begin - style.begin);
        const auto add = [&](PangoAttribute* attribute) {
            attribute->start_index = static_cast<guint>(shown_byte(shown, from));
            attribute->end_index = static_cast<guint>(shown_byte(shown, to));
            pango_attr_list_insert(list.get(), attribute);
        };
        const text_style_t& look = run->style;
        if (look.has(text_style_t::bold))
            add(pango_attr_weight_new(PANGO_WEIGHT_BOLD));
        if (look.has(text_style_t::italic))
            add(pango_attr_style_new(PANGO_STYLE_ITALIC));
        if (look.has(text_style_t::underlined))
            add(pango_attr_underline_new(PANGO_UNDERLINE_SINGLE));
        if (look.has(text_style_t::struck))
            add(pango_attr_strikethrough_new(TRUE));
        if (!style.colours)
            continue;
        const auto level = [](unsigned char c) { return static_cast<guint16>(c * 257); };
        const style_colours_t::pair_t& colours = style.colours->get(look);
        const wxColour &ink = colours.ink, &ground = colours.ground;
        add(pango_attr_foreground_new(level(ink.Red()), level(ink.Green()), level(ink.Blue())));
        if (ground.IsOk())
            add(pango_attr_background_new(level(ground.Red()), level(ground.Green()), level(ground.Blue())));
    }
    return list;
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
    m_is_plain = false;
    const object_ptr_t<PangoFont> own(pango_context_load_font(pango_layout_get_context(m_layout.get()),
                                                              font.GetNativeFontInfo()->description));
    m_has_pictures = own && pango_font_has_char(own.get(), control_picture(0x1b));
    int space = 0;
    pango_layout_set_text(m_layout.get(), std::string(tab_spaces, ' ').c_str(), tab_spaces);
    pango_layout_get_size(m_layout.get(), &space, nullptr);
    // A whole number of pixels, so that the table of widths finds the same places.
    m_tab_width = std::max(1, PANGO_PIXELS(space));
    PangoTabArray* tabs = pango_tab_array_new_with_positions(1, TRUE, PANGO_TAB_LEFT, m_tab_width);
    pango_layout_set_tabs(m_layout.get(), tabs);
    pango_tab_array_free(tabs);
}

int text_shaper_t::advance_of(char32_t character)
{
    char bytes[6];
    const int length = g_unichar_to_utf8(character, bytes);
    set_row(std::string_view(bytes, static_cast<std::size_t>(length)), PANGO_DIRECTION_LTR, {});
    int width = 0;
    pango_layout_get_size(m_layout.get(), &width, nullptr);
    return width;
}

void text_shaper_t::set_row(std::string_view row, PangoDirection direction, const row_style_t& style)
{
    to_shown_bytes(row, m_has_pictures, m_shown);
    PangoContext* context = pango_layout_get_context(m_layout.get());
    if (pango_context_get_base_dir(context) != direction) {
        pango_context_set_base_dir(context, direction);
        pango_layout_context_changed(m_layout.get());
    }
    pango_layout_set_width(m_layout.get(), -1);
    pango_layout_set_text(m_layout.get(), m_shown.text.data(), static_cast<int>(m_shown.text.size()));
    if (style.is_plain() && m_is_plain)
        return;
    m_is_plain = style.is_plain();
    const attributes_t attributes =
        m_is_plain ? plain_attributes() : attributes_of(m_shown, row.size(), style);
    pango_layout_set_attributes(m_layout.get(), attributes.get());
}

std::vector<std::uint32_t> text_shaper_t::break_rows(std::string_view text, int width,
                                                     const style_runs_t* runs)
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
        set_row(paragraph, direction_of(text, begin, PANGO_DIRECTION_LTR), {runs, begin});
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

int text_shaper_t::width_of(std::string_view row, PangoDirection direction, const row_style_t& style)
{
    set_row(row, direction, style);
    int width = 0;
    pango_layout_get_pixel_size(m_layout.get(), &width, nullptr);
    return width;
}

std::vector<std::pair<int, int>> text_shaper_t::places_of(std::string_view row, PangoDirection direction,
                                                          std::size_t from, std::size_t to,
                                                          const row_style_t& style)
{
    // Letters that no font has make gaps between the places of their clusters' parts.
    if (from == 0 && to >= row.size() && !row.empty())
        return {{0, width_of(row, direction, style)}};
    set_row(row, direction, style);
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

std::size_t text_shaper_t::byte_at(std::string_view row, PangoDirection direction, int x,
                                   const row_style_t& style)
{
    set_row(row, direction, style);
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
