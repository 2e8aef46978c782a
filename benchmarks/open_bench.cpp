// Openings that need a process of their own.
//
//   open_bench first KIND            one opening; prints the milliseconds until drawn, painted and ended
//   open_bench again COUNT KIND...   COUNT more of each kind by turns, after the first; a line for each
//   open_bench memory KIND           1,000 openings; prints the resident KiB after 200 and after all
#include "app.h"
#include "openings.h"

#include <wx/app.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using bench::kind_t;

constexpr int bad_usage = 2;

long resident_kib()
{
    std::ifstream statm("/proc/self/statm");
    long total = 0;
    long resident = 0;
    statm >> total >> resident;
    return resident * (sysconf(_SC_PAGESIZE) / 1024);
}

void print(const std::string& name, const bench::opening_t& opening)
{
    std::printf("%s %.3f %.3f %.3f\n", name.c_str(), opening.drawn_ms, opening.painted_ms, opening.ended_ms);
}

int measure_memory(kind_t kind, wxWindow* parent)
{
    for (int i = 1; i <= 1000; ++i) {
        bench::open(kind, parent);
        bench::wait_until_quiet(1);
        if (i == 200 || i == 1000)
            std::printf("%d %ld\n", i, resident_kib());
    }
    return 0;
}

int run(const std::vector<std::string>& arguments, wxWindow* parent)
{
    const std::string command = arguments.empty() ? std::string() : arguments[0];
    const std::size_t first_kind = command == "again" ? 2 : 1;
    for (std::size_t i = first_kind; i < arguments.size(); ++i)
        if (!bench::kind_of(arguments[i])) {
            std::fprintf(stderr, "no such kind: %s\n", arguments[i].c_str());
            return bad_usage;
        }
    if (command == "first" && arguments.size() == 2) {
        print(arguments[1], bench::open(*bench::kind_of(arguments[1]), parent));
        return 0;
    }
    if (command == "memory" && arguments.size() == 2)
        return measure_memory(*bench::kind_of(arguments[1]), parent);
    if (command == "again" && arguments.size() > 2) {
        for (int round = 0; round <= std::atoi(arguments[1].c_str()); ++round)
            for (std::size_t i = first_kind; i < arguments.size(); ++i) {
                const bench::opening_t opening = bench::open(*bench::kind_of(arguments[i]), parent);
                if (round > 0)
                    print(arguments[i], opening);
                bench::wait_until_quiet(100);
            }
        return 0;
    }
    std::fprintf(stderr, "usage: open_bench first KIND | again COUNT KIND... | memory KIND\n");
    return bad_usage;
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    return bench::run_in_app(argc, argv, [&](wxFrame*) { return run(arguments, wxTheApp->GetTopWindow()); });
}
