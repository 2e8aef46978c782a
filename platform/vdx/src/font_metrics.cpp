#include "font_metrics.h"

#include "vdx/line_store.h"

#include "shown_text.h"

#include <algorithm>

namespace vdxcfrw7 {
namespace {

// Pieces in which a line is shaped: shaping a long text at once takes more than its share.
constexpr std::size_t shaped_piece = 512;
constexpr int repeats = 8;

} // namespace

void font_metrics_t::set(const wxFont& font, wxDC& dc)
{
    m_font = font;
    m_dc = &dc;
    dc.SetFont(font);
    m_line_height = std::max(1, dc.GetCharHeight());
    for (auto& page : m_pages)
        page.reset();
    for (unsigned int c = 0; c < m_bytes.size(); ++c)
        m_bytes[c] = special;
    const std::uint32_t control = measured(replacement_character);
    for (unsigned int c = 0; c < 0x80; ++c)
        m_bytes[c] = c < 0x20 || c == 0x7f ? control : measured(c);
    m_bytes[' '] |= breakable;
    m_bytes['\t'] = ((m_bytes[' '] & width_mask) * 4) | breakable;
    m_bytes['\n'] = special;
}

std::uint32_t font_metrics_t::measured(char32_t character)
{
    // Widths may be fractions of a pixel: several in a row tell them.
    m_dc->SetFont(m_font);
    const wxString text(static_cast<wchar_t>(character), repeats);
    const int width = m_dc->GetTextExtent(text).x;
    return std::min<std::uint32_t>(width_mask,
                                   static_cast<std::uint32_t>((width * unit + repeats - 1) / repeats));
}

std::uint32_t font_metrics_t::advance(char32_t character)
{
    if (character < 0x80)
        return m_bytes[character];
    if (character >= 0x10000)
        character = 0x4e00; // ideographs beyond the basic plane are as wide as those within
    auto& page = m_pages[character >> 8];
    if (!page) {
        page = std::make_unique<page_t>();
        page->fill(special);
    }
    std::uint32_t& width = (*page)[character & 0xff];
    if (width == special)
        width = measured(character) | (breaks_after(character) ? breakable : 0);
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
    for (; at < end;) {
        const char32_t character = decode(at, end);
        if (character == '\n')
            wide = true;
        else if (needs_shaping(character)) {
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
        const std::uint32_t add = next(at, end);
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
        if (x > width && !space && character > row) {
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
        const std::vector<std::uint32_t> advances = shaped_advances(text);
        std::size_t index = 0;
        return break_with(text, limit, starts, [&](const char*& at, const char* end) {
            decode(at, end);
            return advances[index++];
        });
    }
    if (extent.width != line_t::no_width && extent.width <= width) {
        if (starts)
            starts->assign(1, 0);
        return 1;
    }
    return break_with(text, limit, starts, [this](const char*& at, const char* end) {
        const std::uint32_t add = m_bytes[static_cast<unsigned char>(*at)];
        if (!(add & special)) {
            ++at;
            return add;
        }
        if (*at == '\n') {
            ++at;
            return special;
        }
        return advance(decode(at, end));
    });
}

std::vector<std::uint32_t> font_metrics_t::shaped_advances(std::string_view text)
{
    std::vector<std::uint32_t> advances;
    m_dc->SetFont(m_font);
    const char* const end = text.data() + text.size();
    for (const char* at = text.data(); at < end;) {
        wxString piece;
        std::vector<std::uint32_t>
            kinds; // how many characters of the piece each character of the text has, and more
        while (at < end && piece.length() < 2 * shaped_piece) {
            const char* before = at;
            const char32_t character = decode(at, end);
            if (character == '\n')
                kinds.push_back(special);
            else if (character == '\t') {
                piece.append("    ");
                kinds.push_back(4 | breakable);
            } else {
                piece.append(static_cast<wchar_t>(character));
                kinds.push_back(1 | (*before == ' ' || breaks_after(character) ? breakable : 0));
                if (*before == ' ' && piece.length() >= shaped_piece)
                    break;
            }
        }
        wxArrayInt widths;
        m_dc->GetPartialTextExtents(piece, widths);
        std::size_t index = 0;
        int before = 0;
        for (const std::uint32_t kind : kinds) {
            if (kind == special) {
                advances.push_back(special);
                continue;
            }
            index += kind & width_mask;
            const int behind = index && index <= widths.size() ? widths[index - 1] : before;
            advances.push_back(static_cast<std::uint32_t>(std::max(0, behind - before) * unit) |
                               (kind & breakable));
            before = std::max(before, behind);
        }
    }
    return advances;
}

std::vector<int> font_metrics_t::partial_widths(std::string_view row)
{
    std::vector<int> result;
    m_dc->SetFont(m_font);
    wxArrayInt widths;
    m_dc->GetPartialTextExtents(to_shown(row), widths);
    std::size_t index = 0;
    int last = 0;
    const char* const end = row.data() + row.size();
    for (const char* at = row.data(); at < end;) {
        const char32_t character = decode(at, end);
        index += character == '\n' ? 0 : character == '\t' ? 4 : 1;
        if (index && index <= widths.size())
            last = std::max(last, widths[index - 1]);
        result.push_back(last);
    }
    return result;
}

int font_metrics_t::shaped_width(std::string_view row)
{
    m_dc->SetFont(m_font);
    return m_dc->GetTextExtent(to_shown(row)).x;
}

} // namespace vdxcfrw7
