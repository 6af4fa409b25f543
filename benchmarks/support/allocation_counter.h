// Counts the heap allocations of the benchmark program.
#ifndef QUILLMARSH_BENCHMARKS_SUPPORT_ALLOCATION_COUNTER_H
#define QUILLMARSH_BENCHMARKS_SUPPORT_ALLOCATION_COUNTER_H

#include <benchmark/benchmark.h>

#include <cstdint>

namespace quillmarsh::benchmarks
{

/// Returns the number of calls of the global operator new so far, in all threads and modules of the process.
std::uint64_t GetAllocationCount();

/// Runs the timed loop of a case. A first call makes the allocations that happen only once; then only the timed calls
/// are counted. The counter "allocations" reports the allocations of one call.
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
