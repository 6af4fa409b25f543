#include "benchmarks/support/allocation_counter.h"

#include <quillmarsh/host/session.h>
#include <quillmarsh/platform/program.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <thread>

namespace quillmarsh::benchmarks
{
namespace
{

/// Returns the processor time of the whole process, in microseconds.
double GetProcessorTime()
{
    return static_cast<double>(std::clock()) * 1e6 / CLOCKS_PER_SEC;
}

/// Measures the processor time that the system itself needs for one sleep of a millisecond.
double MeasureBareSleep()
{
    constexpr int count = 500;
    double const before = GetProcessorTime();
    auto wake = std::chrono::steady_clock::now();
    for (int i = 0; i < count; ++i)
        std::this_thread::sleep_until(wake += std::chrono::milliseconds(1));
    return (GetProcessorTime() - before) / count;
}

/// Runs frames of the host with the workbench, at the pace of a console in which nobody types. The counter "cpu_us" is
/// the time of a frame without the system's bare sleep; "cpu_us_with_sleep" includes it.
void IdleFrame(benchmark::State &state)
{
    host::Session session({.programName = "quillmarsh-benchmarks"});
    string const program = platform::GetProgramFileName("");
    string const directory = program.substr(0, program.find_last_of("/\\") + 1) + "plugins";
    if (!session.Open(host::FindPluginFile("workbench", {directory})))
    {
        state.SkipWithError("The workbench did not start.");
        return;
    }
    session.GetKernel().SetFrameRateLimit(1000);
    auto const runFrame = [&session]
    {
        session.RunFrame();
        session.Pause();
    };
    for (int settling = 0; settling < 20; ++settling)
        runFrame();
    double const before = GetProcessorTime();
    RunCounted(state, runFrame);
    double const all = (GetProcessorTime() - before) / static_cast<double>(state.iterations());
    state.counters["cpu_us_with_sleep"] = all;
    state.counters["cpu_us"] = std::max(all - MeasureBareSleep(), 0.0);
    session.Close();
}
BENCHMARK(IdleFrame)->Name("host/idle_frame")->Iterations(500)->UseRealTime();

} // namespace
} // namespace quillmarsh::benchmarks
