#include "folder_watch.h"

#include "paths/disk_question.h"

#include <wx/timer.h>

#include <algorithm>
#include <chrono>
#include <mutex>
#include <utility>

namespace commondlg3 {
namespace {

using watch_clock_t = std::chrono::steady_clock;

// What has not answered for so long hangs; before that the disk may be busy.
constexpr std::chrono::milliseconds hangs_after{300};
constexpr int told_after = 1000; // milliseconds

bool is_at_or_below(const std::string& path, const std::string& place)
{
    return !place.empty() && path.compare(0, place.size(), place) == 0 &&
           (path.size() == place.size() || place.back() == '/' || path[place.size()] == '/');
}

} // namespace

struct folder_watch_t::look_t
{
    void set_place(const std::string& asked)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        place = asked;
    }
    std::string get_place()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return place;
    }
    bool hangs() const { return watch_clock_t::now() - begin > hangs_after; }

    const watch_clock_t::time_point begin = watch_clock_t::now();
    folder_answer_t answer;
    std::mutex mutex;
    std::string place; // where it is; guarded
};

folder_watch_t::folder_watch_t(listener_t listener, looker_t looker)
    : m_listener(std::move(listener)),
      m_looker(std::move(looker)),
      m_self(std::make_shared<folder_watch_t*>(this))
{
}

folder_watch_t::~folder_watch_t() = default;

std::string folder_watch_t::find_silence(const std::string& folder) const
{
    for (const auto& look : m_looking) {
        const std::string place = look->get_place();
        if (look->hangs() && is_at_or_below(folder, place))
            return place;
    }
    return std::string();
}

void folder_watch_t::ask(folder_question_t question)
{
    m_question = std::move(question);
    m_is_answered = false;
    m_last.reset();
    if (m_timer)
        m_timer->Stop();
    const bool asks_for_it = m_question.trouble.empty() && !m_question.wrong;
    const std::string silent = asks_for_it ? find_silence(m_question.folder) : std::string();
    if (!silent.empty()) {
        m_listener.silent(silent); // asked again when that place answers
        return;
    }
    // Names beside one that hangs, as they are typed, would each leave a thread behind.
    if (std::any_of(m_looking.begin(), m_looking.end(), [](const auto& look) { return look->hangs(); })) {
        m_listener.waiting();
        wait(static_cast<int>(hangs_after.count()));
        return;
    }
    start();
}

void folder_watch_t::start()
{
    const auto look = std::make_shared<look_t>();
    const auto work = [look, question = m_question, looker = m_looker] {
        look->answer = looker(question, [&](const std::string& place) { look->set_place(place); });
    };
    const auto later = [look, self = std::weak_ptr<folder_watch_t*>(m_self)] {
        if (const auto watch = self.lock())
            (*watch)->on_ended(look.get());
    };
    const auto patience = m_looking.empty() ? patience_while_typing : std::chrono::milliseconds(0);
    switch (put_to_disk(work, patience, later)) {
    case asked_t::answered:
        m_is_answered = true;
        m_listener.answered(look->answer);
        return;
    case asked_t::later:
        m_last = look;
        m_looking.push_back(look);
        break;
    case asked_t::never: // tried again
        break;
    }
    m_listener.waiting();
    wait(told_after);
}

void folder_watch_t::on_ended(const look_t* look)
{
    const auto found = std::find_if(m_looking.begin(), m_looking.end(),
                                    [look](const auto& each) { return each.get() == look; });
    if (found == m_looking.end())
        return;
    const auto ended = *found;
    m_looking.erase(found);
    if (m_is_answered)
        return;
    if (ended == m_last) {
        m_is_answered = true;
        m_listener.answered(ended->answer);
    } else if (!m_last) {
        ask(m_question);
    }
}

void folder_watch_t::on_time()
{
    if (m_is_answered)
        return;
    if (!m_last) {
        start();
        return;
    }
    if (const std::string place = m_last->get_place(); !place.empty())
        m_listener.silent(place);
}

void folder_watch_t::wait(int milliseconds)
{
    if (!m_timer) {
        m_timer = std::make_unique<wxTimer>();
        m_timer->Bind(wxEVT_TIMER, [this](wxTimerEvent&) { on_time(); });
    }
    m_timer->StartOnce(milliseconds);
}

} // namespace commondlg3
