#include "font_metrics.h"

#include "vdx/line_store.h"

#include "shown_text.h"

#include <glib.h>

#include <algorithm>

namespace vdxcfrw7 {
namespace {

// Whether it belongs to the character before it.
bool joins(char32_t character)
{
    return g_unichar_ismark(character) || character == 0x200d ||
           (character >= 0x1f3fb && character <= 0x1f3ff);
}

} // namespace

void font_metrics_t::set(wxWindow& window, const wxFont& font, wxDC& dc)
{
    m_font = font;
    m_shaper.set(window, font);
    dc.SetFont(font);
    m_line_height = std::max(1, dc.GetCharHeight());
    for (auto& page : m_pages)
        page.reset();
    for (unsigned int c = 0; c < m_bytes.size(); ++c)
        m_bytes[c] = special;
    for (unsigned int c = ' '; c < 0x7f; ++c)
        m_bytes[c] = measured(c);
    m_bytes[' '] |= breakable;
    m_tab = static_cast<std::uint32_t>(m_shaper.get_tab_width()) * unit;
}

std::uint32_t font_metrics_t::measured(char32_t character)
{
    const auto width = static_cast<std::uint64_t>(m_shaper.advance_of(character));
    return static_cast<std::uint32_t>(
        std::min<std::uint64_t>(width_mask, (width * unit + PANGO_SCALE - 1) / PANGO_SCALE));
}

bool font_metrics_t::is_near_tab(std::uint32_t x, std::size_t letters) const
{
    if (letters == 0)
        return false;
    x += m_bytes[' '] & width_mask;
    const auto doubt = static_cast<std::uint32_t>(unit + letters * unit / 6);
    return x % m_tab < doubt || m_tab - x % m_tab < doubt;
}

std::uint32_t font_metrics_t::advance(char32_t character)
{
    if (character < 0x80)
        return m_bytes[character];
    if (character >= 0x10000)
        return advance(0x4e00) | (joins(character) ? joined : 0); // as wide as ideographs of the basic plane
    auto& page = m_pages[character >> 8];
    if (!page) {
        page = std::make_unique<page_t>();
        page->fill(special);
    }
    std::uint32_t& width = (*page)[character & 0xff];
    if (width == special)
        width =
            measured(character) | (breaks_after(character) ? breakable : 0) | (joins(character) ? joined : 0);
    return width;
}

font_metrics_t::extent_t font_metrics_t::measure(std::string_view text)
{
    std::uint32_t width = 0;
    const char* at = text.data();
    const char* const end = at + text.size();
    bool wide = text.size() > 0x10000;
    for (const char* stop = wide ? at + 0x10000 : end; at < stop; ++at) {
        const std::uint32_t add = m_bytes[static_cast<unsigned char>(*at)];
        if (add & special)
            break;
        width += add & width_mask;
    }
    bool complex = false;
    const char* behind_tab = text.data();
    while (at < end) {
        const char* const begin = at;
        const std::uint32_t add = m_bytes[static_cast<unsigned char>(*at)];
        if (!wide && !(add & special)) {
            width += add & width_mask;
            ++at;
            continue;
        }
        const char32_t character = decode(at, end);
        if (character == '\n')
            wide = true;
        else if (character == '\t') {
            complex = is_near_tab(width, static_cast<std::size_t>(begin - behind_tab));
            if (complex)
                break;
            width = next_tab(width);
            behind_tab = at;
        } else if (needs_shaping(character)) {
            complex = true;
            break;
        } else if (!wide) {
            width += advance(character) & width_mask;
            wide = width > 0x3fffff;
        }
    }
    const std::uint32_t pixels = (width + unit - 1) / unit;
    return {wide || complex || pixels >= line_t::no_width ? line_t::no_width
                                                          : static_cast<std::uint16_t>(pixels),
            complex};
}

template <class Next>
std::uint32_t font_metrics_t::break_with(std::string_view text, std::uint32_t width,
                                         std::vector<std::uint32_t>* starts, Next next)
{
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    if (starts) {
        starts->clear();
        starts->push_back(0);
    }
    std::uint32_t rows = 1, x = 0, x_at_break = 0;
    const char* row = begin;
    const char* last_break = begin;
    const auto begin_row = [&](const char* at) {
        ++rows;
        row = last_break = at;
        if (starts)
            starts->push_back(static_cast<std::uint32_t>(at - begin));
    };
    for (const char* at = begin; at < end;) {
        const char* const character = at;
        const std::uint32_t add = next(at, end, x);
        if (add & special) { // a line feed
            if (at < end) {
                begin_row(at);
                x = x_at_break = 0;
            }
            continue;
        }
        x += add & width_mask;
        const bool space = (add & breakable) && (*character == ' ' || *character == '\t');
        // Spaces may hang over the end of a row.
        if (x > width && !space && character > row && !(add & joined)) {
            if (last_break > row) {
                x -= x_at_break;
                begin_row(last_break);
            } else {
                begin_row(character);
                x = add & width_mask;
            }
            x_at_break = 0;
        }
        if (add & breakable) {
            last_break = at;
            x_at_break = x;
        }
    }
    return rows;
}

std::uint32_t font_metrics_t::break_rows(std::string_view text, int width, std::vector<std::uint32_t>* starts,
                                         bool shape)
{
    const auto limit = static_cast<std::uint32_t>(std::max(1, width)) * unit;
    const extent_t extent = measure(text);
    if (extent.complex && shape && text.size() <= longest_shaped) {
        std::vector<std::uint32_t> rows = m_shaper.break_rows(text, width);
        const auto count = static_cast<std::uint32_t>(rows.size());
        if (starts)
            *starts = std::move(rows);
        return count;
    }
    if (extent.width != line_t::no_width && extent.width <= width) {
        if (starts)
            starts->assign(1, 0);
        return 1;
    }
    return break_with(text, limit, starts, [this](const char*& at, const char* end, std::uint32_t x) {
        const std::uint32_t add = m_bytes[static_cast<unsigned char>(*at)];
        if (!(add & special)) {
            ++at;
            return add;
        }
        const char32_t character = decode(at, end);
        if (character == '\t') // rather too far: a row that ends early is read, one that is cut is not
            return (next_tab(x + unit) - x) | breakable;
        return character == '\n' ? special : advance(character);
    });
}

} // namespace vdxcfrw7
