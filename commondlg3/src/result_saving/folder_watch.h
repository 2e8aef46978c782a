#pragma once

#include "folder_look.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

class wxTimer;

namespace commondlg3 {

/// Asks the disk about the folder that is being typed, and keeps nobody waiting for it: only the last question
/// is answered, what lies below a place that hangs is not asked again, and a place that hangs is told by its
/// name. GUI thread; it may be destroyed at any time.
class folder_watch_t
{
public:
    struct listener_t
    {
        std::function<void(const folder_answer_t&)> answered;
        std::function<void()> waiting;                        ///< an answer will come, but not at once
        std::function<void(const std::string& place)> silent; ///< this place does not answer
    };

    using looker_t = std::function<folder_answer_t(const folder_question_t&,
                                                   const std::function<void(const std::string&)>& at)>;

    /// @param looker asks the disk, in any thread
    explicit folder_watch_t(listener_t listener, looker_t looker = look_at_folder);
    ~folder_watch_t();

    /// Whoever listens is told something before this returns.
    void ask(folder_question_t question);

private:
    struct look_t;

    std::string find_silence(const std::string& folder) const;
    void start();
    void on_ended(const look_t* look);
    void on_time();
    void wait(int milliseconds);

    listener_t m_listener;
    looker_t m_looker;
    folder_question_t m_question; ///< the last one
    bool m_is_answered = true;
    std::shared_ptr<look_t> m_last;                 ///< the look of the last question, once it has begun
    std::vector<std::shared_ptr<look_t>> m_looking; ///< looks that have not ended
    std::shared_ptr<folder_watch_t*> m_self;        ///< gone with this
    std::unique_ptr<wxTimer> m_timer;               ///< made when something hangs
};

} // namespace commondlg3
