// The kernel of tests.
#ifndef QUILLMARSH_TESTS_SUPPORT_TEST_KERNEL_H
#define QUILLMARSH_TESTS_SUPPORT_TEST_KERNEL_H

#include <quillmarsh/host/hostkernel.h>

#include <sstream>
#include <utility>
#include <vector>

namespace quillmarsh::tests
{

/// Made before the kernel that prints to them.
struct TestStreams
{
    std::ostringstream conOut, logOut;
};

/// The hosts' kernel with a clock that the test sets, with devices of the test, and with a record of requests. Its
/// streams are `conOut` and `logOut`.
class TestKernel : private TestStreams, public host::HostKernel
{
public:
    TestKernel() : HostKernel(TestStreams::logOut, [](string const &) {})
    {
        SetOutputStreams(conOut, logOut);
        // The first frame has no time before it.
        HostKernel::RunFrame();
    }

    using TestStreams::conOut;
    using TestStreams::logOut;

    KernelExecutionParams &params = GetParams();
    unsigned int numExitRequests = 0;
    std::vector<HumanInterfaceDevice *> devices;
    DirectInputConfig directInputConfig;
    std::vector<std::pair<DirectInputConfig, unsigned int>> hidReconfigs;
    /// Objects that the kernel returns; a test may replace them.
    ConsoleBuffers *consoleBuffers = HostKernel::GetConsoleBuffers();

    /// Runs one frame, `delta` seconds after the last one.
    void RunFrame(double delta)
    {
        now_ += std::chrono::round<host::FramePacer::Clock::duration>(std::chrono::duration<double>(delta));
        HostKernel::RunFrame();
    }

    bool IsExitRequested() override { return numExitRequests > 0; }
    void RequestExit() override { ++numExitRequests; }
    void ApplyHIDReconfig(DirectInputConfig const &config, unsigned int code) override
    {
        hidReconfigs.emplace_back(config, code);
    }
    unsigned int GetNumHumanInterfaceDevices() override { return static_cast<unsigned int>(devices.size()); }
    HumanInterfaceDevice *GetHumanInterfaceDevice(unsigned int index) override
    {
        return index < devices.size() ? devices[index] : nullptr;
    }
    void GetDirectInputConfig(DirectInputConfig &config) override { config = directInputConfig; }
    ConsoleBuffers *GetConsoleBuffers() override { return consoleBuffers; }

protected:
    host::FramePacer::Clock::time_point GetNow() override { return now_; }

private:
    host::FramePacer::Clock::time_point now_;
};

/// The kernel's doors to a video renderer.
struct VideoDoors : TestKernel
{
    using Kernel::VideoRenderer_ConnectVideoSubsystem;
    using Kernel::VideoRenderer_CreateVideoResources;
    using Kernel::VideoRenderer_DisconnectVideoSubsystem;
    using Kernel::VideoRenderer_OnWindowResize;
    using Kernel::VideoRenderer_ReleaseVideoResources;
};

/// Runs a line. Returns its output and its result.
inline string RunLine(CommandInterpreter &interpreter, string const &line)
{
    std::ostringstream out;
    bool const result = interpreter.InterpretCommandLine(line, out);
    return out.str() + (result ? "true" : "false");
}

/// Returns the dump of a record.
string DumpText(auto const &record, unsigned int tabs)
{
    std::ostringstream out;
    record.Dump(out, tabs);
    return out.str();
}

} // namespace quillmarsh::tests

#endif
