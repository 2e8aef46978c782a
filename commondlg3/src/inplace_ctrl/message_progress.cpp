// The progress of an entry: its gauge, and what stands below it.
#include "message_entry.h"

#include "commondlg3/text_utils.h"

#include <wx_helpers1/guarded.h>

#include <memory>
#include <string>

namespace commondlg3 {
namespace {

constexpr int between_looks = 1000; // milliseconds; what is told changes no faster

} // namespace

msngr2::IProgress* message_entry_t::get_progress()
{
    if (!m_progress_connected) {
        m_progress_connected = true;
        if (!m_is_progress) {
            hide_buttons();
            m_element->ClearButtons();
        }
        m_element->GetGauge().Show(true);
        m_progress.start_signal().connect(this, &message_entry_t::start);
        m_progress.progressed_signal().connect(this, &message_entry_t::increase);
        m_progress.message_signal().connect(this, &message_entry_t::message);
        m_progress.cancel_signal().connect(this, &message_entry_t::cancel);
        m_ended_signal.connect(this, &message_entry_t::ended);
    }
    return &m_progress;
}

void message_entry_t::start(const std::string& text)
{
    if (!m_is_progress)
        return;
    m_element->GetGauge().SetValue(0);
    m_element->GetGauge().SetCaption(text);
    m_watch.started(m_progress.getTotalSteps(), m_log->get_time());
    m_watched = true;
    ended(); // perhaps already: then nobody has told, as it was not watched
}

void message_entry_t::note_end()
{
    note_sign();
    if (m_watched)
        wx_helpers1::tasks::PostSignal(m_ended_signal);
}

void message_entry_t::ended()
{
    if (m_progress.is_finished()) { // and has not begun again
        m_watch.ended();
        m_watched = false;
    }
    look_at_progress();
}

void message_entry_t::increase(int steps)
{
    // What was cancelled stays where it was: its end is no completion.
    if (m_progress.isCanceled())
        return;
    vdxcfrw7::CGauge& gauge = m_element->GetGauge();
    gauge.SetValue(gauge.GetValue() + steps);
    if (m_watch.get_kind() == progress_watch_t::kind_t::silent)
        look_at_progress();
}

void message_entry_t::message(const std::string& text)
{
    if (!m_is_progress)
        return;
    say_impl(m_element, &m_status, msngr2::sev_status, text);
    if (m_watch.get_kind() == progress_watch_t::kind_t::silent)
        look_at_progress();
}

void message_entry_t::cancel()
{
    const ptr_t keep(this);
    ended();
    const auto signal = m_button_signal;
    signal.emit(standard_message_t::button_cancel);
}

void message_entry_t::look_at_progress()
{
    if (!m_element || !m_is_progress)
        return;
    if (m_progress.isCanceled() && !m_cancel_seen) { // by its button, or by the host
        m_cancel_seen = true;
        if (!m_progress.is_finished())
            m_watch.canceled();
        for (const auto& button : m_element->GetButtons())
            if (button.get() == m_cancel_button)
                button->Enable(false);
    }
    vdxcfrw7::CGauge& gauge = m_element->GetGauge();
    m_watch.look(static_cast<double>(gauge.GetValue()) / gauge_steps, m_signs, m_log->get_time());
    gauge.SetBusy(m_watch.is_busy());
    const std::string note = m_watch.get_note();
    // Its row stays while the work goes on: what stands below it moves once.
    gauge.ShowNote(!note.empty() || (gauge.IsNoteShown() && m_watch.is_running()));
    gauge.SetNote(note);
    if (!m_watch.is_running()) {
        m_look_again.reset();
        return;
    }
    if (!m_look_again) {
        m_look_again = std::make_unique<wxTimer>();
        m_look_again->Bind(wxEVT_TIMER,
                           [this](wxTimerEvent&) { wx_helpers1::guarded([this] { look_at_progress(); }); });
        m_look_again->Start(between_looks);
    }
}

std::string message_entry_t::more_text() const
{
    std::string text, storage;
    for (std::size_t i = 0; m_element && i < m_element->GetLines().size(); ++i) {
        const vdxcfrw7::line_t& line = m_element->GetLines().at(i);
        if (line.has(vdxcfrw7::line_t::status))
            continue;
        text += '\n';
        text += vdxcfrw7::get_shown_text(line, storage);
    }
    if (m_is_progress)
        text += "\n" + translate_message("inplace_ctrl.progressed",
                                         {{"cur_progress", 100 * m_progress.get_reported() / gauge_steps}});
    return text;
}

} // namespace commondlg3
