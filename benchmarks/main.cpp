#include "app.h"

#include <benchmark/benchmark.h>

int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    // Even the benchmarks without a window need the product's folders, which the application sets.
    return bench::run_in_app(argc, argv, [](wxFrame*) {
        benchmark::RunSpecifiedBenchmarks();
        return 0;
    });
}
