#pragma once

#include "commondlg3/editor_launch.h"

#include <wx_helpers1/entry_details.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

class wxTimer;

namespace commondlg3 {

/// Stand for the line and the file in a command, in every language.
constexpr char line_word[] = "<line>";
constexpr char file_word[] = "<path to file>";

/// What was found where an editor's program should be.
struct editor_look_t
{
    enum class state_t
    {
        unknown, ///< nobody has looked yet
        ready,
        no_command,
        not_found,
        bad_quotes,
        no_terminal,
        no_answer ///< `place` does not answer
    };
    state_t state = state_t::unknown;
    std::string program; ///< that is looked for, or was found
    std::string command; ///< as people read it, with words for the file and the line
    std::string place;
    wx_helpers1::entry_icon_t icon;
};

/// Looks at editors in the background, one after the other: one in a folder that hangs keeps neither the GUI
/// thread nor the others waiting. GUI thread; it may be destroyed at any time.
class editor_looks_t
{
public:
    using editor_t = gen_helpers2::system_editor_t;

    /// @param news something new is known; not called before look_at() has returned
    explicit editor_looks_t(std::function<void()> news);
    ~editor_looks_t();

    /// What is known of editors that are looked at already stays until more is known.
    void look_at(const std::vector<editor_t>& editors);
    editor_look_t get(const editor_t& editor) const;

private:
    struct round_t;
    struct known_t
    {
        editor_t editor;
        editor_look_t look;
    };

    void start(std::vector<editor_t> editors);
    void collect(round_t& round);
    void on_ended(const round_t* round);
    void on_time();
    void set_silent(const editor_t& editor, const std::string& place);

    std::function<void()> m_news;
    std::map<std::string, known_t> m_known; // by name
    std::vector<std::shared_ptr<round_t>> m_rounds;
    std::shared_ptr<editor_looks_t*> m_self; // gone with this
    std::unique_ptr<wxTimer> m_timer;
};

} // namespace commondlg3
