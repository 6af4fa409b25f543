// Count of the heap allocations that the benchmark program makes.
#ifndef QUILLMARSH_BENCHMARKS_SUPPORT_ALLOCATION_COUNTER_H
#define QUILLMARSH_BENCHMARKS_SUPPORT_ALLOCATION_COUNTER_H

#include <benchmark/benchmark.h>

#include <cstdint>

namespace quillmarsh::benchmarks
{

/// Calls of the global operator new so far, by every thread and from every module of the process.
std::uint64_t GetAllocationCount();

/// The timed loop of a case. What allocates once does so in a first call; the calls that are timed are counted, and
/// nothing around them. Reports the allocations of a call as the counter "allocations".
template<typename Work>
void RunCounted(benchmark::State &state, Work work)
{
    work();
    std::uint64_t const before = GetAllocationCount();
    for ([[maybe_unused]] auto _ : state)
        work();
    std::uint64_t const count = GetAllocationCount() - before;
    state.counters["allocations"] = static_cast<double>(count) / static_cast<double>(state.iterations());
}

} // namespace quillmarsh::benchmarks

#endif
