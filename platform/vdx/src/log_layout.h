#pragma once

#include "vdx/event_log.h"

#include "button_sizes.h"
#include "font_metrics.h"
#include "height_index.h"
#include "html_body.h"

#include <wx/dcmemory.h>

#include <algorithm>
#include <cstdint>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace vdxcfrw7 {

/// The colours of a log, from the theme.
struct log_colours_t
{
    wxColour background;
    wxColour ink;
    wxColour secondary;
    wxColour border;
    wxColour link;
    wxColour selection;
    wxColour selected_ink;
    wxColour match; ///< what was found
    wxColour match_ink;
    wxColour mark; ///< and where, beside the scroll bar
};

/// Where everything in a log stands. Heights are measured when they are seen, or in spare time, and
/// estimated before; what the reader sees hangs on an anchor, so that nothing that happens elsewhere
/// moves it.
class log_layout_t
{
public:
    explicit log_layout_t(CEventLog& log);

    /// Measures everything anew. `scale` is for distances, which the zoom (percent) makes larger as well.
    void set_look(wxWindow& window, const wxFont& text, const wxFont& bold, const log_colours_t& colours,
                  double scale, int zoom);
    void set_size(const wxSize& size);
    const wxSize& get_size() const { return m_size; }
    button_sizes_t& button_sizes() { return m_button_sizes; }
    /// Whether lines are broken at the width of the window; otherwise they scroll to the side.
    void set_wrap(bool wrap);
    bool wraps() const { return m_wrap; }
    /// Room before each line for a time; 0: none.
    void set_time_width(int pixels);

    // What happened in the model.
    void element_added(CMessageElement& element);
    void element_removing(CMessageElement& element);
    void head_changed(CMessageElement& element);
    void tail_changed(CMessageElement& element);
    /// Measures a line that is to be added.
    void measure_new(line_t& line);
    void line_added(CMessageElement& element);
    void line_changed(CMessageElement& element, std::size_t line);
    /// It was said again.
    void line_repeated(CMessageElement& element, std::size_t line);
    /// All of its lines may be others; `seen`: which of them is now the one that get_anchor_line() named.
    void lines_changed(CMessageElement& element, std::size_t seen);
    /// The line that the reader's place hangs on; 0 when it is none of this entry's.
    std::size_t get_anchor_line(const CMessageElement& element) const
    {
        return m_anchor.element == &element ? m_anchor.line : 0;
    }
    /// So many lines have gone from its front.
    void lines_dropped(CMessageElement& element, std::size_t lines);
    /// Lines were hidden or shown.
    void lines_filtered(CMessageElement& element) { update_height(element); }

    std::int64_t total() const { return m_heights.total(); }
    /// What stands at the top of the window.
    std::int64_t top() const;
    std::int64_t max_top() const;
    bool follows_end() const { return m_follow; }
    /// The reader goes there.
    void scroll_to(std::int64_t top);
    void scroll_to_end();
    /// How far lines are scrolled to the side, in pixels; 0 when they wrap.
    int left() const { return m_left; }
    int max_left() const;
    /// Of the widest line that is known, in pixels.
    int get_widest() const { return m_widest; }
    void scroll_sideways(int left) { m_left = std::clamp(left, 0, max_left()); }
    /// What is seen stays, even at the end.
    void stay()
    {
        if (m_follow)
            pick_anchor(top());
    }

    /// The row that is read stays, before everything is measured anew.
    void stay_where_read();

    /// Measures what can be seen exactly; call it before asking where something is or drawing it.
    void settle();
    enum class left_t
    {
        nothing,
        lines,
        bodies
    };
    /// Measures some of what is not seen, until the log's slice is over; says what is left.
    left_t refine(bool bodies_too);
    bool is_exact() const
    {
        return m_refining >= m_log.GetElements().size() && m_refining_head >= m_log.GetElements().size();
    }

    enum class part_t
    {
        head,
        line,
        tail
    };
    struct item_t
    {
        CMessageElement* element;
        part_t part;
        std::size_t line;
        std::int64_t y; ///< in the window
        int height;
    };
    /// The items that can be seen, from top to bottom.
    std::vector<item_t> visible_items() const;
    std::int64_t top_of(const CMessageElement& element) const { return m_heights.top_of(element.m_index); }
    std::int64_t top_of_line(const CMessageElement& element, std::size_t line) const;
    std::int64_t top_of_tail(const CMessageElement& element) const;

    /// The text of a line as it is read, and how it looks; null: as all others. Valid until the next call.
    struct shown_line_t
    {
        std::string_view text;
        const styled_text_t* styled;

        const style_runs_t* get_runs() const { return styled ? &styled->runs : nullptr; }
    };
    shown_line_t shown_line(const line_t& line);
    /// Where the rows of a line begin, in bytes. Valid until the next call.
    const std::vector<std::uint32_t>& rows_of(const line_t& line);
    /// How often a line is shown, one below the other, and the height of each.
    static std::uint32_t get_copies(const line_store_t& lines, std::size_t index);
    std::uint32_t get_copy_height(const line_store_t& lines, std::size_t index) const;
    std::vector<std::uint32_t> header_rows(const CMessageElement& element);
    /// Null when there is no body, or one that is shown as plain text.
    html_body_t* body_of(const CMessageElement& element);
    /// Whether the body is shown as plain text, and its rows.
    bool body_is_plain(const CMessageElement& element) const;
    std::vector<std::uint32_t> body_rows(const CMessageElement& element);

    struct button_place_t
    {
        CButton* button;
        wxRect rect; ///< from the top of the tail
    };
    std::vector<button_place_t> button_places(const CMessageElement& element);
    /// The gauge's caption and bar, from the top of the tail.
    int gauge_height(const CMessageElement& element) const;

    int label_width(const std::string& label);
    font_metrics_t& text_font() { return m_text; }
    font_metrics_t& bold_font() { return m_bold; }
    font_metrics_t& italic_font() { return m_italic; }
    wxDC& measuring_dc() { return m_dc; }

    // Distances in pixels.
    int scaled(int pixels) const { return static_cast<int>(pixels * m_scale + 0.5); }
    int margin() const { return scaled(10); }
    int text_left() const { return margin() + scaled(24 + 10); }
    int time_left() const { return text_left() + scaled(12 + 7); }
    int line_left() const { return time_left() + m_time_width; }
    int text_width() const { return std::max(1, m_size.x - text_left() - margin()); }
    int line_width() const { return std::max(1, m_size.x - line_left() - margin()); }
    /// At the end of a line that was said several times.
    int count_width() const { return m_count_width; }
    int line_width(const line_t& line) const
    {
        return std::max(1, line_width() - (line.can_expand() ? count_width() + scaled(6) : 0));
    }
    int header_top() const { return scaled(9); }
    /// From the head's top to the body's.
    int body_top(const CMessageElement& element);
    int line_gap() const { return scaled(2); }
    int bar_height() const { return scaled(10); }

private:
    struct anchor_t
    {
        CMessageElement* element = nullptr;
        part_t part = part_t::head;
        std::size_t line = 0;
        std::uint32_t byte = 0; ///< of the line's text, when the anchor is one of its rows
        std::int64_t y = 0;     ///< in the window
    };

    void invalidate();
    void pick_anchor(std::int64_t top);
    std::int64_t anchor_top() const;
    void update_height(CMessageElement& element);
    std::uint32_t height_of_rows(std::uint32_t rows) const
    {
        return rows * static_cast<std::uint32_t>(m_text.get_line_height()) +
               static_cast<std::uint32_t>(line_gap());
    }
    int break_width(const line_t& line) const;
    std::uint32_t height_of_copy(line_t& line, bool shape);
    std::uint32_t height_of_line(line_store_t& lines, std::size_t index, bool shape);
    void see_width(const line_t& line);
    shown_line_t read_line(const line_t& line);
    std::uint32_t break_line(const line_t& line, const shown_line_t& shown,
                             std::vector<std::uint32_t>* starts, bool shape);
    void forget_rows();
    int picture_height(const CMessageElement::head_t& head) const;
    void estimate_head(CMessageElement& element);
    bool measure_head(CMessageElement& element);
    void measure_tail(CMessageElement& element);
    bool measure_block(line_store_t& lines, std::size_t block);
    bool refine_lines(CMessageElement& element);
    bool settle_once();

    CEventLog& m_log;
    wxBitmap m_pixel{1, 1};
    wxMemoryDC m_dc;
    font_metrics_t m_text;
    font_metrics_t m_bold;
    font_metrics_t m_italic;
    body_look_t m_look;
    double m_scale = 1;
    int m_zoom = 100; // percent
    wxSize m_size;
    bool m_wrap = true;
    int m_left = 0;
    int m_widest = 0;
    int m_time_width = 0;
    int m_count_width = 0;
    button_sizes_t m_button_sizes;
    unsigned int m_layout = 1;
    height_index_t m_heights;
    anchor_t m_anchor;
    bool m_follow = true;
    std::size_t m_refining = 0;      // the element whose lines are next
    std::size_t m_refining_head = 0; // and the one whose head is

    // Bodies laid out, the one used last in front.
    struct body_t
    {
        const CMessageElement* element;
        std::unique_ptr<html_body_t> html;
    };
    std::list<body_t> m_bodies;
    std::unordered_map<const CMessageElement*, std::list<body_t>::iterator> m_body_of;
    std::unordered_map<const char*, std::vector<std::uint32_t>> m_rows;
    std::unordered_map<const char*, styled_text_t> m_styled;
    styled_text_t m_read; // of a line that is only measured
};

} // namespace vdxcfrw7
