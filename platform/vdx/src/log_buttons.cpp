// The buttons of entries that can be seen, and the way of the focus through them.
#include "log_view.h"

#include <wx_helpers1/accessibility.h>
#include <wx_helpers1/guarded.h>
#include <wx_helpers1/text.h>

#include <wx/app.h>
#include <wx/button.h>

#include <gtk/gtk.h>

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

namespace vdxcfrw7 {

void log_view_t::place_buttons()
{
    std::vector<std::pair<CButton*, wxButton*>> left;
    left.swap(m_buttons);
    for (const auto& item : m_layout.visible_items()) {
        if (item.part != log_layout_t::part_t::tail)
            continue;
        for (const auto& place : m_layout.button_places(*item.element)) {
            wxRect rect = place.rect;
            rect.y += static_cast<int>(item.y);
            auto found = std::find_if(left.begin(), left.end(),
                                      [&](const auto& made) { return made.first == place.button; });
            wxButton* button = nullptr;
            if (found != left.end()) {
                button = found->second;
                left.erase(found);
            } else {
                button = new wxButton(this, wxID_ANY, wx_helpers1::to_label(place.button->GetLabel()),
                                      rect.GetPosition(), rect.GetSize());
                button->Bind(wxEVT_BUTTON, [this, model = place.button](wxCommandEvent&) {
                    for (const auto& made : m_buttons)
                        if (made.first == model) {
                            model->Press();
                            return;
                        }
                });
                // By itself "Retry" says little.
                wx_helpers1::set_accessible_description(button, item.element->GetHead().header);
                button->Bind(wxEVT_MOUSEWHEEL, &log_view_t::on_wheel, this);
                button->Bind(wxEVT_KEY_DOWN, &log_view_t::on_button_key, this);
                if (place.button->IsDefault())
                    button->SetFont(GetFont().Bold());
            }
            if (button->GetRect() != rect)
                button->SetSize(rect);
            if (!place.button->IsEnabled() && button->HasFocus())
                SetFocus(); // a window of which nothing has the focus hears no keys
            if (button->IsEnabled() != place.button->IsEnabled())
                button->Enable(place.button->IsEnabled());
            m_buttons.emplace_back(place.button, button);
        }
    }
    for (const auto& gone : left) {
        if (gone.second->HasFocus())
            SetFocus();
        // It may be the one whose press is being handled.
        gone.second->Hide();
        wxTheApp->ScheduleForDestruction(gone.second);
    }
}

void log_view_t::buttons_going(CMessageElement& element)
{
    for (const auto& model : element.GetButtons()) {
        const auto found = std::find_if(m_buttons.begin(), m_buttons.end(),
                                        [&](const auto& made) { return made.first == model.get(); });
        if (found == m_buttons.end())
            continue;
        wxButton* button = found->second;
        m_buttons.erase(found);
        if (button->HasFocus())
            SetFocus();
        button->Hide();
        wxTheApp->ScheduleForDestruction(button);
    }
}

GtkWidget* log_view_t::get_button_widget(const CButton& button) const
{
    for (const auto& [model, made] : m_buttons)
        if (model == &button)
            return made->GetHandle() ? GTK_WIDGET(made->GetHandle()) : nullptr;
    return nullptr;
}

bool log_view_t::tab_within(bool forward)
{
    if (FindFocus() == this)
        return forward && tab_to_button(true);
    for (const auto& [model, button] : m_buttons)
        if (button->HasFocus()) {
            if (tab_to_button(forward))
                return true;
            if (!forward)
                SetFocus();
            return !forward;
        }
    // It comes from outside, at the one end or the other.
    if (forward || !tab_to_button(false))
        SetFocus();
    return true;
}

// GTK asks each window along the way whether the focus moves within it. Its own answer knows of the log
// alone, which it would enter again from each button.
gboolean log_view_t::on_gtk_focus(GtkWidget* widget, GtkDirectionType direction, log_view_t* self)
{
    if (!self->m_log || (direction != GTK_DIR_TAB_FORWARD && direction != GTK_DIR_TAB_BACKWARD))
        return FALSE;
    bool moved = false;
    wx_helpers1::guarded([&] { moved = self->tab_within(direction == GTK_DIR_TAB_FORWARD); });
    if (!moved)
        g_signal_stop_emission_by_name(widget, "focus");
    return moved;
}

void log_view_t::tab(bool forward)
{
    gtk_widget_child_focus(gtk_widget_get_toplevel(m_wxwindow),
                           forward ? GTK_DIR_TAB_FORWARD : GTK_DIR_TAB_BACKWARD);
}

bool log_view_t::tab_to_button(bool forward)
{
    // The buttons of the newest entry, which are the only ones, may be out of sight.
    const auto& elements = m_log->GetElements();
    for (auto element = elements.rbegin(); element != elements.rend(); ++element) {
        if (!(*element)->ButtonsShown())
            continue;
        const std::int64_t bottom = m_layout.top_of_tail(**element) + (*element)->m_tail_height;
        if (bottom > m_layout.top() + m_layout.get_size().y || bottom < m_layout.top())
            scroll_to(bottom - m_layout.get_size().y);
        else if (m_stale)
            catch_up();
        break;
    }
    std::vector<wxButton*> stops;
    for (const auto& [model, button] : m_buttons)
        if (button->IsEnabled() || button->HasFocus())
            stops.push_back(button);
    if (!forward)
        std::reverse(stops.begin(), stops.end());
    const auto focused = std::find_if(stops.begin(), stops.end(), [](wxButton* b) { return b->HasFocus(); });
    const auto next = focused == stops.end() ? stops.begin() : std::next(focused);
    if (next == stops.end())
        return false;
    (*next)->SetFocus();
    return true;
}

void log_view_t::on_button_key(wxKeyEvent& event)
{
    const int key = event.GetKeyCode();
    if (m_log && key == WXK_TAB && !event.ControlDown())
        tab(!event.ShiftDown());
    else if (m_log && ((key == 'F' && event.ControlDown()) || key == WXK_F3))
        on_key(event);
    else
        event.Skip();
}

} // namespace vdxcfrw7
