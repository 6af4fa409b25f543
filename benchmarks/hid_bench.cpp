#include <quillmarsh/basetools/exception.h>
#include <quillmarsh/basetools/time.h>
#include <quillmarsh/devices/mouse.h>
#include <quillmarsh/framework/samplereadsentry.h>

#include "benchmarks/support/allocation_counter.h"
#include "tests/support/test_kernel.h"

#include <benchmark/benchmark.h>

#include <atomic>
#include <cmath>
#include <mutex>
#include <thread>

namespace quillmarsh::benchmarks
{
namespace
{

class BenchMouse : public Mouse
{
public:
    explicit BenchMouse(HumanInterfaceDevice &device) : Mouse(false) { SetParentHID(device); }
    void OnRelativeModeChanged() override {}
    void OnSyncWithSystemCursorChanged() override {}
    void Sample()
    {
        PreSampleUpdate();
        AccumDelta(1, 0);
        PostSampleUpdate();
    }
};

/// A device whose sampling costs almost nothing.
class BenchDevice : public HumanInterfaceDevice
{
public:
    ~BenchDevice() override { StopAsyncSampling(); }

    unsigned int GetNumControllers() override { return 1; }
    HIDController *GetController(unsigned int) override { return &mouse; }
    void ConnectDevice(HWND) override {}
    void DisconnectDevice() override {}
    void ApplyUseDirectInput(bool) override {}
    void OnStartAsyncSampling(void *, unsigned int) override { threadTimer_.Start(); }
    void SampleDevice() override
    {
        if (failing)
            QUILLMARSH_THROW(HIDException, "gone");
        ++numSamples;
        mouse.Sample();
        if (wantsThreadTime.load(std::memory_order_relaxed))
        {
            threadTime = threadTimer_.GetElapsedSeconds();
            wantsThreadTime = false;
        }
    }

    /// Returns the processor time of the sampling thread at its next sample.
    double GetThreadTime()
    {
        wantsThreadTime = true;
        while (wantsThreadTime)
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        return threadTime;
    }

    BenchMouse mouse{*this};
    bool failing = false;
    std::atomic<unsigned int> numSamples{0};

private:
    ThreadTimer threadTimer_;
    std::atomic<bool> wantsThreadTime{false};
    std::atomic<double> threadTime{0};
};

/// Reads a device in asynchronous mode without contention: its thread has ended by a failure.
void ReadUncontended(benchmark::State &state)
{
    tests::TestKernel kernel;
    BenchDevice device;
    device.failing = true;
    device.StartAsyncSampling();
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    RunCounted(state,
               [&]
               {
                   SampleReadSentry const sentry(device, true);
                   benchmark::DoNotOptimize(device.mouse.GetDeltaX());
               });
}
BENCHMARK(ReadUncontended)->Name("hid/read_uncontended");

/// Locks and unlocks a plain mutex twice, and calls the controller's hooks.
void TwoMutexPairsAndHooks(benchmark::State &state)
{
    tests::TestKernel kernel;
    BenchDevice device;
    HIDController &controller = device.mouse;
    std::mutex mutex;
    for ([[maybe_unused]] auto _ : state)
    {
        {
            std::scoped_lock const lock(mutex);
            benchmark::ClobberMemory();
        }
        std::scoped_lock const lock(mutex);
        controller.OnBeginAsyncSampleRead();
        benchmark::DoNotOptimize(device.mouse.GetDeltaX());
        controller.OnEndAsyncSampleRead();
    }
}
BENCHMARK(TwoMutexPairsAndHooks)->Name("limit/two_mutex_pairs_and_hooks");

void SampleOnTheSpot(benchmark::State &state)
{
    BenchDevice device;
    RunCounted(state,
               [&]
               {
                   SampleReadSentry const sentry(device, true);
                   benchmark::DoNotOptimize(device.mouse.GetDeltaX());
               });
}
BENCHMARK(SampleOnTheSpot)->Name("hid/sample_on_the_spot");

constexpr double s_rates[] = {50, 250, 1000};

struct RateResult
{
    double error = 0;
    double core = 0;
    double allocations = 0;
};

/// Measures all three rates at the same time, for ten seconds after the first correction of the rate.
std::vector<RateResult> MeasureRates()
{
    using Clock = std::chrono::steady_clock;
    tests::TestKernel kernel;
    BenchDevice devices[std::size(s_rates)];
    for (std::size_t i = 0; i < std::size(s_rates); ++i)
    {
        devices[i].SetMaxSampleRate(s_rates[i]);
        devices[i].EnableMaxSampleRate(true);
        devices[i].StartAsyncSampling();
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(2500));

    std::vector<RateResult> results(std::size(s_rates));
    std::uint64_t const allocationsBefore = GetAllocationCount();
    double timeBefore[std::size(s_rates)];
    for (std::size_t i = 0; i < std::size(s_rates); ++i)
        timeBefore[i] = devices[i].GetThreadTime();
    unsigned int samplesBefore[std::size(s_rates)];
    for (std::size_t i = 0; i < std::size(s_rates); ++i)
        samplesBefore[i] = devices[i].numSamples;
    Clock::time_point const start = Clock::now();
    std::this_thread::sleep_until(start + std::chrono::seconds(10));
    for (std::size_t i = 0; i < std::size(s_rates); ++i)
    {
        double const seconds = std::chrono::duration<double>(Clock::now() - start).count();
        double const rate = (devices[i].numSamples - samplesBefore[i]) / seconds;
        results[i].error = std::fabs(rate / s_rates[i] - 1);
    }
    for (std::size_t i = 0; i < std::size(s_rates); ++i)
    {
        results[i].core = (devices[i].GetThreadTime() - timeBefore[i]) / 10;
        results[i].allocations = static_cast<double>(GetAllocationCount() - allocationsBefore);
    }
    return results;
}

template<std::size_t index>
void HoldRate(benchmark::State &state)
{
    static std::vector<RateResult> const s_results = MeasureRates();
    RateResult const &result = s_results[index];
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(result);
    state.counters["error"] = result.error;
    state.counters["core"] = result.core;
    state.counters["allocations"] = result.allocations;
}
BENCHMARK(HoldRate<0>)->Name("hid/rate_50")->Iterations(1);
BENCHMARK(HoldRate<1>)->Name("hid/rate_250")->Iterations(1);
BENCHMARK(HoldRate<2>)->Name("hid/rate_1000")->Iterations(1);

} // namespace
} // namespace quillmarsh::benchmarks
