#include "body_reader.h"

#include "html_markup.h"
#include "html_tokens.h"
#include "shown_text.h"

#include <glib.h>

#include <algorithm>
#include <cstdlib>

namespace vdxcfrw7 {
namespace {

constexpr int largest_step = 4;

// An address is written with entities.
std::string to_target(std::string_view value)
{
    std::string target;
    while (!value.empty()) {
        const entity_t entity = value[0] == '&' ? entity_at(value) : entity_t();
        if (entity.length)
            target += entity.text;
        else
            target += value[0];
        value.remove_prefix(entity.length ? entity.length : 1);
    }
    return target;
}

class reader_t
{
public:
    reader_t() { m_frames.push_back({&m_body, nullptr, {}}); }

    body_flow_t read(std::string_view html)
    {
        // Balanced, and without anything that is not known.
        const std::string safe = safe_markup(html);
        walk(
            safe, [this](const tag_t& tag, std::string_view raw) { on_tag(tag, raw); },
            [this](const entity_t& entity, std::string_view) { put(entity.text); },
            [this](char c) { on_text(c); });
        flush_bytes();
        end_paragraph();
        return std::move(m_body);
    }

private:
    struct open_tag_t
    {
        std::string name;
        body_style_t style; // before it
    };
    struct list_t
    {
        bool ordered;
        int number;
    };
    // Where paragraphs go: the body, or a cell of a table.
    struct frame_t
    {
        body_flow_t* flow;
        body_table_t* table; // that the cell belongs to
        std::vector<list_t> lists;
    };

    void on_text(char c)
    {
        // Bytes are put together before they are looked at: one that is no UTF-8 must not end up in a text.
        if (!m_pre && (c == ' ' || c == '\n' || c == '\t' || c == '\r')) {
            flush_bytes();
            m_blank = true;
        } else
            m_bytes += c;
    }

    void flush_bytes()
    {
        if (m_bytes.empty())
            return;
        const std::string bytes = std::move(m_bytes);
        m_bytes.clear();
        std::string text;
        const char* const end = bytes.data() + bytes.size();
        for (const char* at = bytes.data(); at < end;) {
            char utf8[6];
            const char32_t character = decode(at, end);
            if (character == '\t')
                text += "    ";
            else
                text.append(utf8, static_cast<std::size_t>(g_unichar_to_utf8(character, utf8)));
        }
        put(text);
    }

    void put(std::string_view text)
    {
        flush_bytes();
        std::string& to = m_paragraph.text;
        if (m_blank && !to.empty() && to.back() != '\n')
            append(" ");
        m_blank = false;
        append(text);
    }

    void append(std::string_view text)
    {
        std::string& to = m_paragraph.text;
        auto& spans = m_paragraph.spans;
        if (spans.empty() || !(spans.back().style == m_style))
            spans.push_back({to.size(), to.size(), m_style});
        to += text;
        spans.back().end = to.size();
    }

    void end_paragraph()
    {
        m_blank = false;
        std::string& text = m_paragraph.text;
        while (!text.empty() && text.back() == '\n')
            text.pop_back();
        for (body_span_t& span : m_paragraph.spans) {
            span.begin = std::min(span.begin, text.size());
            span.end = std::min(span.end, text.size());
        }
        if (!text.empty() || !m_paragraph.bullet.empty()) {
            m_paragraph.align = m_pre ? body_align_t::own : m_align;
            m_paragraph.indent = indent();
            m_paragraph.space_above = m_space;
            m_frames.back().flow->push_back({std::move(m_paragraph), nullptr});
            m_space = 0;
        }
        m_paragraph = {};
    }

    int indent() const { return static_cast<int>(m_frames.back().lists.size()) + m_quotes; }
    void space(int half_lines) { m_space = std::max(m_space, half_lines); }

    void on_tag(const tag_t& tag, std::string_view raw)
    {
        flush_bytes();
        if (is_block(tag.name))
            on_block(tag, raw);
        if (changes_style(tag.name))
            on_style(tag, raw);
    }

    static bool is_block(const std::string& name)
    {
        static constexpr std::string_view blocks[] = {
            "blockquote", "br", "center", "dd", "div", "dl",  "dt",    "h1", "h2", "h3", "h4", "h5",
            "h6",         "hr", "li",     "ol", "p",   "pre", "table", "td", "th", "tr", "ul"};
        return contains(blocks, name);
    }

    static bool is_heading(const std::string& name)
    {
        return name.size() == 2 && name[0] == 'h' && name[1] >= '1' && name[1] <= '6';
    }

    void on_block(const tag_t& tag, std::string_view raw)
    {
        const std::string& name = tag.name;
        if (name == "br") {
            m_blank = false;
            append("\n");
            return;
        }
        if (name == "table" || name == "tr" || name == "td" || name == "th") {
            on_table(tag, raw);
            return;
        }
        end_paragraph();
        m_align = tag.closing ? body_align_t::leading : align_of(raw, m_align);
        if (name == "center")
            m_align = tag.closing ? body_align_t::leading : body_align_t::centre;
        if (name == "hr") {
            body_paragraph_t rule;
            rule.is_rule = true;
            rule.indent = indent();
            m_frames.back().flow->push_back({std::move(rule), nullptr});
        } else if (name == "ul" || name == "ol") {
            auto& lists = m_frames.back().lists;
            if (!tag.closing)
                lists.push_back({name == "ol", 0});
            else if (!lists.empty())
                lists.pop_back();
            if (lists.empty())
                space(1);
        } else if (name == "li" && !tag.closing) {
            auto& lists = m_frames.back().lists;
            m_paragraph.bullet = !lists.empty() && lists.back().ordered
                                     ? std::to_string(++lists.back().number) + "."
                                     : std::string("\xe2\x80\xa2");
        } else if (name == "blockquote" || name == "dd") {
            m_quotes = name == "dd" ? (tag.closing ? 0 : 1) : std::max(0, m_quotes + (tag.closing ? -1 : 1));
            space(name == "dd" ? 0 : 1);
        } else if (name == "dt" || name == "dl")
            m_quotes = 0;
        else if (name == "pre") {
            m_pre = !tag.closing;
            space(1);
        } else if (name == "p" || is_heading(name))
            space(1);
    }

    void on_table(const tag_t& tag, std::string_view raw)
    {
        const bool is_cell = tag.name == "td" || tag.name == "th";
        end_paragraph();
        if (tag.name == "table" && !tag.closing) {
            auto table = std::make_unique<body_table_t>();
            for_each_attribute(raw, [&](const attribute_t& attribute) {
                table->border = table->border || (attribute.name == "border" && attribute.value != "0");
            });
            body_item_t item;
            item.paragraph.indent = indent();
            item.paragraph.space_above = 1;
            item.table = std::move(table);
            m_tables.push_back({item.table.get(), m_frames.size()});
            m_frames.back().flow->push_back(std::move(item));
            space(1);
            return;
        }
        if (m_tables.empty())
            return; // a cell without a table is a paragraph
        // Whatever ends or begins here ends the cell that is open.
        while (m_frames.size() > m_tables.back().frames)
            m_frames.pop_back();
        body_table_t& table = *m_tables.back().table;
        if (tag.name == "table")
            m_tables.pop_back();
        else if (tag.name == "tr" && !tag.closing)
            table.rows.emplace_back();
        else if (is_cell && !tag.closing) {
            if (table.rows.empty())
                table.rows.emplace_back();
            // Only the last cell of a row is open, so that none moves under its frame.
            auto& row = table.rows.back();
            row.emplace_back();
            m_frames.push_back({&row.back().flow, &table, {}});
        }
        m_align = is_cell && !tag.closing ? align_of(raw, body_align_t::leading) : body_align_t::leading;
        m_space = 0;
    }

    static body_align_t align_of(std::string_view raw, body_align_t otherwise)
    {
        body_align_t align = otherwise;
        for_each_attribute(raw, [&](const attribute_t& attribute) {
            if (attribute.name == "align")
                align = attribute.value == "center"  ? body_align_t::centre
                        : attribute.value == "right" ? body_align_t::trailing
                                                     : body_align_t::leading;
        });
        return align;
    }

    static bool changes_style(const std::string& name)
    {
        static constexpr std::string_view names[] = {
            "a", "b",    "big",   "cite", "code",   "del",    "em",  "font", "i",  "kbd", "pre",
            "s", "samp", "small", "span", "strike", "strong", "sub", "sup",  "th", "tt",  "u"};
        return is_heading(name) || contains(names, name);
    }

    void on_style(const tag_t& tag, std::string_view raw)
    {
        if (!tag.closing) {
            m_open.push_back({tag.name, m_style});
            apply(tag.name, raw);
            return;
        }
        const auto begun = std::find_if(m_open.rbegin(), m_open.rend(),
                                        [&](const open_tag_t& open) { return open.name == tag.name; });
        if (begun == m_open.rend())
            return;
        m_style = begun->style;
        m_open.erase(std::prev(begun.base()), m_open.end());
    }

    void apply(const std::string& name, std::string_view raw)
    {
        if (name == "b" || name == "strong" || name == "th" || is_heading(name))
            m_style.bold = true;
        if (name == "i" || name == "em" || name == "cite")
            m_style.italic = true;
        else if (name == "u")
            m_style.underlined = true;
        else if (name == "s" || name == "strike" || name == "del")
            m_style.struck = true;
        else if (name == "tt" || name == "code" || name == "kbd" || name == "samp" || name == "pre")
            m_style.fixed = true;
        else if (name == "a") {
            m_style.link = true;
            for_each_attribute(raw, [this](const attribute_t& attribute) {
                if (attribute.name == "href")
                    m_style.target = to_target(attribute.value);
            });
        } else if (name == "sub" || name == "sup")
            m_style.raised = name == "sup" ? 1 : -1;
        else if (name == "big" || name == "small")
            m_style.size += name == "big" ? 1 : -1;
        else if (is_heading(name))
            m_style.size = std::max(0, '4' - name[1]);
        else if (name == "font")
            for_each_attribute(raw, [this](const attribute_t& attribute) {
                if (attribute.name == "color")
                    m_style.colour = attribute.value;
                else if (attribute.name == "size" && !attribute.value.empty()) {
                    const int size = std::atoi(std::string(attribute.value).c_str());
                    const bool relative = attribute.value[0] == '+' || attribute.value[0] == '-';
                    m_style.size = relative ? m_style.size + size : size - 3;
                }
            });
        m_style.size = std::clamp(m_style.size, -2, largest_step);
    }

    struct open_table_t
    {
        body_table_t* table;
        std::size_t frames; // how many were open around it
    };

    body_flow_t m_body;
    std::vector<frame_t> m_frames;
    std::vector<open_table_t> m_tables;
    std::vector<open_tag_t> m_open;
    body_paragraph_t m_paragraph;
    body_style_t m_style;
    body_align_t m_align = body_align_t::leading;
    std::string m_bytes;
    int m_space = 0;
    int m_quotes = 0;
    bool m_blank = false;
    bool m_pre = false;
};

} // namespace

bool body_style_t::operator==(const body_style_t& other) const
{
    return bold == other.bold && italic == other.italic && underlined == other.underlined &&
           struck == other.struck && fixed == other.fixed && link == other.link && size == other.size &&
           raised == other.raised && target == other.target && colour == other.colour;
}

body_flow_t read_body(std::string_view html)
{
    return reader_t().read(html);
}

} // namespace vdxcfrw7
