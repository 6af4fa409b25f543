// Main program of the benchmarks. It takes the arguments of Google Benchmark, and two more:
//
// --target=NAME   uses the kernels for a smaller set of vector instructions
// --by_request    reads filters from the standard input, one a line, and runs the case of each at once. A line of
//                 figures follows each run, so that the caller decides what is measured beside what, and how often.
#include <benchmark/benchmark.h>

// The same setting as in the library, whose kernels are chosen here.
#define HWY_DISABLED_TARGETS HWY_AVX3_DL
#include <hwy/highway.h>
#include <libyuv.h>
#include <malloc.h>

#include <iomanip>
#include <iostream>
#include <string>
#include <string_view>
#include <vector>

namespace
{

/// Prints time and counters of a run on one line, as words NAME=FIGURE. Times are processor times in nanoseconds.
class LineReporter : public benchmark::BenchmarkReporter
{
public:
    bool ReportContext(Context const &) override { return true; }
    void ReportRuns(std::vector<Run> const &runs) override
    {
        for (Run const &run : runs)
        {
            if (run.error_occurred)
            {
                std::cerr << run.benchmark_name() << ": " << run.error_message << '\n';
                continue;
            }
            double const unit = 1e9 / benchmark::GetTimeUnitMultiplier(run.time_unit);
            std::cout << "time=" << run.GetAdjustedCPUTime() * unit;
            for (auto const &[name, counter] : run.counters)
                std::cout << ' ' << name << '=' << counter.value;
        }
    }
};

/// Lets the heap keep what is freed. Pages that go back to the system and come again take longer than many a case, and
/// when they go depends on what ran before.
void KeepHeap()
{
    constexpr int megabyte = 1 << 20;
    mallopt(M_MMAP_THRESHOLD, 32 * megabyte);
    mallopt(M_TRIM_THRESHOLD, 1024 * megabyte);
}

void RunByRequest()
{
    std::cout << std::setprecision(10);
    LineReporter reporter;
    for (std::string filter; std::getline(std::cin, filter);)
    {
        benchmark::RunSpecifiedBenchmarks(&reporter, filter);
        std::cout << std::endl;
    }
}

/// Returns the instruction set that the library's kernels use; all kernels share this choice.
std::int64_t GetTarget()
{
    std::int64_t const targets = hwy::SupportedTargets() & HWY_TARGETS;
    return targets & -targets;
}

constexpr int s_yuvAVX512 = libyuv::kCpuHasAVX512BW | libyuv::kCpuHasAVX512VL | libyuv::kCpuHasAVX512VNNI |
                            libyuv::kCpuHasAVX512VBMI | libyuv::kCpuHasAVX512VBMI2 | libyuv::kCpuHasAVX512VBITALG |
                            libyuv::kCpuHasAVX512VPOPCNTDQ | libyuv::kCpuHasGFNI;
constexpr int s_yuvAVX = libyuv::kCpuHasAVX | libyuv::kCpuHasAVX2 | libyuv::kCpuHasFMA3 | libyuv::kCpuHasF16C;

/// Limits libyuv to the instructions that the kernels have. OpenCV reads its limit from the environment, before main().
void SetTargetOfPeers(std::int64_t target)
{
    int const disabled = target == HWY_AVX3   ? 0
                         : target == HWY_AVX2 ? s_yuvAVX512
                         : target == HWY_SSE4 ? s_yuvAVX512 | s_yuvAVX
                                              : s_yuvAVX512 | s_yuvAVX | libyuv::kCpuHasSSE41 | libyuv::kCpuHasSSE42;
    libyuv::MaskCpuFlags(~disabled);
}

/// Chooses an instruction set by name; false when this machine or the library has none of that name.
bool SetTarget(std::string_view name)
{
    for (std::int64_t const target : hwy::SupportedAndGeneratedTargets())
    {
        if (name == hwy::TargetName(target))
        {
            hwy::SetSupportedTargetsForTest(target);
            hwy::GetChosenTarget().Update(hwy::SupportedTargets());
            SetTargetOfPeers(target);
            return true;
        }
    }
    std::cerr << "There are no kernels for \"" << name << "\" here, but for:";
    for (std::int64_t const target : hwy::SupportedAndGeneratedTargets())
        std::cerr << ' ' << hwy::TargetName(target);
    std::cerr << '\n';
    return false;
}

/// Removes an argument from the list and sets `value` to the text after its name; false when it is not in the list.
bool TakeArgument(std::vector<char *> &arguments, std::string_view name, std::string_view &value)
{
    for (auto at = arguments.begin(); at != arguments.end(); ++at)
    {
        std::string_view const argument = *at;
        if (argument.substr(0, name.size()) == name)
        {
            value = argument.substr(name.size());
            arguments.erase(at);
            return true;
        }
    }
    return false;
}

} // namespace

int main(int argc, char **argv)
{
    KeepHeap();
    std::vector<char *> arguments(argv, argv + argc);
    std::string_view value;
    if (TakeArgument(arguments, "--target=", value) && !SetTarget(value))
        return 1;
    bool const isByRequest = TakeArgument(arguments, "--by_request", value);
    int count = static_cast<int>(arguments.size());
    arguments.push_back(nullptr);
    benchmark::Initialize(&count, arguments.data());
    if (benchmark::ReportUnrecognizedArguments(count, arguments.data()))
        return 1;
    benchmark::AddCustomContext("kernels", hwy::TargetName(GetTarget()));
    if (isByRequest)
    {
        std::cout << hwy::TargetName(GetTarget()) << std::endl;
        RunByRequest();
    }
    else
        benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
}
