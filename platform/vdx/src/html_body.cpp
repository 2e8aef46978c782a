#include "html_body.h"

#include "paint_dc.h"

#include <wx_helpers1/ui_settings.h>

#include <wx/fontutil.h>
#include <wx/window.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <memory>
#include <numeric>

namespace vdxcfrw7 {
namespace {

constexpr int cell_padding = 3;
constexpr double size_factor = 1.2; // of one step of a text's size

using attributes_t = std::unique_ptr<PangoAttrList, gen_helpers2::deleter_t<pango_attr_list_unref>>;

void add(PangoAttrList* list, PangoAttribute* attribute, const body_span_t& span)
{
    attribute->start_index = static_cast<guint>(span.begin);
    attribute->end_index = static_cast<guint>(span.end);
    pango_attr_list_insert(list, attribute);
}

double factor_of(int steps)
{
    double factor = 1;
    for (; steps > 0; --steps)
        factor *= size_factor;
    for (; steps < 0; ++steps)
        factor /= size_factor;
    return factor;
}

attributes_t attributes_of(const body_paragraph_t& paragraph, const body_look_t& look)
{
    attributes_t list(pango_attr_list_new());
    pango_attr_list_insert(list.get(), pango_attr_insert_hyphens_new(FALSE)); // none is part of a path
    for (const body_span_t& span : paragraph.spans) {
        const body_style_t& style = span.style;
        if (style.bold)
            add(list.get(), pango_attr_weight_new(PANGO_WEIGHT_BOLD), span);
        if (style.italic)
            add(list.get(), pango_attr_style_new(PANGO_STYLE_ITALIC), span);
        if (style.underlined || style.link)
            add(list.get(), pango_attr_underline_new(PANGO_UNDERLINE_SINGLE), span);
        if (style.struck)
            add(list.get(), pango_attr_strikethrough_new(TRUE), span);
        if (style.fixed)
            add(list.get(), pango_attr_family_new("monospace"), span);
        const int steps = style.size - (style.raised ? 1 : 0);
        if (steps)
            add(list.get(), pango_attr_scale_new(factor_of(steps)), span);
        if (style.raised)
            add(list.get(), pango_attr_rise_new(style.raised * look.line_height * PANGO_SCALE / 4), span);
        wxColour colour = style.link ? look.link : wxColour(style.colour);
        if (colour.IsOk()) {
            colour = wx_helpers1::readable_colour(colour, look.background);
            add(list.get(),
                pango_attr_foreground_new(static_cast<guint16>(colour.Red() * 257),
                                          static_cast<guint16>(colour.Green() * 257),
                                          static_cast<guint16>(colour.Blue() * 257)),
                span);
        }
    }
    return list;
}

// The shaper takes left and right for the other where a text is read against the window's direction.
PangoAlignment alignment_of(body_align_t align, const std::string& text, PangoDirection window)
{
    if (align == body_align_t::centre)
        return PANGO_ALIGN_CENTER;
    const bool against = direction_of(text, 0, window) != window;
    const bool at_right = (window == PANGO_DIRECTION_RTL) != (align == body_align_t::trailing);
    if (align == body_align_t::own)
        return window == PANGO_DIRECTION_RTL ? PANGO_ALIGN_RIGHT : PANGO_ALIGN_LEFT;
    return at_right != against ? PANGO_ALIGN_RIGHT : PANGO_ALIGN_LEFT;
}

} // namespace

void body_look_t::set_window(wxWindow& window)
{
    context.reset(gtk_widget_create_pango_context(window.GetHandle()));
    pango_context_set_base_dir(context.get(), window.GetLayoutDirection() == wxLayout_RightToLeft
                                                  ? PANGO_DIRECTION_RTL
                                                  : PANGO_DIRECTION_LTR);
}

html_body_t::html_body_t(const std::string& html, const body_look_t& look)
    : m_look(look), m_flow(read_body(html))
{
}

pango_layout_t html_body_t::make_layout(const body_paragraph_t& paragraph, int width) const
{
    pango_layout_t layout(pango_layout_new(m_look.context.get()));
    pango_layout_set_font_description(layout.get(), m_look.font.GetNativeFontInfo()->description);
    pango_layout_set_text(layout.get(), paragraph.text.data(), static_cast<int>(paragraph.text.size()));
    pango_layout_set_attributes(layout.get(), attributes_of(paragraph, m_look).get());
    pango_layout_set_wrap(layout.get(), PANGO_WRAP_WORD_CHAR);
    pango_layout_set_alignment(layout.get(), alignment_of(paragraph.align, paragraph.text,
                                                          pango_context_get_base_dir(m_look.context.get())));
    if (width > 0)
        pango_layout_set_width(layout.get(), width * PANGO_SCALE);
    return layout;
}

int html_body_t::natural_width(const body_flow_t& flow) const
{
    int widest = 0;
    for (const body_item_t& item : flow) {
        int width = 0;
        if (item.table) {
            const std::vector<int> columns = natural_columns(*item.table);
            width = std::accumulate(columns.begin(), columns.end(), 0);
        } else
            pango_layout_get_pixel_size(make_layout(item.paragraph, 0).get(), &width, nullptr);
        widest = std::max(widest, width + item.paragraph.indent * 2 * m_look.line_height);
    }
    return widest;
}

std::vector<int> html_body_t::natural_columns(const body_table_t& table) const
{
    std::vector<int> columns;
    for (const auto& row : table.rows)
        for (std::size_t i = 0; i < row.size(); ++i) {
            columns.resize(std::max(columns.size(), i + 1));
            columns[i] = std::max(columns[i], natural_width(row[i].flow) + 2 * cell_padding);
        }
    return columns;
}

int html_body_t::add_text(pango_layout_t layout, int x, int y, const body_paragraph_t* paragraph)
{
    int height = 0;
    pango_layout_get_pixel_size(layout.get(), nullptr, &height);
    m_placed.push_back({std::move(layout), wxPoint(x, y), height, paragraph});
    return height;
}

int html_body_t::place_table(const body_table_t& table, int x, int y, int width)
{
    std::vector<int> columns = natural_columns(table);
    if (columns.empty())
        return y;
    if (std::accumulate(columns.begin(), columns.end(), 0) > width) {
        // What fits into an even share stays; the others share the rest.
        std::vector<bool> narrow(columns.size(), false);
        int left = width, wide = static_cast<int>(columns.size());
        for (bool changed = true; changed && wide > 0;) {
            changed = false;
            const int share = left / wide;
            for (std::size_t i = 0; i < columns.size(); ++i)
                if (!narrow[i] && columns[i] <= share) {
                    narrow[i] = changed = true;
                    left -= columns[i];
                    --wide;
                }
        }
        for (std::size_t i = 0; i < columns.size(); ++i)
            if (!narrow[i])
                columns[i] = std::max(2 * cell_padding + 1, left / std::max(1, wide));
    }
    for (const auto& row : table.rows) {
        int cell_x = x, bottom = y + m_look.line_height;
        for (std::size_t i = 0; i < row.size(); ++i) {
            bottom = std::max(bottom, place(row[i].flow, cell_x + cell_padding, y + cell_padding,
                                            std::max(1, columns[i] - 2 * cell_padding)) +
                                          cell_padding);
            cell_x += columns[i];
        }
        if (table.border) {
            cell_x = x;
            for (std::size_t i = 0; i < row.size(); ++i) {
                m_frames.emplace_back(cell_x, y, columns[i] + 1, bottom - y + 1);
                cell_x += columns[i];
            }
        }
        y = bottom;
    }
    return y;
}

int html_body_t::place(const body_flow_t& flow, int x, int y, int width)
{
    bool first = true;
    for (const body_item_t& item : flow) {
        const body_paragraph_t& paragraph = item.paragraph;
        if (!first)
            y += paragraph.space_above * m_look.line_height / 2;
        first = false;
        const int indent = std::min(paragraph.indent * 2 * m_look.line_height, std::max(0, width - 20));
        const int left = x + indent, room = std::max(1, width - indent);
        if (item.table)
            y = place_table(*item.table, left, y, room);
        else if (paragraph.is_rule) {
            m_frames.emplace_back(left, y + m_look.line_height / 2, room, 1);
            y += m_look.line_height;
        } else {
            if (!paragraph.bullet.empty()) {
                body_paragraph_t bullet;
                bullet.text = paragraph.bullet;
                pango_layout_t layout = make_layout(bullet, 0);
                int bullet_width = 0;
                pango_layout_get_pixel_size(layout.get(), &bullet_width, nullptr);
                add_text(std::move(layout), left - bullet_width - m_look.line_height / 3, y);
            }
            y += add_text(make_layout(paragraph, room), left, y, &paragraph);
        }
    }
    return y;
}

int html_body_t::set_width(int width)
{
    if (width == m_width)
        return m_height;
    m_width = width;
    m_placed.clear();
    m_frames.clear();
    m_height = place(m_flow, 0, 0, std::max(1, width));
    return m_height;
}

std::vector<html_body_t::link_t> html_body_t::get_links() const
{
    std::vector<link_t> links;
    const bool mirrored = pango_context_get_base_dir(m_look.context.get()) == PANGO_DIRECTION_RTL;
    for (const placed_t& placed : m_placed) {
        if (!placed.paragraph)
            continue;
        int whole = pango_layout_get_width(placed.layout.get()) / PANGO_SCALE;
        if (whole <= 0)
            pango_layout_get_pixel_size(placed.layout.get(), &whole, nullptr);
        const std::string* before = nullptr; // the target of the span before
        for (const body_span_t& span : placed.paragraph->spans) {
            const std::string* target = span.style.target.empty() ? nullptr : &span.style.target;
            if (target && !(before && *before == *target))
                links.push_back({*target, {}});
            before = target;
            if (!target)
                continue;
            PangoLayoutIter* at = pango_layout_get_iter(placed.layout.get());
            do {
                int top = 0, bottom = 0, count = 0;
                int* ranges = nullptr;
                pango_layout_iter_get_line_yrange(at, &top, &bottom);
                PangoLayoutLine* line = pango_layout_iter_get_line_readonly(at);
                const int from = std::max(static_cast<int>(span.begin), line->start_index);
                const int to = std::min(static_cast<int>(span.end), line->start_index + line->length);
                if (from >= to)
                    continue;
                pango_layout_line_get_x_ranges(line, from, to, &ranges, &count);
                for (int i = 0; i < count; ++i) {
                    const int left = PANGO_PIXELS_FLOOR(ranges[2 * i]);
                    const int right = PANGO_PIXELS_CEIL(ranges[2 * i + 1]);
                    links.back().rects.emplace_back(placed.at.x + (mirrored ? whole - right : left),
                                                    placed.at.y + PANGO_PIXELS(top), right - left,
                                                    PANGO_PIXELS(bottom - top));
                }
                g_free(ranges);
            } while (pango_layout_iter_next_line(at));
            pango_layout_iter_free(at);
        }
    }
    return links;
}

void html_body_t::draw(paint_dc_t& dc, int x, int y, int bottom, const wxColour& selected) const
{
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    dc.SetPen(wxPen(m_look.border));
    for (const wxRect& frame : m_frames)
        dc.DrawRectangle(x + frame.x, y + frame.y, frame.width, frame.height);
    for (const placed_t& placed : m_placed) {
        const int top = y + placed.at.y;
        if (top >= bottom || top + placed.height <= 0)
            continue;
        PangoAttrList* own = pango_layout_get_attributes(placed.layout.get());
        const attributes_t kept(pango_attr_list_ref(own));
        if (selected.IsOk()) {
            // Its own colours would not be readable on the selection's.
            attributes_t plain(pango_attr_list_copy(own));
            PangoAttrList* colours = pango_attr_list_filter(
                plain.get(),
                [](PangoAttribute* a, gpointer) { return gboolean(a->klass->type == PANGO_ATTR_FOREGROUND); },
                nullptr);
            if (colours)
                pango_attr_list_unref(colours);
            pango_layout_set_attributes(placed.layout.get(), plain.get());
        }
        dc.draw_layout(placed.layout.get(), x + placed.at.x, top, selected.IsOk() ? selected : m_look.ink);
        if (selected.IsOk())
            pango_layout_set_attributes(placed.layout.get(), kept.get());
    }
}

} // namespace vdxcfrw7
