// What comes below while the reader looks elsewhere, and coming back to where one was.
#include "log_view.h"

#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/text.h>
#include <wx_helpers1/tooltip.h>

#include <wx/app.h>
#include <wx/button.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <cstdint>

namespace vdxcfrw7 {
namespace {

// The worse of two: errors before warnings before everything else.
int rank_of(std::uint32_t severity)
{
    return severity & line_t::error_bits ? 2 : severity & line_t::warning_bits ? 1 : 0;
}

} // namespace

void log_view_t::line_came(const line_t& line, std::uint64_t count)
{
    if (m_layout.follows_end() || line.has(line_t::hidden) || line.has(line_t::status))
        return;
    m_news += count;
    if (m_news_image < 0 || rank_of(line.severity) > rank_of(m_news_severity)) {
        m_news_severity = line.severity;
        m_news_image = line.image;
    }
}

void log_view_t::make_news_button()
{
    m_news_button = new wxButton;
    m_news_button->Hide();
    m_news_button->Create(this, wxID_ANY, wxString());
    // Ctrl+End does the same: on the way through the controls it would be one stop more.
    m_news_button->SetCanFocus(false);
    wx_helpers1::SetTooltip(m_news_button, m_log->GetWords().go_to_end);
    m_news_button->Bind(wxEVT_MOUSEWHEEL, &log_view_t::on_wheel, this);
    m_news_button->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        if (!m_log)
            return;
        m_selection.clear();
        scroll_to_end();
        SetFocus();
    });
}

void log_view_t::show_news()
{
    if (m_layout.follows_end()) {
        m_news = 0;
        m_news_severity = 0;
        m_news_image = -1;
    }
    const auto& words = m_log->GetWords();
    if (m_news == 0 || !words.news) {
        m_told_news = 0;
        if (m_news_button && m_news_button->IsShown())
            m_news_button->Hide();
        return;
    }
    const wxBitmap image = get_image(m_news_image);
    // The toolkit cannot take a picture away from a button again.
    if (m_news_button && m_news_button->GetBitmap().IsOk() && !image.IsOk()) {
        m_news_button->Hide();
        wxTheApp->ScheduleForDestruction(m_news_button);
        m_news_button = nullptr;
        m_told_news = 0;
    }
    if (!m_news_button)
        make_news_button();
    if (m_told_news != m_news) {
        m_told_news = m_news;
        m_news_button->SetLabel(
            wx_helpers1::to_label(words.news(static_cast<std::size_t>(m_news), m_news_severity)));
        if (image.IsOk())
            m_news_button->SetBitmap(image);
    }
    const wxSize best = m_news_button->GetBestSize(), window = m_layout.get_size();
    const wxSize size(std::min(best.x, std::max(1, window.x - 2 * m_layout.margin())), best.y);
    const wxRect rect(wxPoint((window.x - size.x) / 2, std::max(0, window.y - size.y - m_layout.margin())),
                      size);
    if (m_news_button->GetRect() != rect)
        m_news_button->SetSize(rect);
    if (!m_news_button->IsShown())
        m_news_button->Show();
}

GtkWidget* log_view_t::get_news_widget() const
{
    return m_news_button && m_news_button->IsShown() ? GTK_WIDGET(m_news_button->GetHandle()) : nullptr;
}

CEventLog::reading_t log_view_t::get_reading() const
{
    CEventLog::reading_t reading;
    reading.at_end = m_layout.follows_end();
    for (const auto& item : m_layout.visible_items()) {
        if (item.part == log_layout_t::part_t::tail)
            continue;
        reading.element = item.element;
        reading.item = item.part == log_layout_t::part_t::head ? text_item_t::header
                                                               : text_item_t::first_line + item.line;
        reading.y = static_cast<int>(item.y);
        if (item.y >= 0)
            break;
    }
    return reading;
}

void log_view_t::go_back(const CEventLog::reading_t& reading)
{
    if (reading.at_end) {
        scroll_to_end();
        return;
    }
    const auto& elements = m_log->GetElements();
    const auto found = std::find_if(elements.begin(), elements.end(),
                                    [&](const auto& element) { return element.get() == reading.element; });
    if (found == elements.end() ||
        (reading.item != text_item_t::header && reading.item >= number_of_items(*reading.element)))
        return;
    // Twice, as going there measures what was only estimated.
    for (int round = 0; round < 2; ++round) {
        const std::int64_t top =
            reading.item == text_item_t::header
                ? m_layout.top_of(*reading.element)
                : m_layout.top_of_line(*reading.element, reading.item - text_item_t::first_line);
        scroll_to(top - reading.y);
    }
}

} // namespace vdxcfrw7
