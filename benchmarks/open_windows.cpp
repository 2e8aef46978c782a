#include "app.h"
#include "openings.h"

#include <benchmark/benchmark.h>

#include <wx/app.h>

#include <map>
#include <string>
#include <vector>

namespace {

using bench::kind_t;

// Each iteration opens ours and the toolkit's by turns, so that whatever else the machine does meets all
// alike. What is timed is the second and later openings: each window was open once before.
void open_window(benchmark::State& state, kind_t ours)
{
    wxWindow* parent = wxTheApp->GetTopWindow();
    std::map<kind_t, std::vector<double>> painted;
    const kind_t kinds[] = {ours, kind_t::native, kind_t::rich, kind_t::generic};
    for (const kind_t kind : kinds) {
        bench::open(kind, parent);
        bench::wait_until_quiet(100);
    }
    for (auto _ : state) {
        for (const kind_t kind : kinds) {
            const bench::opening_t opening = bench::open(kind, parent);
            painted[kind].push_back(opening.painted_ms);
            if (kind == ours)
                state.SetIterationTime(opening.ended_ms / 1000);
            bench::wait_until_quiet(100);
        }
    }
    const double mine = bench::median(painted[ours]);
    state.counters["painted_ms"] = mine;
    state.counters["native_ms"] = bench::median(painted[kind_t::native]);
    state.counters["rich_ms"] = bench::median(painted[kind_t::rich]);
    state.counters["generic_ms"] = bench::median(painted[kind_t::generic]);
    state.counters["to_native"] = mine / bench::median(painted[kind_t::native]);
    state.counters["to_rich"] = mine / bench::median(painted[kind_t::rich]);
    state.counters["to_generic"] = mine / bench::median(painted[kind_t::generic]);
}

constexpr int openings = 40;

void forty_by_turns(benchmark::internal::Benchmark* of)
{
    of->Iterations(openings)->UseManualTime()->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(open_window, message, kind_t::message)
    ->Name("open/dlg.error_warning_dialog")
    ->Apply(forty_by_turns);
BENCHMARK_CAPTURE(open_window, message_check_box, kind_t::message_check_box)
    ->Name("open/dlg.error_warning_dialog/check_box")
    ->Apply(forty_by_turns);
BENCHMARK_CAPTURE(open_window, example, kind_t::example)->Name("open/dlg.example")->Apply(forty_by_turns);
BENCHMARK_CAPTURE(open_window, ask, kind_t::ask)->Name("open/dlg.ask")->Apply(forty_by_turns);
BENCHMARK_CAPTURE(open_window, clipboard, kind_t::clipboard)
    ->Name("open/dlg.clipboard")
    ->Apply(forty_by_turns);
BENCHMARK_CAPTURE(open_window, consent, kind_t::consent)->Name("open/dlg.optin")->Apply(forty_by_turns);
BENCHMARK_CAPTURE(open_window, result_saving, kind_t::result_saving)
    ->Name("open/dlg.page_frame/pref.result_saving")
    ->Apply(forty_by_turns);
BENCHMARK_CAPTURE(open_window, preferences, kind_t::preferences)
    ->Name("open/dlg.preferences_frame")
    ->Apply(forty_by_turns);
BENCHMARK_CAPTURE(open_window, page_result_saving, kind_t::page_result_saving)
    ->Name("open/pref.result_saving")
    ->Apply(forty_by_turns);
BENCHMARK_CAPTURE(open_window, page_consent, kind_t::page_consent)
    ->Name("open/pref.optin")
    ->Apply(forty_by_turns);

} // namespace
