#include <quillmarsh/basetools/profiler.h>

#include "benchmarks/support/allocation_counter.h"

#include <benchmark/benchmark.h>

namespace quillmarsh::benchmarks
{
namespace
{

/// Measures one block of a frame whose tree no longer changes.
void ProfiledBlock(benchmark::State &state)
{
    Profiler profiler;
    char const *const names[] = {"UpdateStates", "RenderVideo", "DrawInterface"};
    for (int i = 0; i < 20; ++i)
    {
        profiler.EnterRootNode();
        for (char const *const name : names)
        {
            profiler.EnterNode(name);
            profiler.ExitNode();
        }
        profiler.ExitRootNode();
    }
    profiler.EnterRootNode();
    unsigned int next = 0;
    RunCounted(state,
               [&]
               {
                   profiler.EnterNode(names[next]);
                   profiler.ExitNode();
                   next = next == 2 ? 0 : next + 1;
               });
    profiler.ExitRootNode();
}
BENCHMARK(ProfiledBlock)->Name("profiler/block");

void TwoClockReads(benchmark::State &state)
{
    HighResolutionTimer const timer;
    for ([[maybe_unused]] auto _ : state)
    {
        benchmark::DoNotOptimize(timer.GetElapsedSeconds());
        benchmark::DoNotOptimize(timer.GetElapsedSeconds());
    }
}
BENCHMARK(TwoClockReads)->Name("limit/two_clock_reads");

} // namespace
} // namespace quillmarsh::benchmarks
