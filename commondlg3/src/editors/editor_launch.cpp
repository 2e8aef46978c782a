#include "commondlg3/editor_launch.h"

#include "commondlg3/message_window.h"
#include "commondlg3/text_utils.h"
#include "paths/shown_path.h"

#include <gen_helpers2/log.h>
#include <gen_helpers2/program.h>

#include <chrono>

namespace commondlg3 {
namespace {

using reason_t = editor_failure_t::reason_t;

// An editor that ends later was used; what it ends with then is its user's choice.
constexpr std::chrono::seconds at_once(10);

} // namespace

bool open_in_editor(const gen_helpers2::system_editor_t& editor, const gen_helpers2::path_t& file, int line,
                    std::function<void(const editor_failure_t&)> failed)
{
    std::vector<std::string> words;
    editor_failure_t failure;
    const auto tell = [failed = std::move(failed)](const editor_failure_t& told) {
        gen_helpers2::log_warning("editor_launch", told.get_text() + " " + told.command);
        if (failed)
            failed(told);
    };
    if (!get_editor_command(editor, file, line, words, failure)) {
        tell(failure);
        return false;
    }
    const auto result =
        gen_helpers2::start_program(words, [tell, failure](const gen_helpers2::program_end_t& end) {
            if (end.succeeded() || end.lived > at_once)
                return;
            editor_failure_t told = failure;
            told.reason = reason_t::ended;
            told.exit_code = end.exit_code;
            told.signal = end.signal;
            tell(told);
        });
    if (result.failed()) {
        failure.reason = reason_t::not_started;
        failure.details = result.message();
        tell(failure);
    }
    return result.succeeded();
}

std::string editor_failure_t::get_text() const
{
    switch (reason) {
    case reason_t::no_command:
        return translate_message("editor.failed.no_command", {{"editor", editor}});
    case reason_t::bad_quotes:
        return translate_message("editor.failed.bad_quotes", {{"editor", editor}});
    case reason_t::not_found:
        return translate_message("editor.failed.not_found", {{"program", as_shown(program)}});
    case reason_t::no_terminal:
        return translate_message("editor.failed.no_terminal", {{"program", as_shown(program)}});
    case reason_t::no_file:
        return translate_message("editor.failed.no_file", {{"file", as_shown(file)}});
    case reason_t::not_started:
        return translate_message("editor.failed.not_started", {{"reason", details}});
    case reason_t::no_answer:
        return translate_message("editor.failed.no_answer", {{"program", as_shown(program)}});
    case reason_t::ended:
        break;
    }
    return signal ? translate_message("editor.failed.signal", {{"signal", signal}})
                  : translate_message("editor.failed.exit_code", {{"code", exit_code}});
}

void show_editor_failure(const editor_failure_t& failure, wxWindow* parent)
{
    message_window_t window;
    window.main_message = translate_message("editor.failed", {});
    window.supplemental_message = failure.get_text();
    if (!failure.command.empty())
        window.details_message =
            translate_message("editor.failed.command", {{"command", as_shown(failure.command)}});
    show_modal(window, parent);
}

} // namespace commondlg3
