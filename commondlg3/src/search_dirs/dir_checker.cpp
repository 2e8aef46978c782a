#include "commondlg3/dir_checker.h"

#include "commondlg3/path_info.h"
#include "commondlg3/text_utils.h"
#include "dir_queue.h"

#include <wx/timer.h>

#include <chrono>
#include <functional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace commondlg3 {
namespace {

using clock_t = std::chrono::steady_clock;
using vdxpropgrid2::row_key_t;
using vdxpropgrid2::row_mark_t;
using vdxpropgrid2::row_t;
using mark_t = dir_mark_t::kind_t;

constexpr int follow_delay = 20; // milliseconds; changes that come together are looked at together
constexpr int patience = 1000;   // until a row is said to wait
constexpr int longest_slice = 4; // of delivering verdicts
constexpr int between_markings = 150;

row_mark_t text_of(const dir_mark_t& mark, const std::string& dir, const std::string& other)
{
    using kind_t = row_mark_t::kind_t;
    const CPIL_2_18::generic::varg_list arguments{
        {"dir", dir}, {"other", other}, {"line", static_cast<int>(mark.other) + 1}};
    const auto make = [&](kind_t kind, const std::string& word, const std::string& explanation) {
        return row_mark_t{kind, word, explanation};
    };
    switch (mark.kind) {
    case mark_t::not_a_directory:
        return make(kind_t::warning, translate_message("panel.search_dirs.mark_not_a_dir"),
                    translate_message("panel.search_dirs.error_not_a_dir", arguments));
    case mark_t::missing:
        return make(kind_t::warning, translate_message("panel.search_dirs.mark_missing"),
                    translate_message("panel.search_dirs.error_dir_nonexistent", arguments));
    case mark_t::duplicate:
        return make(kind_t::information, translate_message("panel.search_dirs.mark_duplicate"),
                    translate_message("panel.search_dirs.explain_duplicate", arguments));
    case mark_t::shadowed:
        return make(kind_t::information, translate_message("panel.search_dirs.mark_shadowed"),
                    translate_message("panel.search_dirs.explain_shadowed", arguments));
    case mark_t::relative:
        return make(kind_t::information, translate_message("panel.search_dirs.mark_relative"),
                    translate_message("panel.search_dirs.explain_relative", arguments));
    case mark_t::waiting:
        return make(kind_t::information, translate_message("panel.search_dirs.mark_waiting"),
                    translate_message("panel.search_dirs.explain_waiting", arguments));
    case mark_t::none:
        break;
    }
    return row_mark_t();
}

} // namespace

struct dir_checker_t::impl_t
{
    struct known_t
    {
        std::string text;
        std::string path; ///< in its normal form
        dir_state_t state;
        dir_mark_t shown;
        bool has_note = false;
        unsigned seen = 0;
    };

    impl_t(vdxpropgrid2::property_grid_t* watched, examiner_t examiner)
        : grid(watched), queue(std::make_shared<dir_queue_t>(std::move(examiner)))
    {
        follow_timer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { follow(); });
        slice_timer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { deliver(longest_slice); });
        patience_timer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
            is_patient = false;
            mark_rows();
        });
    }

    void follow();
    void deliver(int milliseconds);
    void mark_rows();
    dir_checker_t::row_kind_t kind_of(const row_t& row) const
    {
        return reader ? reader(row) : dir_checker_t::row_kind_t{row.checked, false};
    }
    void follow_soon()
    {
        if (!follow_timer.IsRunning())
            follow_timer.StartOnce(follow_delay);
    }

    vdxpropgrid2::property_grid_t* grid;
    std::function<dir_checker_t::row_kind_t(const row_t&)> reader;
    std::function<row_mark_t(const row_t&)> note_maker;
    std::shared_ptr<dir_queue_t> queue;
    std::unordered_map<row_key_t, known_t> known;
    std::vector<dir_queue_t::item_t> arrived;
    std::size_t delivered = 0;
    unsigned generation = 0;
    bool is_patient = true;
    bool needs_marking = false;
    clock_t::time_point last_marking;
    wxTimer follow_timer, slice_timer, patience_timer;
    gen_helpers2::signal_t<int, dir_state_t> verdict;
    gen_helpers2::signal_t<row_key_t> gone;
};

// Compares the grid with what is known, whoever changed it and how.
void dir_checker_t::impl_t::follow()
{
    ++generation;
    std::vector<dir_queue_t::item_t> unknown;
    for (const row_t& row : grid->get_rows()) {
        known_t& entry = known[row.key];
        entry.seen = generation;
        if (entry.text == row.text && !entry.text.empty())
            continue;
        entry.text = row.text;
        entry.path = path_info_t(row.text).as_string();
        entry.state = dir_state_t();
        entry.has_note = false;
        unknown.push_back({row.key, row.text, {}, 0});
    }
    if (known.size() > grid->get_rows().size()) {
        std::vector<row_key_t> lost;
        for (auto at = known.begin(); at != known.end();) {
            if (at->second.seen == generation) {
                ++at;
                continue;
            }
            lost.push_back(at->first);
            at = known.erase(at);
        }
        for (const row_key_t key : lost)
            gone.emit(key);
    }
    if (!unknown.empty()) {
        queue->add(std::move(unknown));
        is_patient = true;
        patience_timer.StartOnce(patience);
    }
    mark_rows();
}

void dir_checker_t::impl_t::deliver(int milliseconds)
{
    const auto end = clock_t::now() + std::chrono::milliseconds(milliseconds);
    if (delivered == arrived.size()) {
        arrived = queue->take();
        delivered = 0;
    }
    while (delivered < arrived.size() && clock_t::now() < end) {
        const dir_queue_t::item_t& item = arrived[delivered++];
        const auto entry = known.find(item.key);
        if (entry == known.end() || entry->second.text != item.path)
            continue; // the row is another one by now
        entry->second.state = item.state;
        needs_marking = true;
        verdict.emit(grid->find_row(item.key), item.state);
    }
    const bool is_done = delivered == arrived.size() && !queue->is_waiting();
    const bool is_time = clock_t::now() - last_marking > std::chrono::milliseconds(between_markings);
    if (needs_marking && (is_done || is_time))
        mark_rows();
    if (delivered < arrived.size())
        slice_timer.StartOnce(1);
    else if (needs_marking)
        slice_timer.StartOnce(between_markings);
}

void dir_checker_t::impl_t::mark_rows()
{
    const auto& rows = grid->get_rows();
    std::vector<listed_dir_t> dirs;
    std::vector<known_t*> entries;
    dirs.reserve(rows.size());
    entries.reserve(rows.size());
    for (const row_t& row : rows) {
        const auto entry = known.find(row.key);
        entries.push_back(entry == known.end() ? nullptr : &entry->second);
        const auto kind = kind_of(row);
        dirs.push_back(entry == known.end() ? listed_dir_t{row.text, kind.recursive, {}, kind.skipped}
                                            : listed_dir_t{entry->second.path, kind.recursive,
                                                           entry->second.state, kind.skipped});
    }
    std::vector<dir_mark_t> marks = mark_dirs(dirs);
    for (std::size_t i = 0; i < marks.size(); ++i) {
        if (marks[i].kind == mark_t::waiting && is_patient)
            marks[i] = dir_mark_t();
        const bool takes_note = note_maker && entries[i] && marks[i].kind == mark_t::none &&
                                !dirs[i].skipped && entries[i]->state.kind == dir_state_t::kind_t::directory;
        if (!entries[i] || (entries[i]->shown == marks[i] && entries[i]->has_note == takes_note))
            continue;
        entries[i]->shown = marks[i];
        entries[i]->has_note = takes_note;
        grid->set_mark(static_cast<int>(i), takes_note
                                                ? note_maker(rows[i])
                                                : text_of(marks[i], rows[i].text, rows[marks[i].other].text));
    }
    last_marking = clock_t::now();
    needs_marking = false;
}

dir_checker_t::dir_checker_t(vdxpropgrid2::property_grid_t* grid, examiner_t examiner)
    : m_impl(std::make_unique<impl_t>(grid, std::move(examiner)))
{
    grid->get_changed_signal().connect(this, [this] { m_impl->follow_soon(); });
    m_impl->queue->ready.connect(this, [this] {
        if (!m_impl->slice_timer.IsRunning())
            m_impl->slice_timer.StartOnce(1);
    });
    restart();
}

dir_checker_t::~dir_checker_t()
{
    disconnect_all();
    m_impl->queue->close();
}

void dir_checker_t::set_row_reader(std::function<row_kind_t(const row_t&)> reader)
{
    m_impl->reader = std::move(reader);
    m_impl->follow_soon();
}

void dir_checker_t::set_note_maker(std::function<row_mark_t(const row_t&)> maker)
{
    m_impl->note_maker = std::move(maker);
    m_impl->follow_soon();
}

void dir_checker_t::restart()
{
    m_impl->queue->clear();
    m_impl->known.clear();
    m_impl->arrived.clear();
    m_impl->delivered = 0;
    m_impl->follow_soon();
}

void dir_checker_t::forget(row_key_t key)
{
    m_impl->known.erase(key);
    m_impl->follow_soon();
}

void dir_checker_t::finish(int milliseconds)
{
    if (m_impl->follow_timer.IsRunning()) {
        m_impl->follow_timer.Stop();
        m_impl->follow();
    }
    constexpr int long_enough = 60000;
    m_impl->queue->wait(milliseconds);
    m_impl->deliver(long_enough); // what has arrived before
    m_impl->deliver(long_enough);
}

dir_state_t dir_checker_t::get_state(row_key_t key) const
{
    const auto entry = m_impl->known.find(key);
    return entry == m_impl->known.end() ? dir_state_t() : entry->second.state;
}

bool dir_checker_t::is_waiting() const
{
    return m_impl->follow_timer.IsRunning() || m_impl->queue->is_waiting() ||
           m_impl->delivered < m_impl->arrived.size();
}

gen_helpers2::signal_t<int, dir_state_t>& dir_checker_t::get_verdict_signal()
{
    return m_impl->verdict;
}

gen_helpers2::signal_t<row_key_t>& dir_checker_t::get_gone_signal()
{
    return m_impl->gone;
}

} // namespace commondlg3
