#include <commondlg3/name_chars.h>
#include <commondlg3/result_saving_pp.h>
#include <rdmgr2/result_directory_manager.h>

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

// Names of 40 characters; every fourth has something to remove, every fifth a run of '@' too many.
std::vector<std::string> names(std::size_t count)
{
    std::vector<std::string> all;
    all.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
        std::string name = "result_@@@_" + std::to_string(i);
        name.resize(40, 'x');
        if (i % 4 == 0)
            name[20] = '*';
        if (i % 5 == 0)
            name[30] = '@';
        all.push_back(name);
    }
    return all;
}

void clean_names(benchmark::State& state)
{
    const auto all = names(static_cast<std::size_t>(state.range(0)));
    std::size_t changed = 0;
    for (auto _ : state)
        for (const std::string& name : all) {
            std::string text = name;
            changed += commondlg3::replace_disabled_chars(text);
            changed += commondlg3::check_file_name_for_chars(text, commondlg3::disabled_file_chars);
            changed += commondlg3::result_saving_pp_t::replace_wrong_ats(text);
        }
    benchmark::DoNotOptimize(changed);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(clean_names)->Arg(1000000)->Unit(benchmark::kMillisecond);

// What each key press in the template costs where many results are.
void next_name(benchmark::State& state)
{
    std::string folder = (std::filesystem::temp_directory_path() / "paths-bench-XXXXXX").string();
    if (!mkdtemp(folder.data())) {
        state.SkipWithError("no folder to work in");
        return;
    }
    for (int i = 1; i <= state.range(0); ++i)
        std::filesystem::create_directory(folder + "/result_" + std::to_string(1000000 + i));
    for (auto _ : state) {
        const std::string name =
            rdmgr2::ResultDirectoryManager::getNextResultDirectoryName("result_@@@", folder);
        benchmark::DoNotOptimize(name.data());
    }
    std::filesystem::remove_all(folder);
}
BENCHMARK(next_name)->Arg(10)->Arg(10000)->Unit(benchmark::kMicrosecond);

} // namespace
