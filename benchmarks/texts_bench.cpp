#include <commondlg3/error_warning_dialog.h>
#include <commondlg3/text_utils.h>
#include <cpil/varg_list.h>

#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>

namespace {

// Words of one to twelve letters, a line feed about every 400 bytes.
std::string running_text(std::size_t bytes)
{
    std::string text;
    text.reserve(bytes + 16);
    unsigned int random = 1;
    for (std::size_t line_start = 0; text.size() < bytes;) {
        random = random * 1103515245u + 12345u;
        text.append(1 + (random >> 16) % 12, static_cast<char>('a' + (random >> 8) % 26));
        const bool ends = text.size() - line_start > 400;
        text += ends ? '\n' : ' ';
        if (ends)
            line_start = text.size();
    }
    text.resize(bytes);
    return text;
}

void line_breaking(benchmark::State& state)
{
    const std::string text = running_text(static_cast<std::size_t>(state.range(0)) * 1000000);
    for (auto _ : state) {
        const auto lines = commondlg3::create_multi_line(76, text);
        benchmark::DoNotOptimize(lines.data());
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(text.size()));
}
BENCHMARK(line_breaking)->Name("line_breaking/MB")->Arg(1)->Arg(10)->Unit(benchmark::kMillisecond);

using CPIL_2_18::generic::varg_list;

void translate_message(benchmark::State& state, const char* key, const varg_list& arguments)
{
    if (commondlg3::translate_message(key, arguments).find("Name") == std::string::npos)
        state.SkipWithError("the catalog is missing");
    for (auto _ : state) {
        const std::string text = commondlg3::translate_message(key, arguments);
        benchmark::DoNotOptimize(text.data());
    }
    state.SetItemsProcessed(state.iterations());
}
BENCHMARK_CAPTURE(translate_message, two_arguments, "max_len",
                  varg_list{{"field_name", "Name"}, {"max_len", 20}});
BENCHMARK_CAPTURE(translate_message, plural, "max_len_details",
                  varg_list{{"product_name", "Product"}, {"field_name", "Name"}, {"max_len", 20}});

} // namespace
