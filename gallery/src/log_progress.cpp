#include "log_page.h"

#include "missing_resource.h"

#include <cpil/catalog.h>
#include <vdx/event_log.h>
#include <wx_helpers1/tasks.h>

#include <chrono>
#include <memory>
#include <string>

namespace gallery {

using commondlg3::standard_message_t;

progress_page_t::progress_page_t(wxWindow* parent)
    : log_page_t(parent, CPIL_2_18::i18n::catalog_key("gallery.entry.log_progress.name"), std::string())
{
    finish_layout();
    pass(0);
    m_work = {add(text("log.sample.reading"), 24000), add(text("log.sample.waiting"), 0),
              add(text("log.sample.sending"), 100), add(text("log.sample.reading"), 100)};
    step(0);
}

commondlg3::inplace_ctrl_t::tag_t progress_page_t::add(const std::string& caption, double total)
{
    commondlg3::progress_message_t::ptr_t record(new commondlg3::progress_message_t);
    record->caption = caption;
    record->picture = standard_message_t::get_icon_by_type(standard_message_t::icon_types_t::progress);
    const auto tag = get_log().add_progress(record, make_callback());
    get_log().get_progress(tag)->start(caption.c_str(), total);
    return tag;
}

void progress_page_t::pass(int seconds)
{
    m_now += std::chrono::seconds(seconds);
    get_log().set_clock([this] { return m_now; });
}

// The first goes on and so does the second, nobody knows how long; nothing is heard of the third, and the last
// is cancelled.
void progress_page_t::step(int second)
{
    constexpr int last = 40;
    commondlg3::inplace_ctrl_t& log = get_log();
    if (msngr2::IProgress* known = log.get_progress(m_work[0])) // null once somebody has cleared the log
        known->internalProgressed(220);
    if (msngr2::IProgress* unknown = log.get_progress(m_work[1]))
        unknown->message(text("log.sample.status").c_str());
    if (msngr2::IProgress* cancelled = log.get_progress(m_work[3])) {
        if (second == last)
            cancelled->cancel();
        else
            cancelled->internalProgressed(1);
    }
    // Behind the tasks that tell of this.
    wx_helpers1::tasks::Scheduler::Post([this, alive = std::weak_ptr<bool>(m_alive), second] {
        if (alive.expired())
            return;
        pass(1);
        if (second < last)
            step(second + 1);
    });
}

} // namespace gallery
