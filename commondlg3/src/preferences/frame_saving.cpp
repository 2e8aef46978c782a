#include "frame_impl.h"

#include "commondlg3/text_utils.h"

#include "frame_notice.h"
#include "leave_dlg.h"
#include "paths/disk_question.h"
#include "settings_diff.h"

#include <cfgmgr2/product_locations.h>
#include <cpil/catalog.h>
#include <gen_helpers2/log.h>
#include <wx_helpers1/enabling.h>
#include <wx_helpers1/text.h>

#include <wx/button.h>
#include <wx/dataview.h>
#include <wx/scrolwin.h>
#include <wx/srchctrl.h>
#include <wx/stattext.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

// Reading and writing is done by a thread of its own. As a rule it is done before anybody notices; a disk that
// does not answer leaves a dialog that can be closed, and a thread that waits on.
namespace commondlg3 {
namespace {

using CPIL_2_18::i18n::catalog_key;

constexpr std::chrono::milliseconds patience_before_showing{150};
constexpr std::chrono::milliseconds patience_after_ok{300};

std::string join(const std::vector<std::string>& lines)
{
    std::string all;
    for (const std::string& line : lines)
        all += (all.empty() ? "" : "\n") + line;
    return all;
}

} // namespace

void preferences_frame_t::impl_t::set_busy(busy_t busy)
{
    m_busy = busy;
    const bool idle = busy == busy_t::none;
    wx_helpers1::set_enabled({{m_list->get_control(), idle},
                              {m_search, idle},
                              {m_more, idle},
                              {m_apply, idle && !stack.get_changed().empty()},
                              {m_frame.m_btn_ok, idle},
                              {stack.get_area(), idle}},
                             m_frame.m_btn_cancel);
    m_waiting->Show(busy == busy_t::reading);
    m_frame.Layout();
}

void preferences_frame_t::impl_t::on_disk(busy_t busy, std::chrono::milliseconds patience,
                                          std::function<void()> work, std::function<void()> done)
{
    m_busy = busy;
    const auto later = [this, of = m_work, alive = std::weak_ptr<char>(m_alive), done] {
        if (!alive.lock() || of != m_work)
            return;
        set_busy(busy_t::none);
        done();
    };
    if (ask_disk(std::move(work), patience, later)) {
        m_busy = busy_t::none;
        done();
    } else {
        set_busy(busy);
    }
}

void preferences_frame_t::impl_t::begin_reading(std::function<void()> done)
{
    // Another one each time: the thread of the last one may hang on.
    m_work = std::make_shared<settings_work_t>();
    m_work->pages = m_frame.get_pages();
    m_work->memory = memory;
    m_work->folder = folder.is_empty() ? cfgmgr2::IProductLocations::get()->get_config_directory() : folder;
    on_disk(
        busy_t::reading, patience_before_showing, [work = m_work] { work->read(); },
        [this, done = std::move(done)] {
            done();
            m_list->set_focus();
            tell_unread();
        });
}

// On the pages that are there already.
void preferences_frame_t::impl_t::show_read()
{
    for (int i = 0; i < stack.size(); ++i)
        if (auto& each = stack.at(i); each.window) {
            each.page->show_kept();
            each.kept = each.page->get_settings();
            each.unwritten = false;
        }
}

// The toolkit may show the dialog later than it is asked to: a message before would come to lie behind it.
void preferences_frame_t::impl_t::tell_unread()
{
    if (m_work->unread.empty())
        return;
    const auto tell_it = [this, reasons = m_work->unread] {
        m_frame.CallAfter([this, reasons] {
            tell(catalog_key("preferences.not_read"), catalog_key("preferences.not_read_details"), reasons);
        });
    };
    if (m_frame.IsShown())
        tell_it();
    else
        m_tell = tell_it;
}

bool preferences_frame_t::impl_t::has_problem(const std::vector<int>& pages)
{
    for (const int page : pages) {
        const auto problem = stack.at(page).page->validate();
        if (problem.message.empty())
            continue;
        select(page);
        if (problem.control)
            problem.control->SetFocus();
        m_notice->show(problem.message, {});
        return true;
    }
    return false;
}

void preferences_frame_t::impl_t::apply(std::function<void()> then)
{
    if (!m_list || m_busy != busy_t::none)
        return;
    stack.look_at_all();
    const auto pages = stack.get_changed();
    m_notice->hide();
    if (has_problem(pages))
        return;
    m_then = std::move(then);
    for (const int page : pages) {
        stack.need(page).page->store(); // it may say what had to be replaced
        stack.at(page).unwritten = true;
    }
    begin_writing(pages);
}

void preferences_frame_t::impl_t::begin_writing(const std::vector<int>& pages)
{
    m_writing = pages;
    m_work->result = {};
    m_work->is_theirs = false;
    if (pages.empty()) {
        finish_writing();
        return;
    }
    std::vector<preferences_page_ptr_t> changed;
    changed.reserve(pages.size());
    for (const int page : pages)
        changed.push_back(stack.at(page).page);
    on_disk(
        busy_t::saving, patience_after_ok, [work = m_work, changed] { work->write(changed); },
        [this] { finish_writing(); });
    if (m_busy == busy_t::saving)
        m_notice->show(translate_message("preferences.saving"), {});
}

void preferences_frame_t::impl_t::finish_writing()
{
    m_notice->hide();
    if (m_work->is_theirs) {
        update();
        on_theirs();
        m_notice->set_focus();
        return;
    }
    const bool written = m_work->result.succeeded();
    for (const int page : m_writing)
        if (written) {
            stack.at(page).unwritten = false;
            stack.at(page).page->stored();
            stack.at(page).kept = stack.at(page).page->get_settings();
        }
    update();
    const auto signal = applied_signal;
    signal.emit(written);
    if (!written) {
        tell(catalog_key("preferences.not_written"), catalog_key("preferences.not_written_details"),
             m_work->result.message());
        return;
    }
    for (const int page : m_writing)
        wants_restart = stack.at(page).page->prompt_restart() || wants_restart;
    if (const auto then = std::exchange(m_then, nullptr))
        then();
}

// Somebody else has written the settings between our reading and our writing.
void preferences_frame_t::impl_t::on_theirs()
{
    m_notice->show(translate_message("preferences.theirs"),
                   {{translate_message("preferences.read_again"), [this] { read_again(); }},
                    {translate_message("preferences.keep_mine"), [this] {
                         m_notice->hide();
                         m_work->stamps = m_work->theirs; // what comes after it is somebody else's again
                     }}});
}

// When the dialog comes to the front again, as another program may have been there.
void preferences_frame_t::impl_t::look_for_theirs()
{
    if (!m_work || m_busy != busy_t::none || m_looking || m_notice->is_shown())
        return;
    const auto seen = std::make_shared<decltype(m_work->stamps)>();
    const auto done = [this, seen, alive = std::weak_ptr<char>(m_alive)] {
        if (!alive.lock())
            return;
        m_looking = false;
        if (m_busy != busy_t::none || *seen == m_work->stamps)
            return;
        m_work->theirs = *seen;
        on_theirs();
    };
    m_looking = true;
    if (ask_disk([work = m_work, seen] { *seen = work->look(); }, patience_while_typing, done))
        done();
}

// What was changed here stays as it was entered; all else is as it is on the disk now.
void preferences_frame_t::impl_t::read_again()
{
    m_notice->hide();
    on_disk(
        busy_t::reading, patience_after_ok, [work = m_work] { work->read(); },
        [this] {
            for (int i = 0; i < stack.size(); ++i) {
                auto& each = stack.at(i);
                if (!each.window)
                    continue;
                const auto entered = pick_changed(each.kept, each.page->get_settings());
                each.page->show_kept();
                each.kept = each.page->get_settings();
                each.page->set_settings(entered);
            }
            update();
            tell_unread();
        });
}

bool preferences_frame_t::impl_t::may_leave()
{
    if (!m_list || m_busy != busy_t::none)
        return true;
    stack.look_at_all();
    const auto changed = stack.get_changed();
    if (changed.empty())
        return true;
    leave_dlg_t question(join(get_titles(changed)));
    switch (question.ask(&m_frame)) {
    case leave_dlg_t::answer_t::save:
        apply([this] { end_with_ok(); });
        return false;
    case leave_dlg_t::answer_t::discard:
        discard();
        return true;
    default:
        return !question.is_loaded(); // whoever cannot be asked wanted to go
    }
}

// What could not be written is in the memory of the storages all the same, and would go with their next
// saving.
void preferences_frame_t::impl_t::discard()
{
    for (int i = 0; i < stack.size(); ++i)
        if (auto& each = stack.at(i); each.unwritten) {
            each.page->set_settings(each.kept);
            each.page->store();
            each.unwritten = false;
        }
}

void preferences_frame_t::impl_t::end_with_ok()
{
    remember();
    m_frame.set_return_code(wxID_OK);
    m_frame.dialog_base_t::end_dialog(wxID_OK);
}

void preferences_frame_t::impl_t::remember()
{
    if (!memory)
        return;
    const auto stored = memory->get()->get_child("preferences");
    if (const int at = stack.get_shown(); at != page_stack_t::none)
        stored->set_value("page", stack.at(at).page->get_name());
    stored->set_value("width", m_frame.GetClientSize().x);
    stored->set_value("height", m_frame.GetClientSize().y);
    const auto file = memory;
    ask_disk(
        [file] {
            if (const auto result = file->save(); result.failed())
                gen_helpers2::log_warning("preferences",
                                          "the window's size was not kept: " + result.as_string());
        },
        patience_after_ok);
}

void preferences_frame_t::impl_t::tell(const char* main_key, const char* details_key,
                                       const std::string& reason)
{
    auto window =
        message_window_t::simple_error_wnd(m_frame.get_catalog_name(), main_key, details_key, {}, {});
    window.details_message = reason;
    commondlg3::show_modal(window, &m_frame);
}

} // namespace commondlg3
