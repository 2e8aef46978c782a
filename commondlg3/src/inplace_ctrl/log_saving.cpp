// Saving a log as a text.
#include "inplace_ctrl_impl.h"

#include "commondlg3/choosers.h"
#include "commondlg3/message_window.h"
#include "commondlg3/text_utils.h"

#include "background.h"

#include <gen_helpers2/log.h>
#include <wx_helpers1/tasks.h>

#include <wx/weakref.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace commondlg3 {
namespace {

using gen_helpers2::error_code_t;

struct ending_t
{
    text_format_t format;
    const char* ending;
};
constexpr ending_t endings[] = {
    {text_format_t::html, "html"},       {text_format_t::html, "htm"},  {text_format_t::json_lines, "jsonl"},
    {text_format_t::json_lines, "json"}, {text_format_t::plain, "txt"},
};

text_format_t format_of(const gen_helpers2::path_t& file)
{
    const std::string ending = file.get_ext(false);
    for (const ending_t& known : endings)
        if (ending == known.ending)
            return known.format;
    return text_format_t::plain;
}

bool may_replace(const gen_helpers2::path_t& file, wxWindow* parent)
{
    if (!file.exists())
        return true;
    message_window_t question;
    question.icon_type = message_window_t::icon_types_t::warning;
    question.button_type = message_window_t::button_type_t::yes_no;
    question.main_message = translate_message("inplace_ctrl.replace");
    question.supplemental_message =
        translate_message("inplace_ctrl.replace_file", {{"file", file.as_string()}});
    return show_modal(question, parent) == message_window_t::result_yes;
}

} // namespace

void inplace_ctrl_impl_t::entry_going(const event_entry_t& entry)
{
    for (const auto& copier : m_copiers)
        copier->entry_going(static_cast<const message_entry_t&>(entry));
}

void inplace_ctrl_impl_t::save_as(const gen_helpers2::path_t& file, text_format_t format,
                                  const text_options_t& options,
                                  std::function<void(const error_code_t&)> done)
{
    const std::weak_ptr<bool> alive = m_alive;
    const auto copier = std::make_shared<log_copier_t>([=](std::vector<entry_contents_t> entries) {
        const auto contents = std::make_shared<inplace_contents_t>();
        contents->m_data = std::make_unique<inplace_contents_t::data_t>();
        contents->m_data->entries = std::move(entries);
        background_t::get().add(background_t::kind_t::must_be_done, [=] {
            const error_code_t saved = contents->save_as(file, format, options);
            if (saved.failed())
                gen_helpers2::log_warning("inplace_ctrl", "the log was not saved: " + saved.as_string());
            contents->m_data.reset(); // here, where nobody waits for it
            if (done)
                wx_helpers1::tasks::Scheduler::Post([=] {
                    if (!alive.expired())
                        done(saved);
                });
        });
    });
    for (const auto& [tag, entry] : m_entries)
        copier->add(message_entry_t::ptr_t(static_cast<message_entry_t*>(entry.get())));
    m_copiers.push_back(copier);
    m_log->AddWork(copier.get(), [this, copier] {
        if (copier->copy_some([this] { return m_log->enough(); }))
            return true;
        m_copiers.erase(std::find(m_copiers.begin(), m_copiers.end(), copier));
        copier->finish();
        return false;
    });
}

void inplace_ctrl_impl_t::ask_save_as()
{
    const wxWeakRef<wxWindow> owner(m_owner); // may go while the user chooses
    const std::string filter = translate_message("inplace_ctrl.format_text") + "|*.txt\n" +
                               translate_message("inplace_ctrl.format_html") + "|*.html\n" +
                               translate_message("inplace_ctrl.format_json") + "|*.jsonl";
    std::string chosen = m_saved_as.empty() ? translate_message("inplace_ctrl.save_name") : m_saved_as;
    const std::string ending = gen_helpers2::path_t(chosen).get_ext(false);
    if (!file_dlg(m_owner, false, chosen, ending, filter, translate_message("inplace_ctrl.save_title"), {}) ||
        !owner)
        return;
    const gen_helpers2::path_t file(chosen);
    if (!may_replace(file, m_owner) || !owner)
        return;
    m_saved_as = chosen;
    text_options_t options;
    options.times = m_log->GetTimes() != vdxcfrw7::CEventLog::times_t::none;
    save_as(file, format_of(file), options, [this](const error_code_t& saved) {
        if (saved.succeeded())
            return;
        message_window_t window;
        window.main_message = translate_message("inplace_ctrl.not_saved");
        window.supplemental_message = saved.message();
        show_modal(window, m_owner);
    });
}

} // namespace commondlg3
