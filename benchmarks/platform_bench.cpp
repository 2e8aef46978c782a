#include "cfgmgr2/message_catalog.h"
#include "cfgmgr2/product_locations.h"
#include "gen_helpers2/signal.h"
#include "gen_helpers2/variant_bag.h"
#include "gen_helpers2/variant_bag_file.h"

#include <benchmark/benchmark.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using gen_helpers2::variant_bag_t;

class bench_dir_t
{
public:
    bench_dir_t()
    {
        std::string name = (std::filesystem::temp_directory_path() / "platform-bench-XXXXXX").string();
        if (!::mkdtemp(name.data()))
            std::abort();
        m_path = gen_helpers2::path_t(name);
    }
    ~bench_dir_t()
    {
        std::error_code error;
        std::filesystem::remove_all(m_path.as_filesystem_path(), error);
    }
    const gen_helpers2::path_t& path() const { return m_path; }

private:
    gen_helpers2::path_t m_path;
};

void append_number(std::string& out, std::uint32_t value)
{
    for (int shift = 0; shift < 32; shift += 8)
        out += static_cast<char>(value >> shift);
}

/// A compiled message file (little-endian) with the given entries, which must be sorted by key.
std::string make_mo(const std::vector<std::pair<std::string, std::string>>& entries)
{
    const auto count = static_cast<std::uint32_t>(entries.size());
    std::string head, keys, texts, strings;
    for (const std::uint32_t number : {0x950412deU, 0U, count, 28U, 28 + count * 8, 0U, 28 + count * 16})
        append_number(head, number);
    for (const auto& [key, text] : entries) {
        for (const auto& [table, value] : {std::make_pair(&keys, &key), std::make_pair(&texts, &text)}) {
            append_number(*table, static_cast<std::uint32_t>(value->size()));
            append_number(*table, 28 + count * 16 + static_cast<std::uint32_t>(strings.size()));
            strings += *value + '\0';
        }
    }
    return head + keys + texts + strings;
}

variant_bag_t records(int count)
{
    variant_bag_t bag;
    for (int i = 0; i < count; ++i) {
        variant_bag_t& record = bag.add_child("record");
        record.put("text", std::string(124, static_cast<char>('a' + i % 26)));
        record.put("number", i);
    }
    return bag;
}

void signal_with_one_slot(benchmark::State& state)
{
    gen_helpers2::signal_t<int> signal;
    long sum = 0;
    signal.connect([&sum](int value) { sum += value; });
    for (auto _ : state)
        signal.emit(1);
    benchmark::DoNotOptimize(sum);
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK(signal_with_one_slot);

void translate(benchmark::State& state, const char* key)
{
    const bench_dir_t dir;
    const gen_helpers2::path_t folder = dir.path() / "en" / "LC_MESSAGES";
    std::filesystem::create_directories(folder.as_filesystem_path());
    std::ofstream((folder / "bench.mo").as_string(), std::ios::binary)
        << make_mo({{"", "Content-Type: text/plain; charset=UTF-8\n"},
                    {"%Plural", "{count, plural, one {# file} other {# files}} in {second}"},
                    {"%Simple", "The value of {first} must be less than {second}."}});
    auto where = std::make_shared<cfgmgr2::product_locations_t>();
    where->locale_directory = dir.path();
    cfgmgr2::IProductLocations::set(where);
    for (auto _ : state) {
        const auto catalog = cfgmgr2::getMessageCatalog("bench");
        const std::string text =
            catalog->message(key).as_ustring({{"first", "Port"}, {"second", "65536"}, {"count", 3}});
        if (text.empty())
            state.SkipWithError("no text");
        benchmark::DoNotOptimize(text.data());
    }
    state.SetItemsProcessed(state.iterations());
    cfgmgr2::IProductLocations::set(nullptr);
}
BENCHMARK_CAPTURE(translate, two_texts, "%Simple");
BENCHMARK_CAPTURE(translate, plural, "%Plural");

void bag_save(benchmark::State& state)
{
    const bench_dir_t dir;
    const variant_bag_t bag = records(100000);
    for (auto _ : state)
        if (gen_helpers2::save_variant_bag(bag, dir.path() / "bag.xml").failed())
            state.SkipWithError("not saved");
}
BENCHMARK(bag_save)->Unit(benchmark::kMillisecond)->UseRealTime();

void bag_load(benchmark::State& state)
{
    const bench_dir_t dir;
    if (gen_helpers2::save_variant_bag(records(100000), dir.path() / "bag.xml").failed())
        state.SkipWithError("not saved");
    for (auto _ : state) {
        variant_bag_t bag;
        if (gen_helpers2::load_variant_bag(dir.path() / "bag.xml", bag).failed())
            state.SkipWithError("not loaded");
    }
}
BENCHMARK(bag_load)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
