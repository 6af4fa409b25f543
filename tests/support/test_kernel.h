// A concrete kernel for tests, which records what it is asked for.
#ifndef QUILLMARSH_TESTS_SUPPORT_TEST_KERNEL_H
#define QUILLMARSH_TESTS_SUPPORT_TEST_KERNEL_H

#include <quillmarsh/framework/directinputconfig.h>
#include <quillmarsh/framework/frameobserver.h>
#include <quillmarsh/framework/kernel.h>
#include <quillmarsh/framework/kernelexecutionparams.h>
#include <quillmarsh/framework/kernelthreadinfo.h>
#include <quillmarsh/framework/reconfigobserver.h>

#include <algorithm>
#include <sstream>
#include <utility>
#include <vector>

namespace quillmarsh::tests
{

/// Kernel without a frame loop. What it hands out are public members that a test sets; what it was asked for are public
/// members that a test reads. Its streams are `conOut` and `logOut`.
class TestKernel : public Kernel
{
public:
    TestKernel()
    {
        SetOutputStreams(conOut, logOut);
        params = KernelExecutionParams(false);
    }
    ~TestKernel() override = default;

    std::ostringstream conOut, logOut;
    KernelExecutionParams params{false};
    unsigned int numExitRequests = 0;
    std::vector<FrameObserver *> frameObservers;
    std::vector<ReconfigObserver *> reconfigObservers;
    unsigned int frameNumber = 0;
    double frameTime = 0, frameTimeDelta = 0;
    std::vector<HumanInterfaceDevice *> devices;
    DirectInputConfig directInputConfig;
    std::vector<std::pair<DirectInputConfig, unsigned int>> hidReconfigs;
    Application *application = nullptr;
    Profiler *profiler = nullptr;
    ConsoleBuffers *consoleBuffers = nullptr;
    VariableRegistry *variableRegistry = nullptr;

    /// One frame as the observers see it.
    void RunFrame(double delta)
    {
        ++frameNumber;
        frameTimeDelta = delta;
        frameTime += delta;
        for (FrameObserver *observer : std::vector(frameObservers))
        {
            bool remove = false;
            observer->OnFrame(remove, frameNumber, delta);
            if (remove)
                RemoveFrameObserver(observer);
        }
    }

    void SetExecutionParams(KernelExecutionParams const &value) override { params = value; }
    void GetExecutionParams(KernelExecutionParams &value) override { value = params; }
    void SetThreadInfo(KernelThreadInfo const &) override {}
    void GetThreadInfo(KernelThreadInfo &) override {}
    eKernelLevel GetKernelLevel() override { return e_kernel_none; }
    void SetFrameRateLimit(double) override {}
    double GetFrameRateLimit() override { return 0; }
    bool IsExitRequested() override { return numExitRequests > 0; }
    void RequestExit() override { ++numExitRequests; }
    void ApplyHIDReconfig(DirectInputConfig const &config, unsigned int code) override
    {
        hidReconfigs.emplace_back(config, code);
    }
    void ApplyVideoReconfig(string const &, VideoConfig const &, unsigned int) override {}
    void RequestGenericReconfig(unsigned int, unsigned int) override {}
    unsigned int GetNumPlugins() override { return 0; }
    bool GetPluginInfo(unsigned int, PluginInfo &) override { return false; }
    string GetPluginFileName(unsigned int) override { return {}; }
    unsigned int GetNumGenericExtensions() override { return 0; }
    GenericExtension *GetGenericExtension(unsigned int) override { return nullptr; }
    GenericExtension *FindGenericExtension(string const &) override { return nullptr; }
    Application *GetApplicationPtr() override { return application; }
    unsigned int GetNumVideoRenderers() override { return 0; }
    void GetVideoRendererInfo(unsigned int, VideoRendererInfo &) override {}
    void GetVideoRendererProfile(unsigned int, VideoProfile &) override {}
    VideoRenderer *GetActiveVideoRendererPtr() override { return nullptr; }
    void GetActiveVideoRendererInfo(VideoRendererInfo &) override {}
    void GetActiveVideoProfile(VideoProfile &) override {}
    std_command_interpreter::Interpreter *GetCommandInterpreter() override { return nullptr; }
    void QueueCommandLine(string const &) override {}
    unsigned int GetNumHumanInterfaceDevices() override { return static_cast<unsigned int>(devices.size()); }
    HumanInterfaceDevice *GetHumanInterfaceDevice(unsigned int index) override
    {
        return index < devices.size() ? devices[index] : nullptr;
    }
    void GetDirectInputConfig(DirectInputConfig &config) override { config = directInputConfig; }
    void WakeUp() override {}
    unsigned int GetFrameNumber() override { return frameNumber; }
    double GetFrameTime() override { return frameTime; }
    double GetFrameTimeDelta() override { return frameTimeDelta; }
    Profiler *GetProfiler() override { return profiler; }
    ConsoleBuffers *GetConsoleBuffers() override { return consoleBuffers; }
    VariableRegistry *GetVariableRegistry() override { return variableRegistry; }
    void AddFrameObserver(FrameObserver *observer) override { Add(frameObservers, observer); }
    void RemoveFrameObserver(FrameObserver *observer) override { std::erase(frameObservers, observer); }
    unsigned int GetNumFrameObservers() override { return static_cast<unsigned int>(frameObservers.size()); }
    void AddReconfigObserver(ReconfigObserver *observer) override { Add(reconfigObservers, observer); }
    void RemoveReconfigObserver(ReconfigObserver *observer) override { std::erase(reconfigObservers, observer); }
    unsigned int GetNumReconfigObservers() override { return static_cast<unsigned int>(reconfigObservers.size()); }
    void NotifyVSyncUpdate() override {}

private:
    template<typename T>
    static void Add(std::vector<T *> &observers, T *observer)
    {
        if (observer != nullptr && std::find(observers.begin(), observers.end(), observer) == observers.end())
            observers.push_back(observer);
    }
};

/// What a record writes of itself.
string DumpText(auto const &record, unsigned int tabs)
{
    std::ostringstream out;
    record.Dump(out, tabs);
    return out.str();
}

} // namespace quillmarsh::tests

#endif
