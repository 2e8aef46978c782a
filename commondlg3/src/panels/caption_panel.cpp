#include "commondlg3/caption_panel.h"

#include "parent_layout.h"

#include <gen_helpers2/assertion.h>
#include <wx_helpers1/moving.h>

#include <wx/bmpbuttn.h>

#include <algorithm>

// The messages: their order, which one is shown, and what each operation makes of that. How they look is in
// caption_panel_look.cpp.
namespace commondlg3 {
namespace {

constexpr char caption_panel_unit[] = "caption";
constexpr int least_severe = static_cast<int>(caption_panel_t::severity_t::information);

} // namespace

caption_panel_t::caption_panel_t(wxWindow* parent) : m_parent_layout(std::make_unique<parent_layout_t>(this))
{
    Create(parent);
    init(std::string(), std::string());
}

caption_panel_t::caption_panel_t(wxWindow* parent, const std::string& caption, const std::string& description)
    : m_parent_layout(std::make_unique<parent_layout_t>(this))
{
    Create(parent);
    init(caption, description);
}

caption_panel_t::~caption_panel_t() = default;

std::vector<caption_panel_t::message_info_t>::iterator caption_panel_t::find(int id)
{
    // By severity, and in each in the order in which they came: a page may have a message for each of its rows.
    auto begin = m_messages.begin();
    while (begin != m_messages.end()) {
        const auto end = std::partition_point(begin, m_messages.end(), [begin](const message_info_t& other) {
            return other.severity == begin->severity;
        });
        const auto found =
            std::partition_point(begin, end, [id](const message_info_t& message) { return message.id < id; });
        if (found != end && found->id == id)
            return found;
        begin = end;
    }
    // One that is not there, or stands behind a severity that there is not.
    return std::find_if(m_messages.begin(), m_messages.end(),
                        [id](const message_info_t& message) { return message.id == id; });
}

std::vector<caption_panel_t::message_info_t>::const_iterator caption_panel_t::find(int id) const
{
    return const_cast<caption_panel_t*>(this)->find(id);
}

int caption_panel_t::add_message(severity_t severity, const std::string& text)
{
    const message_info_t message{m_next_id++, severity, text};
    auto place = m_messages.end();
    const bool is_least = m_messages.empty() || m_messages.back().severity <= severity;
    for (int lesser = static_cast<int>(severity) + 1;
         !is_least && lesser <= least_severe && place == m_messages.end(); ++lesser)
        place = std::find_if(m_messages.begin(), m_messages.end(), [lesser](const message_info_t& other) {
            return static_cast<int>(other.severity) == lesser;
        });
    bool leads = m_messages.empty();
    if (place != m_messages.end() && GH2_ASSERT(m_messages.size() > 0, caption_panel_unit))
        leads = m_messages.front().severity > severity;
    m_messages.insert(place, message);
    if (leads && !text.empty()) {
        show_message(message.id, true);
    } else {
        number_buttons();
        announce(message);
    }
    return message.id;
}

void caption_panel_t::edit_message(int id, const std::string& text)
{
    const auto message = find(id);
    if (message == m_messages.end())
        return;
    message->text = text;
    // An empty text is not shown: the pane keeps the one before.
    if (id == m_current_id)
        show_message(id, false);
}

void caption_panel_t::remove_message(int id)
{
    const auto message = find(id);
    if (message == m_messages.end())
        return;
    m_messages.erase(message);
    if (id == m_current_id && m_messages.empty())
        hide_messages();
    else if (id == m_current_id && m_pane->IsShown())
        show_message(m_messages.front().id, true);
    number_buttons(); // one that is left over has no arrows, also where its text is empty
}

void caption_panel_t::clear_messages()
{
    m_messages.clear();
}

int caption_panel_t::get_message_index(int id) const
{
    if (!GH2_ASSERT(id >= 0, caption_panel_unit))
        return -1;
    const auto message = find(id);
    return message != m_messages.end() ? static_cast<int>(message - m_messages.begin()) : -1;
}

caption_panel_t::message_info_t caption_panel_t::get_message(int id) const
{
    const auto message = find(id);
    return message != m_messages.end() ? *message : message_info_t();
}

int caption_panel_t::get_message_id(int index) const
{
    return index >= 0 && index < get_message_count() ? m_messages[static_cast<std::size_t>(index)].id : -1;
}

void caption_panel_t::show_message(int id, bool force)
{
    const auto message = find(id);
    if (message == m_messages.end() || message->text.empty())
        return;
    // Id 0 has always counted as nothing shown here, and callers have come to rely on it.
    if (!force && m_current_id > 0 && m_current_id != id) {
        const auto shown = find(m_current_id);
        if (shown != m_messages.end() && shown->severity <= message->severity)
            return;
    }
    const bool is_news = m_current_id != id || m_message->get_full_text() != message->text;
    m_current_id = id;
    tell_message(*message);
    m_message->set_label(message->text);
    const bool buttons_changed = update_buttons();
    show_position(*message);
    m_message->wrap_to_width(message_width(GetClientSize().x));
    const bool pane_changed = m_pane->IsShown() == m_disabled;
    m_pane->Show(!m_disabled);
    wx_helpers1::let_keys_into(m_next); // each time: the page around may not have been shown before
    update_min_height();
    if (buttons_changed || pane_changed)
        Layout();
    m_pane->Layout();
    number_buttons();
    if (is_news && !pane_changed) // or the pane itself is said, as it appears
        announce(*message);
    m_parent_layout->now();
    const auto signal = m_shown_signal; // a slot may destroy this panel
    signal.emit(id);
}

void caption_panel_t::show_next_message()
{
    step(1);
}

void caption_panel_t::show_prev_message()
{
    step(-1);
}

void caption_panel_t::step(int by)
{
    const auto shown = find(m_current_id);
    if (shown == m_messages.end())
        return;
    const auto count = get_message_count();
    const int id = get_message_id((static_cast<int>(shown - m_messages.begin()) + by + count) % count);
    const auto signal = m_stepped_signal; // showing may destroy this panel
    show_message(id, true);
    signal.emit(id);
}

void caption_panel_t::hide_messages()
{
    m_current_id = -1;
    update_buttons();
    show_pane(false);
}

void caption_panel_t::hide_message_pane()
{
    m_current_id = -1;
}

void caption_panel_t::set_read_only(bool read_only)
{
    m_read_only = read_only;
}

void caption_panel_t::disable()
{
    m_disabled = true;
}

} // namespace commondlg3
