#include <cfgmgr2/property_storage.h>
#include <commondlg3/editor_data.h>

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

using commondlg3::editor_data_t;
using commondlg3::language_info;

// What a walk through a source tree meets: every language, other files, and no extension at all.
std::vector<std::string> file_names(std::size_t count)
{
    const char* const endings[] = {".cpp", ".h", ".c++", ".F90", ".f", ".cs", ".txt", "", ".o", ".ccc"};
    std::vector<std::string> names;
    names.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        names.push_back("/home/user/project/source/module_" + std::to_string(i) + endings[i % 10]);
    return names;
}

void classify_files(benchmark::State& state)
{
    const auto names = file_names(static_cast<std::size_t>(state.range(0)));
    std::size_t sum = 0;
    for (auto _ : state)
        for (const std::string& name : names)
            sum += language_info::get_language(name);
    benchmark::DoNotOptimize(sum);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(classify_files)->Arg(1000000)->Unit(benchmark::kMillisecond);

editor_data_t many_editors(int count)
{
    editor_data_t data;
    for (int i = 0; i < count; ++i) {
        const std::string name = "editor " + std::to_string(i * 7919LL % count);
        data.add_editor(language_info::cpp, {name, name, "/opt/" + name, "/opt/" + name + " --wait"});
    }
    return data;
}

// From and to the child storage, as a preferences dialog does when it opens and when it ends.
void editors_load(benchmark::State& state)
{
    const auto storage = cfgmgr2::make_memory_property_storage();
    many_editors(static_cast<int>(state.range(0))).save_storage_info(storage);
    for (auto _ : state) {
        editor_data_t data;
        data.load_storage_info(storage);
        benchmark::DoNotOptimize(data);
    }
}
BENCHMARK(editors_load)->Arg(100)->Arg(10000)->Unit(benchmark::kMillisecond);

void editors_list(benchmark::State& state)
{
    const auto data = many_editors(static_cast<int>(state.range(0)));
    std::size_t sum = 0;
    for (auto _ : state)
        for (const auto& editor : data.get_editors(language_info::cpp))
            sum += editor.display_name.size();
    benchmark::DoNotOptimize(sum);
}
BENCHMARK(editors_list)->Arg(100)->Arg(10000)->Unit(benchmark::kMillisecond);

void editors_save(benchmark::State& state)
{
    const auto storage = cfgmgr2::make_memory_property_storage();
    const auto data = many_editors(static_cast<int>(state.range(0)));
    for (auto _ : state)
        data.save_storage_info(storage);
}
BENCHMARK(editors_save)->Arg(100)->Arg(10000)->Unit(benchmark::kMillisecond);

void system_probe(benchmark::State& state)
{
    for (auto _ : state) {
        editor_data_t data;
        data.load_system_info();
        benchmark::DoNotOptimize(data);
    }
}
BENCHMARK(system_probe)->Unit(benchmark::kMillisecond);

} // namespace
