#include "editor_trial.h"

#include "commondlg3/text_utils.h"
#include "editor_command.h"
#include "paths/disk_question.h"
#include "paths/shown_path.h"

#include <gen_helpers2/file.h>
#include <gen_helpers2/program.h>
#include <gen_helpers2/stdpaths.h>
#include <wx_helpers1/tasks.h>

#include <wx/timer.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <system_error>
#include <utility>
#include <vector>

namespace commondlg3 {
namespace {

using gen_helpers2::program_end_t;
using reason_t = editor_failure_t::reason_t;

constexpr int sample_line = 12;
constexpr int sample_lines = 40;
constexpr int told_silent_after = 2000; // milliseconds
constexpr std::chrono::seconds ended_at_once(10);

// One folder a process, gone with it.
class sample_folder_t
{
public:
    ~sample_folder_t()
    {
        std::error_code ignored;
        if (!m_folder.empty())
            std::filesystem::remove_all(m_folder, ignored);
    }
    std::string get()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_folder.empty()) {
            std::string name = (gen_helpers2::stdpaths::get_temp_dir() / "sample-XXXXXX").as_string();
            if (::mkdtemp(name.data()))
                m_folder = name;
        }
        return m_folder;
    }

private:
    std::mutex m_mutex;
    std::string m_folder;
};

sample_folder_t& sample_folder()
{
    static sample_folder_t folder;
    return folder;
}

std::string sample_name(language_info::language_t language)
{
    const auto extensions = language_info::get_extensions(language);
    return "sample." + (extensions.empty() ? std::string("txt") : extensions.front());
}

std::string sample_text(language_info::language_t language)
{
    std::string mark;
    if (language == language_info::cpp)
        mark = "// ";
    else if (language == language_info::fortran)
        mark = "! ";
    std::string text;
    for (int line = 1; line <= sample_lines; ++line)
        text += mark +
                (line == sample_line ? translate_message("editor.try.sample_line", {{"line", line}})
                                     : translate_message("editor.try.sample_other", {{"line", line}})) +
                "\n";
    return text;
}

} // namespace

struct editor_trial_t::run_t
{
    gen_helpers2::system_editor_t editor;
    std::string name;
    std::string text;
    bool is_told = false; // whether it was started
    // Of the worker, until it has ended.
    editor_failure_t failure;
    bool has_started = false;
    std::mutex mutex;
    std::string place; // that is asked; guarded
};

editor_trial_t::editor_trial_t(told_t told)
    : m_told(std::move(told)), m_self(std::make_shared<editor_trial_t*>(this))
{
}

editor_trial_t::~editor_trial_t() = default;

void editor_trial_t::start(const gen_helpers2::system_editor_t& editor, language_info::language_t language)
{
    const auto run = std::make_shared<run_t>();
    m_run = run;
    run->editor = editor;
    run->name = sample_name(language);
    run->text = sample_text(language);
    run->failure.editor = editor.display_name;
    const std::weak_ptr<editor_trial_t*> self = m_self;
    // Runs on the GUI thread, as the worker has no event loop of its own.
    const auto ended = [self, run](const program_end_t& end) {
        const auto trial = self.lock();
        if (!trial || (*trial)->m_run != run || end.lived > ended_at_once)
            return;
        (*trial)->on_started(run); // which may still be on its way
        if (end.succeeded()) {
            (*trial)->m_told(severity_t::information,
                             translate_message("editor.try.ended", {{"editor", run->editor.display_name}}));
            return;
        }
        editor_failure_t failure = run->failure;
        failure.reason = reason_t::ended;
        failure.exit_code = end.exit_code;
        failure.signal = end.signal;
        (*trial)->m_told(severity_t::error, failure.get_text());
    };
    const auto work = [run, ended] {
        const auto at = [&](const std::string& place) {
            const std::lock_guard<std::mutex> lock(run->mutex);
            run->place = place;
        };
        const gen_helpers2::path_t file = gen_helpers2::path_t(sample_folder().get()) / run->name;
        if (const auto written = gen_helpers2::write_whole_file(file, run->text); written.failed()) {
            run->failure.reason = reason_t::not_started;
            run->failure.details = written.message();
            return;
        }
        std::vector<std::string> words;
        if (!compose_editor_command(run->editor, file, sample_line, words, run->failure, at))
            return;
        at(gen_helpers2::path_t(words.front()).parent().as_string());
        const auto started = gen_helpers2::start_program(words, ended);
        run->has_started = started.succeeded();
        if (run->has_started)
            return;
        run->failure.reason = reason_t::not_started;
        run->failure.details = started.message();
    };
    const auto later = [self, run] {
        if (const auto trial = self.lock())
            (*trial)->on_started(run);
    };
    switch (put_to_disk(work, patience_while_typing, later)) {
    case asked_t::answered:
        on_started(run);
        return;
    case asked_t::later:
        m_told(severity_t::information,
               translate_message("editor.try.starting", {{"editor", editor.display_name}}));
        break;
    case asked_t::never:
        run->failure.reason = reason_t::no_answer;
        run->failure.program = editor.executable;
        on_started(run);
        return;
    }
    if (!m_timer) {
        m_timer = std::make_unique<wxTimer>();
        m_timer->Bind(wxEVT_TIMER, [this](wxTimerEvent&) { on_time(); });
    }
    m_timer->StartOnce(told_silent_after);
}

void editor_trial_t::on_started(const std::shared_ptr<run_t>& run)
{
    if (run != m_run || std::exchange(run->is_told, true))
        return;
    if (run->has_started)
        m_told(severity_t::information,
               translate_message("editor.try.started",
                                 {{"editor", run->editor.display_name}, {"line", sample_line}}));
    else
        m_told(severity_t::error, run->failure.get_text());
}

void editor_trial_t::on_time()
{
    if (!m_run || m_run->is_told)
        return;
    const std::lock_guard<std::mutex> lock(m_run->mutex);
    if (m_run->place.empty())
        m_run->place = m_run->editor.executable;
    m_told(severity_t::warning,
           translate_message("pref.editor.no_answer", {{"dir", as_shown(m_run->place)},
                                                       {"program", as_shown(m_run->editor.executable)}}));
}

} // namespace commondlg3
