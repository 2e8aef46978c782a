#include "log_view.h"

#include "paint_dc.h"
#include "work_slices.h"

#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/guarded.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/ui_settings.h>

#include <wx/app.h>
#include <wx/button.h>
#include <wx/dcclient.h>
#include <wx/settings.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <utility>
#include <vector>

namespace vdxcfrw7 {
namespace {

using wx_helpers1::ui_settings_t;

// Measuring bodies waits while somebody scrolls, and leaves most of the time to others.
constexpr std::chrono::milliseconds pause_after_scrolling(300);
constexpr int between_bodies = 15;     // milliseconds
constexpr std::size_t few_bodies = 20; // so many take no time worth saving

bool is_blank(const wxImage& image)
{
    const unsigned char* alpha = image.GetAlpha();
    return alpha && std::all_of(alpha, alpha + image.GetWidth() * image.GetHeight(),
                                [](unsigned char a) { return a == 0; });
}

} // namespace

log_view_t::log_view_t(CEventLog& log, wxWindow* parent)
    : m_log(&log), m_layout(log), m_selection(log, m_layout), m_found(log, m_selection), m_accessible(*this)
{
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
           wxVSCROLL | wxHSCROLL | wxALWAYS_SHOW_SB | wxWANTS_CHARS | wxBORDER_THEME | wxCLIP_CHILDREN);
    gtk_scrolled_window_set_policy(GTK_SCROLLED_WINDOW(m_widget), GTK_POLICY_NEVER, GTK_POLICY_ALWAYS);
    SetInitialSize(wxSize(300, 160));
    m_accessible.attach();
    g_signal_connect(m_wxwindow, "focus", G_CALLBACK(on_gtk_focus), this);
    read_look();
    if (ui_settings_t* settings = ui_settings_t::get())
        settings->changed().connect(static_cast<gen_helpers2::subscriber_base_t*>(this), [this] {
            read_look();
            catch_up_soon();
        });

    Bind(wxEVT_PAINT, &log_view_t::on_paint, this);
    Bind(wxEVT_SIZE, &log_view_t::on_size, this);
    for (const auto& type : {wxEVT_SCROLLWIN_TOP, wxEVT_SCROLLWIN_BOTTOM, wxEVT_SCROLLWIN_LINEUP,
                             wxEVT_SCROLLWIN_LINEDOWN, wxEVT_SCROLLWIN_PAGEUP, wxEVT_SCROLLWIN_PAGEDOWN,
                             wxEVT_SCROLLWIN_THUMBTRACK, wxEVT_SCROLLWIN_THUMBRELEASE})
        Bind(type, &log_view_t::on_scroll, this);
    Bind(wxEVT_MOUSEWHEEL, &log_view_t::on_wheel, this);
    Bind(wxEVT_LEFT_DOWN, &log_view_t::on_left_down, this);
    Bind(wxEVT_LEFT_DCLICK, &log_view_t::on_double_click, this);
    Bind(wxEVT_MOTION, &log_view_t::on_motion, this);
    Bind(wxEVT_LEFT_UP, &log_view_t::on_left_up, this);
    Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { m_selecting = false; });
    Bind(wxEVT_CONTEXT_MENU, &log_view_t::on_context_menu, this);
    Bind(wxEVT_KEY_DOWN, &log_view_t::on_key, this);
    Bind(wxEVT_SET_FOCUS, &log_view_t::on_focus, this);
    Bind(wxEVT_KILL_FOCUS, &log_view_t::on_focus, this);
    m_animation.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { wx_helpers1::guarded([this] { next_frame(); }); });
}

log_view_t::~log_view_t()
{
    if (HasCapture()) // it goes while a text is being selected
        ReleaseMouse();
    if (m_log) {
        m_log->m_view = nullptr;
        m_log->m_slices->stop();
    }
}

void log_view_t::forget_log()
{
    // Between here and its destruction the window shows nothing and asks nobody.
    m_animation.Stop();
    for (const auto& [model, button] : m_buttons)
        button->Destroy();
    m_buttons.clear();
    if (m_news_button)
        m_news_button->Hide();
    m_log = nullptr;
}

void log_view_t::read_look()
{
    const ui_settings_t* settings = ui_settings_t::get();
    const auto system = [](wxSystemColour colour) { return wxSystemSettings::GetColour(colour); };
    using colour = wx_helpers1::ui_colour;
    m_colours.background = settings ? settings->get_colour(colour::background) : system(wxSYS_COLOUR_WINDOW);
    m_colours.ink = settings ? settings->get_colour(colour::text) : system(wxSYS_COLOUR_WINDOWTEXT);
    m_colours.secondary = settings ? settings->get_colour(colour::secondary_text) : m_colours.ink;
    m_colours.border = settings ? settings->get_colour(colour::border) : m_colours.ink;
    // The theme's own pair may be hard to read; a darker ground keeps the ink that all selections have.
    m_colours.selected_ink = system(wxSYS_COLOUR_HIGHLIGHTTEXT);
    m_colours.selection =
        wx_helpers1::readable_colour(system(wxSYS_COLOUR_HIGHLIGHT), m_colours.selected_ink);
    const bool dark = settings && settings->is_dark();
    m_colours.match_ink = dark ? *wxWHITE : *wxBLACK;
    m_colours.match = wx_helpers1::readable_colour(dark ? wxColour(122, 92, 0) : wxColour(255, 224, 102),
                                                   m_colours.match_ink);
    m_colours.mark = wx_helpers1::readable_colour(wxColour(214, 120, 0), m_colours.background, 3);
    const wxFont usual = settings ? settings->get_font(wx_helpers1::ui_font::text)
                                  : wxSystemSettings::GetFont(wxSYS_DEFAULT_GUI_FONT);
    const wxFont text = m_zoom == 100 ? usual : usual.Scaled(static_cast<float>(m_zoom) / 100);
    // Given explicitly: a window without its own asks the theme again for each device context.
    SetFont(usual);
    SetForegroundColour(m_colours.ink);
    SetBackgroundColour(m_colours.background);
    m_images.clear();
    const double scale = settings ? settings->get_text_scale() : 1;
    m_layout.button_sizes().set(*this, usual, scale);
    for (const auto& [model, button] : m_buttons)
        if (model->IsDefault())
            button->SetFont(usual.Bold());
    m_colours.link = wx_helpers1::readable_colour(system(wxSYS_COLOUR_HOTLIGHT), m_colours.background);
    m_style_colours.set(m_colours.ink, m_colours.background, m_colours.link);
    m_layout.set_look(*this, text, text.Bold(), m_colours, scale, m_zoom);
    fit_times();
    m_stale = true;
}

wxBitmap log_view_t::get_image(int index)
{
    const auto found = m_images.find(index);
    if (found != m_images.end())
        return found->second;
    const wxBitmapBundle bundle = m_log->GetImageList()->Get(index).get_bundle(m_colours.ink);
    wxBitmap bitmap = bundle.IsOk() ? get_bitmap(bundle) : wxBitmap();
    if (bitmap.IsOk() && is_blank(bitmap.ConvertToImage()))
        bitmap = wxBitmap(); // the picture of most lines: drawing nothing takes as long as drawing something
    return m_images[index] = bitmap;
}

wxBitmap log_view_t::get_bitmap(const wxBitmapBundle& bundle) const
{
    if (m_zoom == 100)
        return bundle.GetBitmapFor(this);
    wxSize size = bundle.GetPreferredBitmapSizeFor(this) * m_zoom / 100;
    size.IncTo(wxSize(1, 1));
    wxBitmap bitmap = bundle.GetBitmap(size);
    bitmap.SetScaleFactor(GetContentScaleFactor()); // it would be shown as large as ever
    return bitmap;
}

void log_view_t::catch_up_soon()
{
    m_stale = true;
    if (m_log && !m_log->m_slices->is_running())
        m_log->m_slices->later(1);
}

void log_view_t::catch_up()
{
    m_stale = false;
    m_layout.settle();
    update_scrollbar();
    place_buttons();
    show_news();
    m_accessible.changed();
    Refresh(false);
}

int log_view_t::turn()
{
    const bool reading = m_log->GetElements().size() > few_bodies &&
                         std::chrono::steady_clock::now() - m_scrolled < pause_after_scrolling;
    const auto left = m_layout.refine(!reading);
    if (m_stale)
        catch_up();
    else
        update_scrollbar(); // heights that nobody sees change the bar only
    if (std::exchange(m_more_hidden, false)) {
        const auto signal = m_log->hidden_changed();
        signal.emit();
    }
    if (is_finding() && std::exchange(m_told_found, m_found.get_version()) != m_found.get_version()) {
        const auto signal = m_log->find_changed();
        signal.emit();
    }
    const CEventLog::counts_t& counts = m_log->GetCounts();
    if (counts.errors != m_told_counts.errors || counts.warnings != m_told_counts.warnings) {
        m_told_counts = counts;
        const auto signal = m_log->counts_changed();
        signal.emit();
    }
    switch (left) {
    case log_layout_t::left_t::lines:
        return 1;
    case log_layout_t::left_t::bodies:
        return between_bodies;
    case log_layout_t::left_t::nothing:
        break;
    }
    return 0;
}

void log_view_t::element_added(CMessageElement& element)
{
    if (!m_filter.passes(element))
        element.m_filtered_out = true;
    m_layout.element_added(element);
    m_found.head_changed(element);
    catch_up_soon();
}

void log_view_t::element_removing(CMessageElement& element)
{
    buttons_going(element);
    m_selection.element_removing(element);
    forget_links(element);
    m_accessible.element_removing(element);
    m_found.element_removing(element);
    if (m_find_begin.element == &element)
        m_find_begin = {};
    m_layout.element_removing(element);
    m_filter.begin_again();
    m_only_gone = m_filter.get_only() == &element;
    catch_up_soon();
}

void log_view_t::element_removed()
{
    if (!std::exchange(m_only_gone, false))
        return;
    m_filter.show_all_entries();
    filter_again();
}

void log_view_t::head_changed(CMessageElement& element)
{
    m_layout.head_changed(element);
    m_found.head_changed(element);
    m_selection.texts_changed(element);
    catch_up_soon();
}

void log_view_t::tail_changed(CMessageElement& element)
{
    m_layout.tail_changed(element);
    catch_up_soon();
}

void log_view_t::adding_line(line_t& line)
{
    m_layout.measure_new(line);
    if (m_filter.is_set() && !m_filter.passes(line))
        line.set(line_t::hidden, true);
    m_more_hidden = m_more_hidden || line.has(line_t::hidden);
}

void log_view_t::line_added(CMessageElement& element)
{
    m_layout.line_added(element);
    m_found.line_added(element);
    const line_t& line = element.m_lines.at(element.m_lines.size() - 1);
    m_accessible.line_added(line);
    line_came(line, 1);
    if (!m_stale)
        catch_up_soon();
}

void log_view_t::line_changed(CMessageElement& element, std::size_t line)
{
    m_layout.line_changed(element, line);
    if (!element.m_lines.at(line).has(line_t::status) && !m_found.get_matcher().is_empty()) {
        m_found.begin_again();
        count_matches();
    }
    m_selection.texts_changed(element);
    catch_up_soon();
}

void log_view_t::line_repeated(CMessageElement& element, std::size_t line, std::uint64_t count)
{
    m_layout.line_repeated(element, line);
    m_accessible.line_added(element.m_lines.at(line));
    line_came(element.m_lines.at(line), count);
    catch_up_soon();
}

void log_view_t::lines_changed(CMessageElement& element, std::size_t seen)
{
    m_layout.lines_changed(element, seen);
    m_selection.lines_changed(element);
    forget_links(element);
    m_accessible.element_removing(element); // its lines have other names
    m_filter.begin_again();
    m_found.begin_again();
    count_matches();
    catch_up_soon();
}

void log_view_t::look_changed()
{
    catch_up_soon();
}

void log_view_t::words_changed()
{
    m_accessible.set_name(m_log->GetWords().name);
}

void log_view_t::on_paint(wxPaintEvent&)
{
    wxPaintDC window(this);
    if (!m_log)
        return;
    m_layout.settle();
    paint_dc_t dc(window);
    draw_log(dc, *this);
    m_accessible.painted();
    bool moving = false;
    for (const auto& item : m_layout.visible_items())
        moving = moving || is_moving(item);
    run_animation(moving);
}

void log_view_t::on_size(wxSizeEvent& event)
{
    event.Skip();
    if (!m_log)
        return;
    m_layout.set_size(GetClientSize());
    catch_up();
    m_log->m_slices->later(1);
}

void log_view_t::on_focus(wxFocusEvent& event)
{
    event.Skip();
    Refresh(false);
    // Readers hear of the focus itself when the toolkit is idle, and first of all.
    if (m_log && event.GetEventType() == wxEVT_SET_FOCUS)
        CallAfter([this] { m_accessible.place_changed(); });
}

void log_view_t::on_context_menu(wxContextMenuEvent& event)
{
    if (!m_log)
        return;
    // By keyboard it has no place: the middle of the top is as good as any.
    const wxPoint at = event.GetPosition() == wxDefaultPosition ? wxPoint(GetClientSize().x / 2, 10)
                                                                : ScreenToClient(event.GetPosition());
    CVisualElement* element = m_log;
    const auto signal = m_log->context_menu();
    signal.emit(element, at.x, at.y);
}

} // namespace vdxcfrw7
