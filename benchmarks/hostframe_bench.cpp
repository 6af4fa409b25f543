#include "hostlog.h"

#include "benchmarks/support/allocation_counter.h"

#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/host/applicationwalk.h>
#include <quillmarsh/platform/program.h>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <iostream>
#include <thread>

namespace quillmarsh::benchmarks
{
namespace
{

using namespace host;

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
    HostLog log;
    HostConsole console(log.GetStream());
    Failures failures([](string const &message) { std::cerr << message << '\n'; });
    HostKernel kernel(console, log.GetStream(), failures, false);
    string const program = platform::GetProgramFileName("");
    string const directory = program.substr(0, program.find_last_of("/\\") + 1) + "plugins";
    try
    {
        kernel.GetPlugins().Load(FindPluginFile("workbench", {directory}));
    }
    catch (Exception const &thrown)
    {
        state.SkipWithError(thrown.GetMessage().c_str());
        return;
    }
    ApplicationWalk walk(kernel);
    if (!walk.Up(*kernel.GetPlugins().FindApplication(), {}))
    {
        state.SkipWithError("The workbench did not start.");
        return;
    }
    kernel.SetFrameRateLimit(1000);
    auto const runFrame = [&kernel]
    {
        kernel.RunFrame();
        kernel.CarryOutRequests();
        kernel.PauseUntilNextFrame(60);
    };
    for (int settling = 0; settling < 20; ++settling)
        runFrame();
    double const before = GetProcessorTime();
    RunCounted(state, runFrame);
    double const all = (GetProcessorTime() - before) / static_cast<double>(state.iterations());
    state.counters["cpu_us_with_sleep"] = all;
    state.counters["cpu_us"] = std::max(all - MeasureBareSleep(), 0.0);
    walk.Down();
    kernel.GetPlugins().Unload();
}
BENCHMARK(IdleFrame)->Name("host/idle_frame")->Iterations(500)->UseRealTime();

} // namespace
} // namespace quillmarsh::benchmarks
