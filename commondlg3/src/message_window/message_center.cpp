#include "commondlg3/message_center.h"

#include "message_center_dialog.h"
#include "result_of.h"

#include <gen_helpers2/log.h>
#include <wx_helpers1/main_window.h>
#include <wx_helpers1/modal_flavor.h>
#include <wx_helpers1/tasks.h>

#include <wx/evtloop.h>

#include <algorithm>
#include <utility>

namespace commondlg3 {
namespace {

bool is_same(const message_window_t& a, const message_window_t& b)
{
    return a.main_message == b.main_message && a.supplemental_message == b.supplemental_message &&
           a.details_message == b.details_message && a.button_type == b.button_type &&
           a.icon_type == b.icon_type;
}

} // namespace

class message_center_t::impl_t : public std::enable_shared_from_this<impl_t>
{
public:
    void raise(const message_window_t& window, raised_message_t::caller_t caller,
               const message_options_t& options)
    {
        for (const auto& message : m_messages)
            if (is_same(message->window, window)) {
                ++message->count;
                message->callers.push_back(std::move(caller));
                update_later();
                return;
            }
        const auto message = std::make_shared<raised_message_t>();
        message->window = window;
        message->options = options;
        message->callers.push_back(std::move(caller));
        m_messages.push_back(message);
        update_later();
    }

    bool is_running() const { return m_dialog != nullptr; }
    // By another modal window, opened after it: nobody can reach it.
    bool is_covered() const { return m_dialog && wx_helpers1::modal_stack_t::top() != m_dialog; }
    std::size_t get_count() const { return m_messages.size(); }

    // Until every message is answered, or end_run().
    void run()
    {
        if (m_dialog || m_messages.empty())
            return;
        const auto self = shared_from_this(); // an answer may destroy the center
        message_center_dialog_t dialog(m_messages, [this](const std::shared_ptr<raised_message_t>& message,
                                                          int id) { answer(message, id); });
        m_dialog = &dialog;
        dialog.Bind(wxEVT_SHOW, [this, &dialog](wxShowEvent& event) {
            event.Skip();
            if (!event.IsShown() && m_dialog == &dialog)
                leave_later(dialog);
        });
        wxWindow* const below = wx_helpers1::modal_stack_t::top();
        try {
            dialog.show_modal(below && below->IsShown() ? below : wx_helpers1::get_main_window());
        } catch (...) {
            if (m_dialog == &dialog)
                leave_unanswered();
            throw;
        }
        if (m_dialog == &dialog) {
            if (!dialog.is_loaded())
                for (const auto& message : m_messages)
                    gen_helpers2::log_error("commondlg3.message_window",
                                            "a message could not be shown: " + message->window.main_message);
            leave_unanswered();
        }
        update_later();
    }

    // Many messages at once are shown once.
    void update_later()
    {
        if (m_messages.empty() || std::exchange(m_posted, true))
            return;
        wx_helpers1::tasks::Scheduler::Post([weak = weak_from_this()] {
            const auto self = weak.lock();
            if (!self)
                return;
            self->m_posted = false;
            if (self->m_dialog)
                self->m_dialog->update();
            else
                self->run();
        });
    }

    // The window goes, and comes again for what is left once its callers have returned.
    void end_run()
    {
        if (message_center_dialog_t* const dialog = std::exchange(m_dialog, nullptr)) {
            dialog->end_dialog(wxID_CANCEL);
            update_later();
        }
    }

    void clear()
    {
        const raised_messages_t all = std::exchange(m_messages, {});
        end_run();
        for (const auto& message : all)
            for (const auto& caller : message->callers)
                if (caller.waits)
                    caller.answered(message_window_t::result_none);
    }

private:
    // A window that ends with one below it cannot return to run() while somebody waits above it, for an answer
    // that nobody can give any more.
    void leave_later(const message_center_dialog_t& dialog)
    {
        wx_helpers1::tasks::Scheduler::Post([weak = weak_from_this(), &dialog] {
            const auto self = weak.lock();
            if (self && self->m_dialog == &dialog && !dialog.IsShown())
                self->leave_unanswered();
        });
    }

    // The window went with its parent, or did not come: nobody has chosen anything.
    void leave_unanswered()
    {
        m_dialog = nullptr;
        const raised_messages_t all = m_messages;
        for (const auto& message : all)
            answer(message, wxID_NONE);
    }

    void answer(const std::shared_ptr<raised_message_t>& message, int id)
    {
        const auto self = shared_from_this();
        const auto at = std::find(m_messages.begin(), m_messages.end(), message);
        if (at == m_messages.end())
            return;
        m_messages.erase(at);
        const auto& callers = message->callers;
        const bool somebody_waits =
            std::any_of(callers.begin(), callers.end(), [](const auto& caller) { return caller.waits; });
        if (m_messages.empty() || somebody_waits)
            end_run();
        else
            update_later();
        for (const auto& caller : callers)
            if (caller.answered)
                caller.answered(result_of(id, message->window.button_type));
    }

    raised_messages_t m_messages;
    message_center_dialog_t* m_dialog = nullptr; // on the stack of run(), until its end
    bool m_posted = false;
};

message_center_t::message_center_t() : m_impl(std::make_shared<impl_t>()) {}

message_center_t::~message_center_t()
{
    m_impl->clear();
}

void message_center_t::raise(const message_window_t& window, answered_t answered,
                             const message_options_t& options)
{
    if (!window.check_box || !window.check_box->is_checked())
        m_impl->raise(window, {std::move(answered), false}, options);
    else if (answered)
        answered(message_window_t::result_none);
}

int message_center_t::ask(const message_window_t& window, const message_options_t& options)
{
    if (window.check_box && window.check_box->is_checked())
        return message_window_t::result_none;
    // What covers the window cannot close before this call returns, and may hold what the user has typed.
    if (m_impl->is_covered())
        return show_modal(window, options, wx_helpers1::modal_stack_t::top());
    struct asked_t
    {
        int answer = message_window_t::result_none;
        bool done = false;
    };
    const auto asked = std::make_shared<asked_t>();
    const std::weak_ptr<impl_t> center = m_impl; // which may be destroyed meanwhile
    // Who asks while the window is shown waits above it: he must have returned before it can.
    const bool above = m_impl->is_running();
    wxGUIEventLoop waiting;
    const auto answered = [asked, loop = above ? &waiting : nullptr](int answer) {
        asked->answer = answer;
        asked->done = true;
        if (loop)
            loop->ScheduleExit();
    };
    m_impl->raise(window, {answered, true}, options);
    while (!asked->done) {
        const auto alive = center.lock();
        if (above)
            waiting.Run();
        else if (alive)
            alive->run();
    }
    return asked->answer;
}

std::size_t message_center_t::get_count() const
{
    return m_impl->get_count();
}

} // namespace commondlg3
