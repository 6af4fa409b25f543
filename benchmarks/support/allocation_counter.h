// Count of the heap allocations that the benchmark program makes.
#ifndef QUILLMARSH_BENCHMARKS_SUPPORT_ALLOCATION_COUNTER_H
#define QUILLMARSH_BENCHMARKS_SUPPORT_ALLOCATION_COUNTER_H

#include <benchmark/benchmark.h>

#include <cstdint>

namespace quillmarsh::benchmarks
{

/// Calls of the global operator new so far, by every thread and from every module of the process.
std::uint64_t GetAllocationCount();

/// Reports the allocations of a case per iteration, as the counter "allocations". Stands around the timed loop.
class AllocationReport
{
public:
    explicit AllocationReport(benchmark::State &state) : state_(state), start_(GetAllocationCount()) {}
    ~AllocationReport()
    {
        // The counter's own entry is made after the count is taken.
        auto const count = static_cast<double>(GetAllocationCount() - start_);
        state_.counters["allocations"] = count / static_cast<double>(state_.iterations());
    }
    AllocationReport(AllocationReport const &) = delete;
    AllocationReport &operator=(AllocationReport const &) = delete;

private:
    benchmark::State &state_;
    std::uint64_t start_;
};

} // namespace quillmarsh::benchmarks

#endif
