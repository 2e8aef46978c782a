#include "editor_looks.h"

#include "editor_command.h"
#include "paths/disk_question.h"

#include <gen_helpers2/system_editor.h>

#include <wx/timer.h>

#include <algorithm>
#include <mutex>
#include <utility>

namespace commondlg3 {
namespace {

using looked_at_t = gen_helpers2::system_editor_t;
using state_t = editor_look_t::state_t;

constexpr int hangs_after_ms = 1000;
constexpr char any_editor_icon[] = "accessories-text-editor";

state_t state_of(editor_failure_t::reason_t reason)
{
    switch (reason) {
    case editor_failure_t::reason_t::no_command:
        return state_t::no_command;
    case editor_failure_t::reason_t::bad_quotes:
        return state_t::bad_quotes;
    case editor_failure_t::reason_t::no_terminal:
        return state_t::no_terminal;
    default:
        return state_t::not_found;
    }
}

editor_look_t look_at_editor(const looked_at_t& editor, const asked_place_t& at)
{
    editor_look_t look;
    editor_failure_t failure;
    failure.reason = editor_failure_t::reason_t::ended; // none that can come of looking
    look.command = describe_editor_command(editor, file_word, line_word, failure, at);
    look.state =
        failure.reason == editor_failure_t::reason_t::ended ? state_t::ready : state_of(failure.reason);
    look.program = failure.program;
    std::string icon = gen_helpers2::get_system_editor_icon(editor.name);
    if (icon.empty()) // icons are called as their programs are
        icon = look.program.substr(look.program.rfind('/') + 1);
    if (!icon.empty() && icon.front() == '/')
        at(gen_helpers2::path_t(icon).parent().as_string());
    look.icon = wx_helpers1::load_entry_icon(icon, any_editor_icon);
    return look;
}

} // namespace

struct editor_looks_t::round_t
{
    std::vector<editor_t> editors;
    std::size_t collected = 0;
    std::size_t before = 0; ///< how many were looked at at the last tick
    bool is_left = false;   ///< others go on in its place
    std::mutex mutex;
    std::vector<editor_look_t> looks; ///< so far; guarded
    std::string place;                ///< that is asked; guarded
};

editor_looks_t::editor_looks_t(std::function<void()> news)
    : m_news(std::move(news)), m_self(std::make_shared<editor_looks_t*>(this))
{
}

editor_looks_t::~editor_looks_t() = default;

editor_look_t editor_looks_t::get(const editor_t& editor) const
{
    const auto known = m_known.find(editor.name);
    const bool is_same = known != m_known.end() && known->second.editor.executable == editor.executable &&
                         known->second.editor.command_line == editor.command_line;
    return is_same ? known->second.look : editor_look_t();
}

void editor_looks_t::look_at(const std::vector<editor_t>& editors)
{
    if (!editors.empty())
        start(editors);
}

void editor_looks_t::start(std::vector<editor_t> editors)
{
    const auto round = std::make_shared<round_t>();
    round->editors = std::move(editors);
    const auto work = [round] {
        for (const editor_t& editor : round->editors) {
            editor_look_t look = look_at_editor(editor, [&](const std::string& place) {
                const std::lock_guard<std::mutex> lock(round->mutex);
                round->place = place;
            });
            const std::lock_guard<std::mutex> lock(round->mutex);
            round->looks.push_back(std::move(look));
        }
    };
    const auto later = [round, self = std::weak_ptr<editor_looks_t*>(m_self)] {
        if (const auto looks = self.lock())
            (*looks)->on_ended(round.get());
    };
    switch (put_to_disk(work, patience_while_typing, later)) {
    case asked_t::answered:
        collect(*round);
        return;
    case asked_t::later:
        m_rounds.push_back(round);
        break;
    case asked_t::never: // everything hangs
        for (const editor_t& editor : round->editors)
            set_silent(editor, std::string());
        return;
    }
    if (!m_timer) {
        m_timer = std::make_unique<wxTimer>();
        m_timer->Bind(wxEVT_TIMER, [this](wxTimerEvent&) { on_time(); });
    }
    m_timer->StartOnce(hangs_after_ms);
}

void editor_looks_t::collect(round_t& round)
{
    const std::lock_guard<std::mutex> lock(round.mutex);
    for (; round.collected < round.looks.size(); ++round.collected) {
        const editor_t& editor = round.editors[round.collected];
        m_known[editor.name] = {editor, round.looks[round.collected]};
    }
}

void editor_looks_t::on_ended(const round_t* round)
{
    const auto found = std::find_if(m_rounds.begin(), m_rounds.end(),
                                    [round](const auto& each) { return each.get() == round; });
    if (found == m_rounds.end())
        return;
    collect(**found);
    m_rounds.erase(found);
    m_news();
}

void editor_looks_t::set_silent(const editor_t& editor, const std::string& place)
{
    editor_look_t look;
    look.state = state_t::no_answer;
    look.program = editor.executable;
    look.place = place.empty() ? editor.executable : place;
    look.icon = {std::string(), any_editor_icon, nullptr};
    m_known[editor.name] = {editor, look};
}

void editor_looks_t::on_time()
{
    const auto rounds = m_rounds; // others are begun
    bool goes_on = false;
    for (const auto& round : rounds) {
        if (round->is_left)
            continue;
        collect(*round);
        if (round->collected >= round->editors.size() ||
            std::exchange(round->before, round->collected + 1) != round->collected + 1) {
            goes_on = true; // it takes its time
            continue;
        }
        round->is_left = true;
        std::string place;
        {
            const std::lock_guard<std::mutex> lock(round->mutex);
            place = round->place;
        }
        const auto silent = round->editors.begin() + static_cast<std::ptrdiff_t>(round->collected);
        set_silent(*silent, place);
        if (silent + 1 != round->editors.end())
            start({silent + 1, round->editors.end()});
    }
    if (goes_on)
        m_timer->StartOnce(hangs_after_ms);
    m_news();
}

} // namespace commondlg3
