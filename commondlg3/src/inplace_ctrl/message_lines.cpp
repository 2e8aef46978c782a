// The lines of an entry: on their way from a worker to the log, and out of it.
#include "message_entry.h"

#include "commondlg3/text_utils.h"

#include <wx/thread.h>

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <string_view>
#include <utility>

namespace commondlg3 {
namespace {

using when_full_t = inplace_ctrl_t::when_full_t;
using lock_t = boost::unique_lock<boost::mutex>;

// The text of batches from this size on is taken over, that of smaller ones copied: an arena has room to
// spare.
constexpr std::size_t worth_adopting = std::size_t(128) * 1024;
constexpr std::size_t lines_between_looks_at_the_clock = 32;
constexpr std::chrono::seconds longest_wait(2);

std::int64_t milliseconds_now()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

// What a line takes while it waits.
std::size_t bytes_of(std::size_t lines, std::size_t text)
{
    return lines * sizeof(line_batch_t::line_t) + text;
}

} // namespace

void message_entry_t::say(msngr2::ESeverity severity, const char* text)
{
    if (text)
        say_text(severity, text, milliseconds_now());
}

void message_entry_t::say_text(msngr2::ESeverity severity, std::string_view text, std::int64_t time)
{
    note_sign();
    lock_t lock(m_mutex);
    if (m_closed || !make_room(lock, severity))
        return;
    if (!m_pending)
        m_pending = std::make_unique<line_batch_t>();
    m_pending->add(severity, text, time, m_log->GetCollapse());
    if (m_task.must_be_posted())
        wx_helpers1::tasks::PostSignal(m_say_signal);
}

bool message_entry_t::is_full() const
{
    const std::size_t pending = m_pending ? bytes_of(m_pending->lines.size(), m_pending->bytes) : 0;
    return pending + m_unshown > m_log->get_queue_limit().bytes;
}

bool message_entry_t::make_room(lock_t& lock, msngr2::ESeverity severity)
{
    while (true) {
        const when_full_t when_full = m_log->get_queue_limit().when_full;
        if (when_full == when_full_t::grow || !is_full()) {
            tell_lost();
            return true;
        }
        if (when_full == when_full_t::drop) {
            m_lost += severity & msngr2::sev_status ? 0 : 1;
            return false;
        }
        if (m_no_waiting || m_progress.isCanceled() || wxIsMainThread())
            return true;
        const std::uint64_t before = m_shown_pieces;
        const bool told = m_room.wait_for(lock, longest_wait) == std::cv_status::no_timeout;
        if (m_closed)
            return false;
        m_no_waiting = !told && m_shown_pieces == before;
    }
}

void message_entry_t::tell_lost()
{
    if (m_lost == 0)
        return;
    if (!m_pending)
        m_pending = std::make_unique<line_batch_t>();
    m_pending->add(msngr2::sev_warning, translate_message("inplace_ctrl.lost_lines", {{"count", m_lost}}),
                   milliseconds_now());
    m_lost = 0;
    if (m_task.must_be_posted())
        wx_helpers1::tasks::PostSignal(m_say_signal);
}

void message_entry_t::shown(std::size_t bytes)
{
    {
        boost::lock_guard<boost::mutex> lock(m_mutex);
        m_unshown -= std::min(bytes, m_unshown);
        ++m_shown_pieces;
        m_no_waiting = false;
        if (m_closed || (m_lost && is_full()))
            return;
        tell_lost();
    }
    m_room.notify_all();
}

void message_entry_t::say_signal_handler()
{
    std::unique_ptr<line_batch_t> taken;
    {
        boost::lock_guard<boost::mutex> lock(m_mutex);
        taken = std::move(m_pending);
        m_task.begins();
        if (taken)
            m_unshown += bytes_of(taken->lines.size(), taken->bytes);
    }
    if (taken)
        show(std::move(taken));
    if (m_watch.get_kind() == progress_watch_t::kind_t::silent)
        look_at_progress();
}

void message_entry_t::show_batch(std::unique_ptr<line_batch_t> batch)
{
    {
        boost::lock_guard<boost::mutex> lock(m_mutex);
        m_unshown += bytes_of(batch->lines.size(), batch->bytes);
    }
    show(std::move(batch));
}

void message_entry_t::show(std::unique_ptr<line_batch_t> batch)
{
    if (!m_element)
        return;
    m_showing.push_back(std::move(batch));
    m_log->AddWork(this, [this] { return show_some(); });
}

bool message_entry_t::show_some()
{
    const ptr_t keep(this);
    std::size_t bytes = 0;
    bool more = false;
    while (!m_showing.empty() && !more) {
        line_batch_t& batch = *m_showing.front();
        const bool adopt = batch.bytes >= worth_adopting && batch.passing_bytes * 4 < batch.bytes;
        if (adopt && batch.shown == 0)
            m_element->Adopt(std::move(batch.texts));
        m_copy_texts = !adopt;
        while (batch.shown < batch.lines.size()) {
            const line_batch_t::line_t& line = batch.lines[batch.shown++];
            bytes += bytes_of(1, line.length);
            m_time = batch.time_of(line);
            m_said = line.count;
            say_impl(m_element, &m_status, line.severity, line.text());
            if (batch.shown % lines_between_looks_at_the_clock == 0 && m_log->enough())
                break;
        }
        m_copy_texts = true;
        m_said = 1;
        if (batch.shown < batch.lines.size()) {
            more = true;
            break;
        }
        if (adopt)
            m_element->AdoptedAll();
        m_showing.pop_front();
        if (m_log->enough()) {
            more = !m_showing.empty();
            break;
        }
    }
    shown(bytes);
    m_log->grown();
    return more;
}

bool message_entry_t::drop_old_lines(std::size_t count)
{
    if (!has_old_lines())
        return false;
    constexpr std::size_t block = vdxcfrw7::line_store_t::block_size;
    m_element->DropBlocks((count + block - 1) / block, m_log->image_of(msngr2::sev_none));
    return true;
}

} // namespace commondlg3
