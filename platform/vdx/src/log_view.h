#pragma once

#include "vdx/event_log.h"

#include "find_results.h"
#include "log_filter.h"
#include "log_layout.h"
#include "log_selection.h"
#include "text_links.h"
#include "view_accessible.h"

#include <wx/timer.h>
#include <wx/window.h>

#include <gtk/gtk.h>

#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

class wxButton;

namespace vdxcfrw7 {

class paint_dc_t;

/// A link in a text; its place is the link's begin, in a body in HTML how many are before it.
struct view_link_t
{
    text_place_t place;
    std::size_t end = 0;
    log_link_t link;

    bool is_set() const { return place.is_set(); }
};

/// The window of an event log: draws it, scrolls it, takes keyboard and mouse.
class log_view_t : public wxWindow, public gen_helpers2::subscriber_base_t
{
public:
    log_view_t(CEventLog& log, wxWindow* parent);
    ~log_view_t() override;

    log_layout_t& get_layout() { return m_layout; }
    CEventLog* get_log() const { return m_log; }
    const log_colours_t& get_colours() const { return m_colours; }
    style_colours_t& get_style_colours() { return m_style_colours; }
    void forget_log();

    // What happened in the model. The window catches up at the end of the slice, or soon.
    void element_added(CMessageElement& element);
    void element_removing(CMessageElement& element);
    void element_removed();
    void head_changed(CMessageElement& element);
    void tail_changed(CMessageElement& element);
    void buttons_going(CMessageElement& element);
    void adding_line(line_t& line);
    void line_added(CMessageElement& element);
    void line_changed(CMessageElement& element, std::size_t line);
    void line_repeated(CMessageElement& element, std::size_t line, std::uint64_t count);
    void lines_changed(CMessageElement& element, std::size_t seen);
    /// So many lines have gone from its front, and so many of those that are there now are others.
    void lines_dropped(CMessageElement& element, std::size_t lines, std::size_t others);
    void look_changed();
    void words_changed();

    /// Catches up, and measures while there is time. In how many milliseconds it wants to go on; 0: all is
    /// done.
    int turn();

    void scroll_to(std::int64_t top);
    void scroll_to_end();

    // How the lines are shown.
    void set_times(CEventLog::times_t times);
    CEventLog::times_t get_times() const { return m_times; }
    void set_wrap(bool wrap);
    void set_zoom(int percent);
    int get_zoom() const { return m_zoom; }

    CEventLog::reading_t get_reading() const;
    void go_back(const CEventLog::reading_t& reading);

    void set_find(const std::string& text, const CEventLog::find_options_t& options);
    bool find_next(bool forward);
    bool find(const std::string& text, bool forward);
    CEventLog::find_state_t get_find_state();
    bool is_finding() const { return !m_found.get_matcher().is_empty(); }
    bool is_filtering() const { return m_filtering; }
    const CMessageElement* get_only() const { return m_filter.get_only(); }
    find_results_t& get_found() { return m_found; }
    /// Where matches stand beside the scroll bar, in pixels of the window.
    const std::vector<int>& get_marks();
    void set_filter(int severities, const std::string& text, const CEventLog::find_options_t& options,
                    const CMessageElement* only);

    void select_all();
    const log_selection_t& get_selection() const { return m_selection; }
    log_selection_t& get_selection() { return m_selection; }
    /// Where the reader is: the caret, or what is seen first or, at the end, last.
    text_place_t get_place() const;
    /// Whether the reader moves by keyboard, and sees where that is.
    bool shows_place() const { return m_by_keyboard && HasFocus(); }
    /// Null for one that is not seen.
    GtkWidget* get_button_widget(const CButton& button) const;
    /// The button that tells of new lines; null while it is not seen.
    GtkWidget* get_news_widget() const;
    bool is_mirrored() const { return GetLayoutDirection() == wxLayout_RightToLeft; }
    /// The direction of the paragraph at that byte of a text.
    PangoDirection get_direction(std::string_view text, std::size_t at) const;
    /// What is marked as a link in a text, but a body in HTML.
    std::vector<text_link_t> text_links(const text_place_t& item);
    std::size_t count_links(const text_place_t& item) { return links_of(item).size(); }
    view_link_t link_at(const wxPoint& point);
    /// Where a link stands in the window, row by row.
    std::vector<wxRect> rects_of(const view_link_t& link);
    /// The link that the keyboard is at.
    view_link_t get_link();
    wxBitmap get_image(int index);
    /// As large as the zoom makes it.
    wxBitmap get_bitmap(const wxBitmapBundle& bundle) const;
    /// The frame that an entry's animation shows now.
    std::size_t get_frame() const { return m_frame; }
    /// Whether anything moves by itself.
    bool is_animated() const;

    bool AcceptsFocus() const override { return true; }

private:
    static constexpr int zoom_step = 10; // percent

    void on_paint(wxPaintEvent& event);
    void on_size(wxSizeEvent& event);
    void on_scroll(wxScrollWinEvent& event);
    void on_wheel(wxMouseEvent& event);
    void on_left_down(wxMouseEvent& event);
    void on_double_click(wxMouseEvent& event);
    void on_motion(wxMouseEvent& event);
    void on_left_up(wxMouseEvent& event);
    void on_context_menu(wxContextMenuEvent& event);
    void on_key(wxKeyEvent& event);
    void on_button_key(wxKeyEvent& event);
    void on_focus(wxFocusEvent& event);

    text_place_t find_from(bool forward);
    bool show_found(const find_results_t::found_t& found);
    void count_matches();
    void line_came(const line_t& line, std::uint64_t count);
    void show_news();
    void make_news_button();
    void filter_again();
    void read_look();
    void fit_times();
    void zoom_by_user(int percent);
    void scroll_sideways(int left);
    bool toggle_repeats(const text_place_t& place);
    void catch_up_soon();
    void catch_up();
    void update_scrollbar();
    void place_buttons();
    void run_animation(bool needed);
    void next_frame();
    /// Moves the focus on, through the log's own stops and then out of it.
    void tab(bool forward);
    bool tab_within(bool forward);
    bool tab_to_button(bool forward);
    static gboolean on_gtk_focus(GtkWidget* widget, GtkDirectionType direction, log_view_t* self);

    text_place_t place_at(const wxPoint& point);
    std::size_t byte_at(font_metrics_t& font, std::string_view text, const std::vector<std::uint32_t>& rows,
                        int x, int y, const style_runs_t* runs = nullptr);
    void move_caret(const text_place_t& place, bool extend);
    bool select_by_key(int key, bool control);
    bool go_by_key(int key);
    bool go_sideways(const text_place_t& place, bool right);
    text_place_t count_at(const wxPoint& point);
    void go_to(const text_place_t& place);
    bool is_shown(const text_place_t& place) const;
    text_place_t next_shown(text_place_t place, bool forward) const;
    void select(const text_place_t& from, const text_place_t& to);
    void show_place(const text_place_t& place);
    void copy();
    std::vector<view_link_t> links_of(const text_place_t& item);
    std::vector<wxRect> rects_in_rows(const view_link_t& link, int x, int y);
    bool move_to_link(bool forward);
    bool activate_link();
    void forget_links(const CMessageElement& element)
    {
        for (text_place_t* place : {&m_link, &m_pressed.place})
            if (place->element == &element)
                *place = {};
    }
    void activate(const view_link_t& link);

    CEventLog* m_log;
    log_layout_t m_layout;
    log_colours_t m_colours;
    style_colours_t m_style_colours;
    std::map<int, wxBitmap> m_images;
    bool m_stale = false; // something changed since the window caught up
    std::int64_t m_scroll_unit = 1;
    std::int64_t m_shown_top = -1;
    int m_wheel = 0;
    CEventLog::times_t m_times = CEventLog::times_t::none;
    int m_zoom = 100;                                   // percent
    std::chrono::steady_clock::time_point m_scrolled{}; // when the reader did last

    log_selection_t m_selection;
    text_place_t m_link;       // where the keyboard is among the links of a text
    view_link_t m_pressed;     // the link that the mouse went down on
    bool m_selecting = false;  // the mouse is
    bool m_by_keyboard = true; // and not by mouse

    find_results_t m_found;
    text_place_t m_find_begin; // where the reader was when looking began
    enum class pending_t
    {
        nothing,
        next,
        previous
    } m_pending = pending_t::nothing; // until it is counted
    struct marks_t
    {
        struct key_t
        {
            unsigned int version;
            std::int64_t total;
            int height;
            bool operator==(const key_t& other) const
            {
                return version == other.version && total == other.total && height == other.height;
            }
        };
        key_t key{0, 0, 0};
        std::vector<int> places;
    } m_marks;
    // What came below while the reader looks elsewhere.
    std::uint64_t m_news = 0;
    std::uint64_t m_told_news = 0;
    std::uint32_t m_news_severity = 0;
    int m_news_image = -1;
    wxButton* m_news_button = nullptr; // made when there are any
    CEventLog::counts_t m_told_counts;
    unsigned int m_told_found = 0; // which version of what was found

    log_filter_t m_filter;
    bool m_filtering = false;
    bool m_only_gone = false;   // the one entry that was shown
    bool m_more_hidden = false; // lines came that the filter hides

    std::vector<std::pair<CButton*, wxButton*>> m_buttons; // those that can be seen
    wxTimer m_animation;
    std::size_t m_frame = 0;
    view_accessible_t m_accessible;
};

/// Where a text stands; from the first entry's top.
struct text_extent_t
{
    std::int64_t top;
    int height;
};
text_extent_t extent_of(log_layout_t& layout, const text_place_t& place);

/// Draws what can be seen; the layout must have settled.
void draw_log(paint_dc_t& dc, log_view_t& view);
/// Whether there is something in it that moves by itself.
bool is_moving(const log_layout_t::item_t& item);

} // namespace vdxcfrw7
